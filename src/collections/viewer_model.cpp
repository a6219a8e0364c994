#include "collections/viewer_model.h"

#include "platform/item_rows.h"

#include <utility>

namespace kelvrane {

namespace {

constexpr ItemRow barRows[] = {
    {.key = "FILE", .caption = "File", .kind = ItemKind::SubMenu},
    {.key = "SAVE", .caption = "Save", .image = "SAVE", .enabled = false, .parent = "FILE"},
    {.key = "CLOSE", .caption = "Close", .parent = "FILE"},
    {.key = "DISPLAYMODE", .caption = "Display Mode", .kind = ItemKind::SubMenu},
    {.key = "DM_VIEW",
     .caption = "View",
     .image = "VIEW",
     .kind = ItemKind::Choice,
     .parent = "DISPLAYMODE"},
    {.key = "DM_EDIT", .caption = "Edit", .kind = ItemKind::Choice, .parent = "DISPLAYMODE"},
    {.key = "DM_PRINT", .caption = "Print", .kind = ItemKind::Choice, .parent = "DISPLAYMODE"},
    {.key = "P", .caption = "Print", .kind = ItemKind::SubMenu, .visible = false},
    {.key = "P_DESELECT", .caption = "Deselect All", .image = "DESELECT", .parent = "P"},
    {.key = "P_SELECT", .caption = "Select All", .image = "SELECT", .parent = "P"},
    {.key = "P_PRINT", .caption = "Print", .image = "PRINT", .parent = "P"},
    {.key = "HELP", .caption = "Help", .image = "HELP"},
};

} // namespace

CollectionViewer::CollectionViewer() {
    smuiStatusBar.append({.key = QStringLiteral("LOCATION"),
                          .caption = QStringLiteral("Current Collection:"),
                          .kind = ItemKind::Button,
                          .toolTip = QStringLiteral("Select another collection")});
    reset();
}

void CollectionViewer::setPane(ViewerPane pane) {
    if (std::exchange(m_pane, pane) != pane)
        emit PaneChanged();
}

void CollectionViewer::setWeb(const SheetContents& contents) {
    m_web = contents;
    emit WebChanged();
}

void CollectionViewer::setBusy(bool busy) {
    if (std::exchange(m_busy, busy) != busy)
        emit BusyChanged(busy);
}

void CollectionViewer::reset() {
    smuiToolBar.refill(ItemsOf(barRows));
    smuiStatusBar.setValue(QStringLiteral("LOCATION"), {});
    smuiCollections.clear();
    CollectionFiles.clear();
    DisplayMode = Int16(display_modes::View);
    CurrentFile.clear();
    PrintSetup = false;
    if (LoadMode.isEmpty()) {
        ViewerLoc.clear();
        ViewerName.clear();
    }
    ss1.setHTMLData({});
    setWeb({});
    setPane(ViewerPane::txtError);
    setBusy(false);
}

CollectionViewer& Viewer() {
    static CollectionViewer viewer;
    return viewer;
}

} // namespace kelvrane
