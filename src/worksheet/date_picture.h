// Dates and times under a section of a number format.
#pragma once

#include "worksheet/format_picture.h"

namespace kelvrane {

/// The section, which is one of dates, filled with a serial number's date and time; "###" for one
/// below 0 or beyond the year 9999. Sections that only count elapsed time, "[h]:mm", show both
/// signs: "-1:30". Rounds to the second, or to the fraction of one that is shown; whole minutes and
/// hours don't round, as on a clock.
QString DatePictureText(const PictureSection& section, double serial);

} // namespace kelvrane
