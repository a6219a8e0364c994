// Which version of the program runs, and where to read more.
#pragma once

#include "platform/keyed_items.h"

namespace kelvrane {

/// lblVersion, lblMoreInfo, lblURL, cmdOK. A click on lblURL opens the maker's web address.
KeyedItems& AboutControls();

/// The screen's load. Without a maker's web address in the settings the last two lines are hidden;
/// so they are for an address that isn't a web page's.
void LoadAbout();

} // namespace kelvrane
