// The tray's two menus as models. The caption of the break item is the break state: "On Break"
// offers a break, "Off Break" its end.
#pragma once

#include "platform/keyed_items.h"

namespace kelvrane {

struct TrayMenus {
    TrayMenus();
    KeyedItems mnuSysTray;   ///< the context menu; submenus by parent
    KeyedItems mnuRProjects; ///< MnuRecProj1 to MnuRecProj10

    /// As after construction.
    void reset();
};

/// The one pair of menus.
TrayMenus& Menus();

namespace tray_items {
inline constexpr char Break[] = "mnuSysTrayStatusOnBreak";
inline constexpr int RecentCount = 10;
/// Key of the recent menu's item at a 1-based place: "MnuRecProj1" to "MnuRecProj10".
QString RecentKey(int place);
} // namespace tray_items

} // namespace kelvrane
