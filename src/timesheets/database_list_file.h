// SSDBInfo.dat: a database a line, alias;path;state and CR LF, without any escaping. Blank lines
// are passed over when the list is filled, but count when a line is rewritten by its number, so
// below one the wrong line is changed. That is how the file is and stays.
//
// Lines that are read may end in LF alone and be UTF-8 or Windows-1252; those that don't change
// keep their bytes. Each routine reads the file anew and raises what the file store raises; a file
// over 4 MB, more than any list needs, is DeviceError.
#pragma once

#include <QList>
#include <QString>

namespace kelvrane {

namespace database_state {
inline const QString Accept = QStringLiteral("ACCEPT"); ///< read by calculations
inline const QString Decline = QStringLiteral("DECLINE");
} // namespace database_state

struct ListedDatabase {
    QString Text;     ///< the alias
    QString Location; ///< full path of a day history
    QString State;    ///< database_state
    bool isAccepted() const { return State != database_state::Decline; }
};

} // namespace kelvrane

namespace kelvrane::database_list_file {

/// The databases of all lines that aren't blank, in order. Fields that a line lacks are empty.
QList<ListedDatabase> Read();
/// The fields of all lines, blank ones too. Calculations take them by number beside the items of
/// the list.
QList<QStringList> Lines();
/// True when a line has exactly this path.
bool Lists(const QString& location);

/// Replaces the line of that 1-based number, blank lines counted, or adds one at the end when there
/// is no such line. In one step: the old file or the new one is there. Line feeds in the
/// database's texts become blanks.
void SetLine(int number, const ListedDatabase& database);
/// Takes that line away; nothing when there is no such line.
void RemoveLine(int number);

} // namespace kelvrane::database_list_file
