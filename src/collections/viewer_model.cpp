#include "collections/viewer_model.h"

#include <utility>

namespace kelvrane {

namespace {

struct BarRow {
    const char* key;
    const char* caption;
    ItemKind kind;
    const char* image;
    const char* parent;
};
constexpr BarRow barRows[] = {
    {"FILE", "File", ItemKind::SubMenu, "", ""},
    {"SAVE", "Save", ItemKind::Button, "SAVE", "FILE"},
    {"CLOSE", "Close", ItemKind::Button, "", "FILE"},
    {"DISPLAYMODE", "Display Mode", ItemKind::SubMenu, "", ""},
    {"DM_VIEW", "View", ItemKind::Choice, "VIEW", "DISPLAYMODE"},
    {"DM_EDIT", "Edit", ItemKind::Choice, "", "DISPLAYMODE"},
    {"DM_PRINT", "Print", ItemKind::Choice, "", "DISPLAYMODE"},
    {"P", "Print", ItemKind::SubMenu, "", ""},
    {"P_DESELECT", "Deselect All", ItemKind::Button, "DESELECT", "P"},
    {"P_SELECT", "Select All", ItemKind::Button, "SELECT", "P"},
    {"P_PRINT", "Print", ItemKind::Button, "PRINT", "P"},
    {"HELP", "Help", ItemKind::Button, "HELP", ""},
};

QList<KeyedItem> barItems() {
    QList<KeyedItem> items;
    for (const BarRow& row : barRows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .kind = row.kind,
                      .image = QString::fromLatin1(row.image),
                      .enabled = row.key != std::string_view("SAVE"),
                      .visible = row.key != std::string_view("P"),
                      .parent = QString::fromLatin1(row.parent)});
    return items;
}

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
    smuiToolBar.refill(barItems());
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
