// The second half of reading a number format: what a section's tokens mean beside each other. "m"
// is a month or minutes, a comma parts thousands or divides, a "0" has its power of ten.
#pragma once

#include "worksheet/format_picture.h"

namespace kelvrane {

/// Completes a section whose tokens are there as they were read. False when it can't be shown: a
/// fraction, an exponent without places, too many "@".
bool SettlePicture(PictureSection& section);

} // namespace kelvrane
