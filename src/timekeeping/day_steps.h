// The steps that a change of the clocks takes the day through. They change the day, its file and
// the history, and show the result; day_change.h decides which of them runs.
#pragma once

#include "frame/globals.h"

#include <QDate>

namespace kelvrane {

/// A new entry of the same project that starts at this minute of the day.
DayEntry EntryFrom(const DayEntry& former, int minute);
/// Appends it as the running one. An open break goes on in it from its start.
void AppendRunning(const DayEntry& entry);

/// The running entry ends at one minute of the day, and its project goes on from another. Raises
/// Subscript, TypeMismatch.
void SplitRunning(int end, int start);
/// The same at the end of a date: the day in memory is closed, and the new one begins with the
/// entry that runs on.
void CarryOver(int end, QDate date, int start);
/// The day in memory is closed, and nothing runs on the new date, which gets back what was put by
/// of it.
void EndDay();

/// Today's entries (or none) in the place of a day that is closed or was never open.
void BeginDay(QDate date, const QList<DayEntry>& entries);

/// What the last day file holds of a date, when it is of that date: a clock that went forward and
/// came back closed it. What ran ended with the total that it had.
QList<DayEntry> EntriesPutBy(QDate date);
/// Without an open day, today's entries that were put by are the day again.
void BringDayBack();

/// The list, the fields and the totals show the day in memory.
void ShowDay();
/// The week view shows the week of today.
void ShowWeek();

} // namespace kelvrane
