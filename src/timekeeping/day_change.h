// The day follows the clocks. Before anything touches the day, and at each tick, the clocks are
// read, and what happened since they were last read is applied: midnight, a sleep of the machine, a
// clock that was set or changed to summer time. So what was worked is booked on its own date and
// lasts as long as it did.
//
//     FollowClock();   // first line of every command that touches the day
#pragma once

namespace kelvrane {

/// Brings the day up to the present. The date of the entries is closed when it is over: what ran at
/// midnight goes on as an entry of the new date; what ran when the machine fell asleep over
/// midnight doesn't, and a question waits. A clock that jumped moves the running entry's start.
/// Where the entries' date is later than the clock's nothing changes, and a question waits. Lets no
/// error out; a call from within does nothing.
void FollowClock();

/// Whether a day was loaded: before that there is none to change.
bool DayIsKnown();

} // namespace kelvrane
