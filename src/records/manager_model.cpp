#include "records/manager_model.h"

#include "platform/item_rows.h"

namespace kelvrane {

namespace {

constexpr ItemRow toolBarRows[] = {
    {.key = "CLOSE", .caption = "Close", .image = "close"},
    {.key = "HELP", .caption = "Help", .image = "help"},
};
constexpr ItemRow progressRows[] = {
    {.key = "PROGRESS", .kind = ItemKind::Progress, .visible = false},
};
constexpr ItemRow tabRows[] = {
    {"OPTIONS", "Options"},
    {"DB Manager", "Database Manager"},
};
constexpr ItemRow viewRows[] = {
    {.key = "SINGLE_VIEW",
     .caption = "Single Record View",
     .toolTip = "Display each project individually",
     .image = "record",
     .kind = ItemKind::Choice,
     .ticked = true},
    {"LIST_VIEW", "List View", "Display the projects in a list", "list", ItemKind::Choice},
    {"SELECT", "Select", "Select the current record", "select"},
    {"FIND", "Find", "Show/Hide find tool", "search", ItemKind::Check},
};
constexpr ItemRow editRows[] = {
    {.key = "ADD_NEW", .caption = "Add New Project", .image = "add"},
    {.key = "ADD_NEW_CUSTOMER",
     .caption = "Add New Customer",
     .image = "addcustomer",
     .visible = false},
    {.key = "UPDATE", .caption = "Update Info", .image = "update"},
    {.key = "SAVE", .caption = "SAVE", .image = "save", .visible = false},
    {.key = "CANCEL", .caption = "Cancel", .image = "cancel", .visible = false},
    {.key = "DELETE", .caption = "Delete Record", .image = "delete"},
    {.key = "TABLE", .caption = "Table", .kind = ItemKind::DropDown},
};
constexpr ItemRow findRows[] = {
    {.key = "FIND", .caption = "Find:", .kind = ItemKind::Edit},
    {.key = "FIELDS", .caption = "Fields:", .kind = ItemKind::DropDown},
    {.caption = "Conditions", .kind = ItemKind::Heading},
    {.key = "CASE SENSITIVE", .caption = "Case Sensitive", .kind = ItemKind::Check},
    {.caption = "Direction", .kind = ItemKind::Heading},
    {.key = "SEARCH FORWARD", .caption = "Forward", .kind = ItemKind::Choice, .ticked = true},
    {.key = "SEARCH BACKWARD", .caption = "Backward", .kind = ItemKind::Choice},
};
constexpr ItemRow buttonRows[] = {
    {"CmdUp", "Next record", "Next record", "next"},
    {"cmdDown", "Previous record", "Previous record", "prev"},
    {.key = "cmdFind", .caption = "Find", .image = "search"},
    {"ImgClose", "Close find window", "Close find window", "close"},
};

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
    smuiToolBar.refill(ItemsOf(toolBarRows));
    smuiProgress.refill(ItemsOf(progressRows));
    smuiOptions.refill(ItemsOf(tabRows));
    smuiPanel0.refill(ItemsOf(viewRows));
    smuiPanel1.refill(ItemsOf(editRows));
    smuiFind.refill(ItemsOf(findRows));
    buttons.refill(ItemsOf(buttonRows));
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
