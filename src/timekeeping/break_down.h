// The rows of the break-down list: six an entry, their keys made of the kind and the entry's
// 0-based index.
#pragma once

#include "frame/globals.h"

#include <QString>

namespace kelvrane {

enum class EntryRow { Number, StartTime, StopTime, BreakTime, TotalTime };

/// "STOP TIME3".
QString BreakDownKey(EntryRow row, int index);
/// The entry's index in a row's key; -1 for a key without digits.
int BreakDownIndex(const QString& key);

/// Entries in the list, which may still show a day that was dropped.
int BreakDownEntryCount();
void AppendBreakDown(const DayEntry& entry, int index);
/// Drops the rows of that entry and of all behind it.
void CutBreakDown(int count);

} // namespace kelvrane
