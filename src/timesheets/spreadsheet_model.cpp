#include "timesheets/spreadsheet_model.h"

#include "platform/item_rows.h"

#include <utility>

namespace kelvrane {

namespace {

// Keys and texts are as given, odd spellings included.
constexpr ItemRow barRows[] = {
    {.key = "FILE", .caption = "&File", .kind = ItemKind::SubMenu},
    {.key = "TIMESHEET_CALCULATE", .caption = "&Calculate", .image = "CALCULATE", .parent = "FILE"},
    {.key = "VIEW_TEMPLATE_SETUP", .caption = "&View Setup", .parent = "FILE"},
    {.key = "TIMESHEET_SAVE", .caption = "Save &As ...", .image = "save", .parent = "FILE"},
    {.key = "ADDTO_COLLECTION", .caption = "Save to Collection", .image = "BOOK", .parent = "FILE"},
    {.key = "TIMESHEET_PRINT", .caption = "&Print", .image = "PRINT", .parent = "FILE"},
    {.key = "EXIT", .caption = "E&xit", .parent = "FILE"},
    {.key = "TEMPLATE", .caption = "&Template", .kind = ItemKind::SubMenu},
    {.key = "TEMPLATE_NEW",
     .caption = "&New",
     .toolTip = "Create a new template",
     .image = "NEW",
     .parent = "TEMPLATE"},
    {.key = "TEMPLATE_OPEN",
     .caption = "&Open",
     .toolTip = "Open an existing template",
     .image = "OPEN",
     .parent = "TEMPLATE"},
    {.key = "TEMPLATE_SAVE",
     .caption = "&Save",
     .toolTip = "Save the data to a tempalte file",
     .image = "SAVE",
     .enabled = false,
     .parent = "TEMPLATE"},
    {.key = "TEMPLATE_SAVE_AS", .caption = "Sa&ve As ...", .image = "BLANK", .parent = "TEMPLATE"},
    {.key = "TEMPALTE_VIEW_CUR",
     .caption = "View &Current",
     .toolTip = "View Current template",
     .image = "VIEW",
     .parent = "TEMPLATE"},
    {.key = "TEMPLATE_SET_DEFAULT",
     .caption = "Set as &Default",
     .toolTip = "Set this template as default",
     .parent = "TEMPLATE"},
    {.key = "COLLECTION", .caption = "Co&llection", .kind = ItemKind::SubMenu},
    {.key = "SEL_COL_LOC", .caption = "Select Location", .parent = "COLLECTION"},
    {.key = "VIEW_COLLECTION", .caption = "&View Collections", .parent = "COLLECTION"},
    {"STARTINGDATE", "Start Date:", "Select the starting date"},
    {.key = "STARTDATE", .kind = ItemKind::Text},
    {.key = "HELP", .caption = "Help", .image = "HELP"},
};

struct OptionItem {
    const char* key;
    const char* caption;
    ItemKind kind;
    const char* values = ""; ///< separated by ";"
};
constexpr OptionItem optionItems[] = {
    {"", "Sort Order", ItemKind::Heading},
    {"SORTORDER", "\tSort Order:", ItemKind::DropDown, "By Project;By Customer"},
    {"", "Customize Calculations", ItemKind::Heading},
    {"TIMEINCREMENTS", "\tTime Increments", ItemKind::DropDown,
     "None;15 Minutes;30 Minutes;1 Hour"},
    {"WEEKSTARTDAY", "\tStart of Week", ItemKind::DropDown,
     "Monday;Tuesday;Wednesday;Thursday;Friday;Saturday;Sunday"},
    {"CALCNUMDAYS", "\tCalc # Days", ItemKind::Edit},
};

constexpr ItemRow statusRows[] = {
    {.key = "TEMPLATE_NAME", .toolTip = "Current spreadsheet template", .kind = ItemKind::Text},
    {.key = "COLLECTION_NAME", .toolTip = "Current collection location", .kind = ItemKind::Text},
    {.key = "PROGRESS", .kind = ItemKind::Progress},
};

} // namespace

SpreadsheetModel::SpreadsheetModel() {
    reset();
}

void SpreadsheetModel::reset() {
    state = {};
    state.caption = SheetCaption;
    SmartToolBar.refill(ItemsOf(barRows));
    QList<KeyedItem> options;
    for (const OptionItem& row : optionItems) {
        const QString values = QString::fromLatin1(row.values);
        const QStringList choices = values.isEmpty() ? QStringList() : values.split(u';');
        options.append({.key = QString::fromLatin1(row.key),
                        .caption = QString::fromLatin1(row.caption),
                        .value = choices.value(0),
                        .kind = row.kind,
                        .choices = choices});
    }
    SmartToolbox.refill(options);
    smuiStatusBar.refill(ItemsOf(statusRows));
    ss1.setHTMLData({});
    emit LayoutChanged();
}

void SpreadsheetModel::hideCalendar() {
    if (std::exchange(state.calendarShown, false))
        layOut();
}

SpreadsheetModel& Sheets() {
    static SpreadsheetModel model;
    return model;
}

} // namespace kelvrane
