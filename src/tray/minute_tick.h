// The heartbeat: once a counter minute it refreshes the running entry, applies the time rules and
// changes the day at midnight.
#pragma once

#include <QDateTime>

namespace kelvrane {

/// Handler of the counter's Minute. Lets no error out. While a tick is being handled, in a box that
/// one of its rules opened, a further one only refreshes the running entry and changes the day.
void TMR_Minute();

/// What happens at 12:01 AM: a stopped day is dropped, a running entry goes on as one that started
/// at "12:00 AM" of the new date.
void ChangeOfDay();

/// Whether a machine that slept missed the change of day between two ticks: a gap of more than ten
/// minutes that crosses a date.
bool SleptOverMidnight(const QDateTime& lastTick, const QDateTime& thisTick);

} // namespace kelvrane
