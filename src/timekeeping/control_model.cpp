#include "timekeeping/control_model.h"

#include "platform/item_rows.h"

namespace kelvrane {

namespace {

constexpr ItemRow timeCtrlRows[] = {
    {"CONTROLPANEL", "Control Panel", "Show/Hide Control Panel", "left1"},
    {.kind = ItemKind::Separator},
    {"STOP", "Stop", "Stop timing current project", "stop"},
    {"BREAK", "Break", "Start a break for the current project", "break"},
    {.kind = ItemKind::Separator},
    {"QUITANDSAVE", "Quit && Save", "Quit and Save the Day's information", "save"},
    {.kind = ItemKind::Spacer},
    {"HELP", "Help", "Display help for the control form", "help"},
};

constexpr ItemRow projectStatusRows[] = {
    {.key = "PROJECT_NAME", .caption = "Project Name:", .kind = ItemKind::DropDown},
    {.key = "PROJECT_NUM", .caption = "Project Number:", .kind = ItemKind::Text},
    {.key = "START TIME", .caption = "Started:", .kind = ItemKind::Text},
    {.key = "BREAK TIME", .caption = "Breaks:", .kind = ItemKind::Text},
    {.key = "TOTAL TIME", .caption = "Total Time:", .kind = ItemKind::Text},
};

constexpr ItemRow pageRows[] = {
    {"OPTIONS", "Kelvrane Layout"},
    {"VIEWS", "Launch"},
};

constexpr ItemRow layoutRows[] = {
    {"BREAKDOWN", "Break Down", "Current Day's Break Down", "breakdown", ItemKind::Check},
    {"QUICKVIEW", "Quick View", "Current Day's Quick View", "quickview", ItemKind::Check},
    {.kind = ItemKind::Separator},
    {"GRAPH", "Graph", "Show the Graph", "graph", ItemKind::Check},
    {"WEEKVIEW", "Week View", "Show the Week View", "weekview", ItemKind::Check},
};

// REPORTSCREEN stays hidden: its key is only compared.
constexpr ItemRow launchRows[] = {
    {"GRAPHSCREEN", "Graph", "Show the Graph Screen", "graph"},
    {"SPREADSHEETSCREEN", "SpreadSheet", "Show the Spread Sheet Screen", "spreadsheet"},
    {.key = "REPORTSCREEN",
     .caption = "Reports",
     .toolTip = "Show the Reports Screen",
     .image = "report",
     .visible = false},
    {.kind = ItemKind::Separator},
    {"DATABASE", "Kelvrane Database", "Show the Database Screen", "database"},
    {"OPTIONS", "Options", "Show the Options Screen", "options"},
    {.key = "DAYINFO", .caption = "Day Info Database", .image = "dayinfo"},
};

constexpr ItemRow setDataRows[] = {
    {.key = "mnuSetDataModifyTime", .caption = "Modify", .image = "edit"},
    {.key = "mnuSetDataSep1", .kind = ItemKind::Separator},
    {.key = "mnuSetDataDeleteProject", .caption = "Delete", .image = "delete"},
};

} // namespace

ControlModel::ControlModel() {
    reset();
}

void ControlModel::reset() {
    smuiTimeCtrl.refill(ItemsOf(timeCtrlRows));
    smuiProjectStatus.refill(ItemsOf(projectStatusRows));
    smuiBreakDown.clear();
    smuiQuickView.clear();
    smuiOptions.refill(ItemsOf(pageRows));
    smuiPanelLayout.refill(ItemsOf(layoutRows));
    smuiPanelLaunch.refill(ItemsOf(launchRows));
    mnuSetData.refill(ItemsOf(setDataRows));
    lvwWeekView.setRows({});
    lvwWeekView.setHeaders({}, {});
    lvwWeekView.WeekStartDate = lvwWeekView.WeekEndDate = {};
    layout = {};
    loaded = false;
    setDailyChart({});
}

void ControlModel::setDailyChart(const chartspace::Chart& chart) {
    if (m_dailyChart == chart)
        return;
    m_dailyChart = chart;
    emit DailyChartChanged();
}

ControlModel& Control() {
    static ControlModel model;
    return model;
}

} // namespace kelvrane
