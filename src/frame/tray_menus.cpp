#include "frame/tray_menus.h"

#include "platform/item_rows.h"

namespace kelvrane {

namespace {

// mnuFile and its item are never shown and have no action.
constexpr ItemRow trayRows[] = {
    {.key = "mnuFile", .caption = "File", .kind = ItemKind::SubMenu, .visible = false},
    {.key = "mnuFileExit", .caption = "Exit", .visible = false, .parent = "mnuFile"},
    {"mnuAboutKelvrane", "About Kelvrane"},
    {.key = "mnuSystraySep1", .kind = ItemKind::Separator},
    {"mnuSystrayViewProjectInfo", "View Control Screen"},
    {.key = "mnuSystraySep2", .kind = ItemKind::Separator},
    {.key = "mnuSystrayStatus", .caption = "Status", .kind = ItemKind::SubMenu},
    {.key = "mnuSysTrayStart",
     .caption = "Start Timing",
     .enabled = false,
     .parent = "mnuSystrayStatus"},
    {.key = "mnuSysTrayStop", .caption = "Stop timing", .parent = "mnuSystrayStatus"},
    {.key = "mnuSystraySep3", .kind = ItemKind::Separator, .parent = "mnuSystrayStatus"},
    {.key = tray_items::Break, .caption = "On Break", .parent = "mnuSystrayStatus"},
    {.key = "mnuSystraySep4", .kind = ItemKind::Separator, .parent = "mnuSystrayStatus"},
    {.key = "mnuSystrayStatusQuitSaveDay",
     .caption = "Quit && Save Day",
     .parent = "mnuSystrayStatus"},
    {.key = "mnuSystraySep5", .kind = ItemKind::Separator},
    {.key = "mnuLaunch", .caption = "Launch", .kind = ItemKind::SubMenu},
    {.key = "mnuSysTrayGraph", .caption = "Graph", .parent = "mnuLaunch"},
    {.key = "mnuSysTraySpreadsheet", .caption = "Spread Sheet", .parent = "mnuLaunch"},
    {.key = "mnuSysTrayDatabase", .caption = "Kelvrane Database", .parent = "mnuLaunch"},
    {.key = "mnuSystrayOptions", .caption = "Options", .parent = "mnuLaunch"},
    {.key = "mnuDaysInfo", .caption = "Day's Info", .parent = "mnuLaunch"},
    {.key = "mnuSystraySep6", .kind = ItemKind::Separator, .parent = "mnuLaunch"},
    {.key = "mnuCheckForUpdate", .caption = "Check For Update", .parent = "mnuLaunch"},
    {.key = "mnuSystraySep7", .kind = ItemKind::Separator},
    {"mnuSysTrayExit", "Exit Program"},
};

QList<KeyedItem> recentItems() {
    QList<KeyedItem> items;
    for (int place = 1; place <= tray_items::RecentCount; ++place)
        items.append(
            {.key = tray_items::RecentKey(place), .caption = {}, .kind = ItemKind::Button});
    return items;
}

} // namespace

QString tray_items::RecentKey(int place) {
    return QStringLiteral("MnuRecProj") + QString::number(place);
}

TrayMenus::TrayMenus() {
    reset();
}

void TrayMenus::reset() {
    mnuSysTray.refill(ItemsOf(trayRows));
    mnuRProjects.refill(recentItems());
}

TrayMenus& Menus() {
    static TrayMenus menus;
    return menus;
}

} // namespace kelvrane
