// What the day needs beyond its entries, as it stands behind the blank lines of the day file: one
// "key=value" line each. Several lines may have one key. Lines with a key that nobody here knows
// are kept as they are.
//
//     SetTailValues(tail::Break, {"10:05 AM;5"});
//     for (const QString& question : TailValues(tail::Question)) ...
#pragma once

#include <QString>
#include <QStringList>

namespace kelvrane {

namespace tail {
inline constexpr char Break[] = "break";       ///< an open break: when it began; minutes held then
inline constexpr char Question[] = "question"; ///< a waiting question: its kind; its details
inline constexpr char Delete[] = "delete";     ///< a project whose row of the day has to go
inline constexpr char Rename[] = "rename"; ///< a project renamed in the history: from; to; number
} // namespace tail

/// The lines in their order, "key=value" each, without line breaks.
const QStringList& DayTail();
void SetDayTail(const QStringList& lines);

/// The values of a key, in the order of their lines.
QStringList TailValues(const char* key);
/// The same of lines that belong to a day elsewhere.
QStringList TailValues(const QStringList& lines, const char* key);
/// The lines of a key, whole.
QStringList TailLines(const char* key);
/// Puts these values in the place of all that the key has.
void SetTailValues(const char* key, const QStringList& values);

} // namespace kelvrane
