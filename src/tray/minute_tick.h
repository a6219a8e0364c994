// The heartbeat: once a counter minute it refreshes the running entry, applies the time rules and
// changes the day at midnight.
#pragma once

#include <QDateTime>

namespace kelvrane {

/// Handler of the counter's Minute. Lets no error out. While a tick is being handled, in a box that
/// one of its rules opened, a further one only refreshes the running entry and changes the day.
void TMR_Minute();

/// At each of the timer's ten-second ticks: a machine that woke on another date changes the day at
/// once, before a command can book yesterday's entries on today.
void NoticeSleep();

/// What happens at 12:01 AM: a stopped day is dropped, a running entry goes on as one that started
/// at "12:00 AM" of the new date.
void ChangeOfDay();

/// For the end of the session: keeps edited sheets, saves the day and rolls it up, and stops
/// nothing. After a sleep that
/// no tick has settled yet the entries are the last day's: its rows get them, and the file is left.
void SaveForLogOut();

/// Whether a machine that slept missed the change of day between two ticks: a gap of more than ten
/// minutes that crosses a date.
bool SleptOverMidnight(const QDateTime& lastTick, const QDateTime& thisTick);

} // namespace kelvrane
