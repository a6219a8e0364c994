#include "records/manager_model.h"

#include <span>

namespace kelvrane {

namespace {

struct ItemRow {
    const char* key;
    const char* caption;
    const char* toolTip = "";
    const char* image = "";
    ItemKind kind = ItemKind::Button;
    bool visible = true;
    bool ticked = false;
};

constexpr ItemRow toolBarRows[] = {
    {"CLOSE", "Close", "", "close"},
    {"HELP", "Help", "", "help"},
};
constexpr ItemRow progressRows[] = {
    {"PROGRESS", "", "", "", ItemKind::Progress, false},
};
constexpr ItemRow tabRows[] = {
    {"OPTIONS", "Options"},
    {"DB Manager", "Database Manager"},
};
constexpr ItemRow viewRows[] = {
    {"SINGLE_VIEW", "Single Record View", "Display each project individually", "record",
     ItemKind::Choice, true, true},
    {"LIST_VIEW", "List View", "Display the projects in a list", "list", ItemKind::Choice},
    {"SELECT", "Select", "Select the current record", "select"},
    {"FIND", "Find", "Show/Hide find tool", "search", ItemKind::Check},
};
constexpr ItemRow editRows[] = {
    {"ADD_NEW", "Add New Project", "", "add"},
    {"ADD_NEW_CUSTOMER", "Add New Customer", "", "addcustomer", ItemKind::Button, false},
    {"UPDATE", "Update Info", "", "update"},
    {"SAVE", "SAVE", "", "save", ItemKind::Button, false},
    {"CANCEL", "Cancel", "", "cancel", ItemKind::Button, false},
    {"DELETE", "Delete Record", "", "delete"},
    {"TABLE", "Table", "", "", ItemKind::DropDown},
};
constexpr ItemRow findRows[] = {
    {"FIND", "Find:", "", "", ItemKind::Edit},
    {"FIELDS", "Fields:", "", "", ItemKind::DropDown},
    {"", "Conditions", "", "", ItemKind::Heading},
    {"CASE SENSITIVE", "Case Sensitive", "", "", ItemKind::Check},
    {"", "Direction", "", "", ItemKind::Heading},
    {"SEARCH FORWARD", "Forward", "", "", ItemKind::Choice, true, true},
    {"SEARCH BACKWARD", "Backward", "", "", ItemKind::Choice},
};
constexpr ItemRow buttonRows[] = {
    {"CmdUp", "Next record", "Next record", "next"},
    {"cmdDown", "Previous record", "Previous record", "prev"},
    {"cmdFind", "Find", "", "search"},
    {"ImgClose", "Close find window", "Close find window", "close"},
};

void fill(KeyedItems& items, std::span<const ItemRow> rows) {
    QList<KeyedItem> list;
    for (const ItemRow& row : rows)
        list.append({.key = QString::fromLatin1(row.key),
                     .caption = QString::fromLatin1(row.caption),
                     .kind = row.kind,
                     .toolTip = QString::fromLatin1(row.toolTip),
                     .image = QString::fromLatin1(row.image),
                     .visible = row.visible,
                     .ticked = row.ticked});
    items.refill(list);
}

struct EntryItem {
    KeyedItems ManagerModel::*panel;
    const char* key;
    bool whileEditing; ///< shown while editing; otherwise shown while idle
};
constexpr EntryItem entryItems[] = {
    {&ManagerModel::smuiPanel0, "SELECT", false},
    {&ManagerModel::smuiPanel0, "FIND", false},
    {&ManagerModel::smuiPanel0, "SINGLE_VIEW", false},
    {&ManagerModel::smuiPanel0, "LIST_VIEW", false},
    {&ManagerModel::smuiPanel1, "SAVE", true},
    {&ManagerModel::smuiPanel1, "CANCEL", true},
    {&ManagerModel::smuiPanel1, "DELETE", false},
    {&ManagerModel::smuiPanel1, "UPDATE", false},
};

} // namespace

ManagerModel::ManagerModel() {
    reset();
}

void ManagerModel::reset() {
    state = {};
    fill(smuiToolBar, toolBarRows);
    fill(smuiProgress, progressRows);
    fill(smuiOptions, tabRows);
    fill(smuiPanel0, viewRows);
    fill(smuiPanel1, editRows);
    fill(smuiFind, findRows);
    fill(buttons, buttonRows);
    ListView1.clear();
    emit LayoutChanged();
}

ManagerModel& Manager() {
    static ManagerModel manager;
    return manager;
}

void SetEntryButtons(bool editing, bool customers) {
    ManagerModel& manager = Manager();
    for (const EntryItem& item : entryItems)
        (manager.*item.panel)
            .setVisible(QString::fromLatin1(item.key), item.whileEditing == editing);
    // The search moves through the projects: not under an entry, not under a customer.
    manager.buttons.setEnabled(QStringLiteral("cmdFind"), !editing && !customers);
    manager.smuiPanel1.setVisible(QStringLiteral("ADD_NEW"), !customers);
    manager.smuiPanel1.setVisible(QStringLiteral("ADD_NEW_CUSTOMER"), customers);
}

void EnableStepping(bool on) {
    Manager().buttons.setEnabled(QStringLiteral("CmdUp"), on);
    Manager().buttons.setEnabled(QStringLiteral("cmdDown"), on);
}

void ShowList(bool shown) {
    Manager().state.listShown = shown;
}

void ReturnToIdle(bool customers) {
    SetEntryButtons(false, customers);
    EnableStepping(true);
    KeyedItems& panel = Manager().smuiPanel1;
    panel.setVisible(QStringLiteral("TABLE"), true);
    panel.setVisible(customers ? QStringLiteral("ADD_NEW_CUSTOMER") : QStringLiteral("ADD_NEW"),
                     true);
}

} // namespace kelvrane
