#include "timekeeping/control_model.h"

namespace kelvrane {

namespace {

struct Row {
    const char* key;
    const char* caption;
    const char* toolTip;
    const char* image;
    ItemKind kind;
    bool visible = true;
};

constexpr Row timeCtrlRows[] = {
    {"CONTROLPANEL", "Control Panel", "Show/Hide Control Panel", "left1", ItemKind::Button},
    {"", "", "", "", ItemKind::Separator},
    {"STOP", "Stop", "Stop timing current project", "stop", ItemKind::Button},
    {"BREAK", "Break", "Start a break for the current project", "break", ItemKind::Button},
    {"", "", "", "", ItemKind::Separator},
    {"QUITANDSAVE", "Quit && Save", "Quit and Save the Day's information", "save",
     ItemKind::Button},
    {"", "", "", "", ItemKind::Spacer},
    {"HELP", "Help", "Display help for the control form", "help", ItemKind::Button},
};

constexpr Row projectStatusRows[] = {
    {"PROJECT_NAME", "Project Name:", "", "", ItemKind::DropDown},
    {"PROJECT_NUM", "Project Number:", "", "", ItemKind::Text},
    {"START TIME", "Started:", "", "", ItemKind::Text},
    {"BREAK TIME", "Breaks:", "", "", ItemKind::Text},
    {"TOTAL TIME", "Total Time:", "", "", ItemKind::Text},
};

constexpr Row pageRows[] = {
    {"OPTIONS", "Kelvrane Layout", "", "", ItemKind::Button},
    {"VIEWS", "Launch", "", "", ItemKind::Button},
};

constexpr Row layoutRows[] = {
    {"BREAKDOWN", "Break Down", "Current Day's Break Down", "breakdown", ItemKind::Check},
    {"QUICKVIEW", "Quick View", "Current Day's Quick View", "quickview", ItemKind::Check},
    {"", "", "", "", ItemKind::Separator},
    {"GRAPH", "Graph", "Show the Graph", "graph", ItemKind::Check},
    {"WEEKVIEW", "Week View", "Show the Week View", "weekview", ItemKind::Check},
};

// REPORTSCREEN stays hidden: its key is only compared.
constexpr Row launchRows[] = {
    {"GRAPHSCREEN", "Graph", "Show the Graph Screen", "graph", ItemKind::Button},
    {"SPREADSHEETSCREEN", "SpreadSheet", "Show the Spread Sheet Screen", "spreadsheet",
     ItemKind::Button},
    {"REPORTSCREEN", "Reports", "Show the Reports Screen", "report", ItemKind::Button, false},
    {"", "", "", "", ItemKind::Separator},
    {"DATABASE", "Kelvrane Database", "Show the Database Screen", "database", ItemKind::Button},
    {"OPTIONS", "Options", "Show the Options Screen", "options", ItemKind::Button},
    {"DAYINFO", "Day Info Database", "", "dayinfo", ItemKind::Button},
};

constexpr Row setDataRows[] = {
    {"mnuSetDataModifyTime", "Modify", "", "edit", ItemKind::Button},
    {"mnuSetDataSep1", "", "", "", ItemKind::Separator},
    {"mnuSetDataDeleteProject", "Delete", "", "delete", ItemKind::Button},
};

template <std::size_t count>
QList<KeyedItem> itemsOf(const Row (&rows)[count]) {
    QList<KeyedItem> items;
    for (const Row& row : rows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .kind = row.kind,
                      .toolTip = QString::fromLatin1(row.toolTip),
                      .image = QString::fromLatin1(row.image),
                      .visible = row.visible});
    return items;
}

} // namespace

ControlModel::ControlModel() {
    reset();
}

void ControlModel::reset() {
    smuiTimeCtrl.refill(itemsOf(timeCtrlRows));
    smuiProjectStatus.refill(itemsOf(projectStatusRows));
    smuiBreakDown.clear();
    smuiQuickView.clear();
    smuiOptions.refill(itemsOf(pageRows));
    smuiPanelLayout.refill(itemsOf(layoutRows));
    smuiPanelLaunch.refill(itemsOf(launchRows));
    mnuSetData.refill(itemsOf(setDataRows));
    lvwWeekView.setRows({});
    lvwWeekView.setHeaders({}, {});
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
