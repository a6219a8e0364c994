// The heartbeat: once a counter minute it lets the day follow the clocks, refreshes the running
// entry, repeats writes that failed and applies the time rules.
#pragma once

namespace kelvrane {

/// Handler of the counter's Minute. Lets no error out, and opens no box: nobody may be there. While
/// a tick is being handled, behind a box that is open, a further one asks and shows nothing.
void TMR_Minute();

/// At each of the timer's ten-second ticks: what happened to the clocks is noticed within these ten
/// seconds, so a sleep is known to their accuracy.
void ReadClocks();

/// The quiet check for an update that each new date brings.
void CheckForNightlyUpdate();

/// For the end of the session: keeps edited sheets, saves the day and rolls it up, and stops
/// nothing.
void SaveForLogOut();

} // namespace kelvrane
