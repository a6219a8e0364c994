#include "timesheets/spreadsheet_model.h"

#include <utility>

namespace kelvrane {

namespace {

struct BarRow {
    const char* parent;
    const char* caption;
    const char* key;
    ItemKind kind = ItemKind::Button;
    const char* image = "";
    const char* toolTip = "";
};
// Keys and texts are as given, odd spellings included.
constexpr BarRow barRows[] = {
    {"", "&File", "FILE", ItemKind::SubMenu},
    {"FILE", "&Calculate", "TIMESHEET_CALCULATE", ItemKind::Button, "CALCULATE"},
    {"FILE", "&View Setup", "VIEW_TEMPLATE_SETUP"},
    {"FILE", "Save &As ...", "TIMESHEET_SAVE", ItemKind::Button, "save"},
    {"FILE", "Save to Collection", "ADDTO_COLLECTION", ItemKind::Button, "BOOK"},
    {"FILE", "&Print", "TIMESHEET_PRINT", ItemKind::Button, "PRINT"},
    {"FILE", "E&xit", "EXIT"},
    {"", "&Template", "TEMPLATE", ItemKind::SubMenu},
    {"TEMPLATE", "&New", "TEMPLATE_NEW", ItemKind::Button, "NEW", "Create a new template"},
    {"TEMPLATE", "&Open", "TEMPLATE_OPEN", ItemKind::Button, "OPEN", "Open an existing template"},
    {"TEMPLATE", "&Save", "TEMPLATE_SAVE", ItemKind::Button, "SAVE",
     "Save the data to a tempalte file"},
    {"TEMPLATE", "Sa&ve As ...", "TEMPLATE_SAVE_AS", ItemKind::Button, "BLANK"},
    {"TEMPLATE", "View &Current", "TEMPALTE_VIEW_CUR", ItemKind::Button, "VIEW",
     "View Current template"},
    {"TEMPLATE", "Set as &Default", "TEMPLATE_SET_DEFAULT", ItemKind::Button, "",
     "Set this template as default"},
    {"", "Co&llection", "COLLECTION", ItemKind::SubMenu},
    {"COLLECTION", "Select Location", "SEL_COL_LOC"},
    {"COLLECTION", "&View Collections", "VIEW_COLLECTION"},
    {"", "Start Date:", "STARTINGDATE", ItemKind::Button, "", "Select the starting date"},
    {"", "", "STARTDATE", ItemKind::Text},
    {"", "Help", "HELP", ItemKind::Button, "HELP"},
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

struct StatusItem {
    const char* key;
    const char* toolTip;
    ItemKind kind;
};
constexpr StatusItem statusItems[] = {
    {"TEMPLATE_NAME", "Current spreadsheet template", ItemKind::Text},
    {"COLLECTION_NAME", "Current collection location", ItemKind::Text},
    {"PROGRESS", "", ItemKind::Progress},
};

} // namespace

SpreadsheetModel::SpreadsheetModel() {
    reset();
}

void SpreadsheetModel::reset() {
    state = {};
    state.caption = SheetCaption;
    QList<KeyedItem> bar;
    for (const BarRow& row : barRows)
        bar.append({.key = QString::fromLatin1(row.key),
                    .caption = QString::fromLatin1(row.caption),
                    .kind = row.kind,
                    .toolTip = QString::fromLatin1(row.toolTip),
                    .image = QString::fromLatin1(row.image),
                    .parent = QString::fromLatin1(row.parent)});
    SmartToolBar.refill(bar);
    SmartToolBar.setEnabled(QStringLiteral("TEMPLATE_SAVE"), false);
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
    QList<KeyedItem> status;
    for (const StatusItem& row : statusItems)
        status.append({.key = QString::fromLatin1(row.key),
                       .kind = row.kind,
                       .toolTip = QString::fromLatin1(row.toolTip)});
    smuiStatusBar.refill(status);
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
