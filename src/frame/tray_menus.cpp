#include "frame/tray_menus.h"

namespace kelvrane {

namespace {

struct Row {
    const char* key;
    const char* caption;
    ItemKind kind;
    const char* parent = "";
    bool enabled = true;
    bool visible = true;
};

// mnuFile and its item are never shown and have no action.
constexpr Row trayRows[] = {
    {"mnuFile", "File", ItemKind::SubMenu, "", true, false},
    {"mnuFileExit", "Exit", ItemKind::Button, "mnuFile", true, false},
    {"mnuAboutKelvrane", "About Kelvrane", ItemKind::Button},
    {"mnuSystraySep1", "", ItemKind::Separator},
    {"mnuSystrayViewProjectInfo", "View Control Screen", ItemKind::Button},
    {"mnuSystraySep2", "", ItemKind::Separator},
    {"mnuSystrayStatus", "Status", ItemKind::SubMenu},
    {"mnuSysTrayStart", "Start Timing", ItemKind::Button, "mnuSystrayStatus", false},
    {"mnuSysTrayStop", "Stop timing", ItemKind::Button, "mnuSystrayStatus"},
    {"mnuSystraySep3", "", ItemKind::Separator, "mnuSystrayStatus"},
    {tray_items::Break, "On Break", ItemKind::Button, "mnuSystrayStatus"},
    {"mnuSystraySep4", "", ItemKind::Separator, "mnuSystrayStatus"},
    {"mnuSystrayStatusQuitSaveDay", "Quit && Save Day", ItemKind::Button, "mnuSystrayStatus"},
    {"mnuSystraySep5", "", ItemKind::Separator},
    {"mnuLaunch", "Launch", ItemKind::SubMenu},
    {"mnuSysTrayGraph", "Graph", ItemKind::Button, "mnuLaunch"},
    {"mnuSysTraySpreadsheet", "Spread Sheet", ItemKind::Button, "mnuLaunch"},
    {"mnuSysTrayDatabase", "Kelvrane Database", ItemKind::Button, "mnuLaunch"},
    {"mnuSystrayOptions", "Options", ItemKind::Button, "mnuLaunch"},
    {"mnuDaysInfo", "Day's Info", ItemKind::Button, "mnuLaunch"},
    {"mnuSystraySep6", "", ItemKind::Separator, "mnuLaunch"},
    {"mnuCheckForUpdate", "Check For Update", ItemKind::Button, "mnuLaunch"},
    {"mnuSystraySep7", "", ItemKind::Separator},
    {"mnuSysTrayExit", "Exit Program", ItemKind::Button},
};

QList<KeyedItem> trayItems() {
    QList<KeyedItem> items;
    for (const Row& row : trayRows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .kind = row.kind,
                      .enabled = row.enabled,
                      .visible = row.visible,
                      .parent = QString::fromLatin1(row.parent)});
    return items;
}

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
    mnuSysTray.refill(trayItems());
    mnuRProjects.refill(recentItems());
}

TrayMenus& Menus() {
    static TrayMenus menus;
    return menus;
}

} // namespace kelvrane
