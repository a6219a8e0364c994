// The help map: topic numbers to pages of the help file.
#pragma once

#include <QString>

namespace kelvrane {

/// The page of a topic number; "" for a number without one.
QString HelpPage(int topic);

/// Opens the help file at the topic's page, or at its contents.
void ShowHelpTopic(int topic);

} // namespace kelvrane
