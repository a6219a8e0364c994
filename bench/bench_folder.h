// A program folder as it looks after years of use: installed, five projects, and a history of any
// length, five rows a day, up to and including a last day.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace kelvrane::bench {

class QuietPorts;

/// "Project 1" to "Project 5".
QStringList ProjectNames();

/// Installs the program in the folder, which becomes AppPath(), and fills the history with so many
/// rows. Raises RuntimeError.
void PrepareFolder(QuietPorts& quiet, const QString& folder, int rows, QDate lastDay);

} // namespace kelvrane::bench
