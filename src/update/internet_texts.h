// The sentence for each error of the network.
#pragma once

#include <QString>

namespace kelvrane {

/// "Error details not available." for a code without a sentence. Code 12003 stands for what the
/// server said last, up to its first NUL and 256 characters at most.
QString InternetErrorText(int code, const QString& serverResponse = {});

} // namespace kelvrane
