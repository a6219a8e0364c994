// The day comes into memory: at the start, and whenever the control screen is loaded again.
#pragma once

namespace kelvrane {

/// Reads the day file and brings what it holds up to the present. A day that is over is closed,
/// with the totals that it was saved with; one of a later date stays, and a question waits. A
/// running entry goes on, and so does its open break. A day that is in memory already isn't read
/// again: it gets the totals that a load computes. Nothing while another process keeps the day.
/// Raises the errors of LoadDayFile after what could be read was taken.
void LoadDay();

} // namespace kelvrane
