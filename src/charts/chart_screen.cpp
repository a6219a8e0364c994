#include "charts/chart_screen.h"

#include "calendar/month_grid.h"
#include "charts/chart_data.h"
#include "charts/chart_pictures.h"
#include "charts/chart_setup.h"
#include "charts/chart_types.h"
#include "chartspace/form.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/help_topics.h"
#include "history/day_history.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <utility>

namespace kelvrane {

namespace {

const QString noData = QStringLiteral("No Data to Display");

/// The array of the dates. False when it can't be read; that was told then.
bool readTotals() {
    ChartModel& charts = Charts();
    charts.totals.clear();
    try {
        charts.totals = ReadProjectTotals(charts.StartDate, charts.EndDate);
        return true;
    } catch (const RuntimeError& error) {
        if (DayHistoryExists())
            ReportError(error, QStringLiteral("FillSetSpreadSheetValuesArray"));
        else
            TellMissingDayHistory();
        return false;
    }
}

/// The end is never before the start; with one day alone it follows the start.
void setDate(ChartDate which, QDate date) {
    ChartModel& charts = Charts();
    const bool isStart = which == ChartDate::Start;
    const QDate start = isStart ? date : charts.StartDate;
    const QDate end = isStart && charts.RangeMode ? charts.EndDate : date;
    if (end < start) {
        MsgBox(QStringLiteral("Ending date can't be before starting date"),
               QStringLiteral("Date Error"), BoxIcon::Exclamation);
        return;
    }
    charts.StartDate = start;
    charts.EndDate = end;
    charts.showDates();
    FillSetSpreadSheetValuesArray();
}

bool isOnCalendar(QDate date) {
    return date.isValid() && date.year() >= FirstCalendarYear && date.year() <= LastCalendarYear;
}

void flipRangeMode() {
    ChartModel& charts = Charts();
    charts.RangeMode = !charts.RangeMode;
    charts.showRangeMode();
    if (!charts.RangeMode && charts.EndDate != charts.StartDate)
        setDate(ChartDate::Start, charts.StartDate);
}

void flipViewList() {
    ChartModel& charts = Charts();
    charts.settings.ViewList = !charts.settings.ViewList;
    charts.showChoices();
    if (charts.settings.ViewList)
        FillViewList();
    emit charts.LayoutChanged();
}

struct Command {
    const char* key;
    void (*run)();
};
constexpr Command commands[] = {
    {"mnuSaveAs", mnuSaveAs},
    {"mnuPrint", mnuPrint},
    {"CHARTSETUP", [] { ports.screens->show(Screen::frmGraphControl); }},
    {"ADDREMOVELIST", flipViewList},
    {"DAYRANGE", flipRangeMode},
    {"SELSTARTDATE", [] { PickDate(ChartDate::Start); }},
    {"SELENDDATE", [] { PickDate(ChartDate::End); }},
    {"HELP", [] { ShowHelpTopic(topics::Chart); }},
};

} // namespace

void LoadChart() {
    ChartModel& charts = Charts();
    SkipErrors step = ReportingSteps(QStringLiteral("frmChart_Load"));
    if (CurrentEntryIndex >= 0)
        step([] { AddDataToDayInfoDataBase(); });
    charts.reset(ports.clock->today());
    charts.settings = ReadChartSettings();
    charts.showChoices();
    FillSetSpreadSheetValuesArray();
}

void UnloadChart() {
    WriteChartSettings(Charts().settings);
    ports.screens->unload(Screen::frmGraphControl);
    Charts().reset();
}

void FillSetSpreadSheetValuesArray() {
    ChartModel& charts = Charts();
    charts.setPane(ChartPane::Recalculating);
    if (!readTotals())
        return;
    charts.setPane(charts.totals.isEmpty() ? ChartPane::NoData : ChartPane::Chart);
    if (!charts.totals.isEmpty())
        SetSpreadSheetValues();
}

void SetSpreadSheetValues() {
    ChartModel& charts = Charts();
    chartspace::Chart chart;
    chart.type = static_cast<chartspace::ChartType>(charts.settings.ChartType);
    chart.legend = false;
    chart.emptyText = noData;
    SetHours(chart, charts.totals);
    if (chartspace::FormOf(chart.type).solid)
        chart.view = charts.settings.view;
    charts.setChart(chart);
    emit charts.ChartRebuilt();
    if (charts.settings.ViewList)
        FillViewList();
}

void FillViewList() {
    ChartModel& charts = Charts();
    if (charts.settings.ListViewType == list_views::ByProject)
        charts.tree.setProjects(charts.totals, charts.StartDate, charts.EndDate);
    else
        charts.tree.setDates(charts.totals.isEmpty() ? QStringList()
                                                     : ReadDates(charts.StartDate, charts.EndDate));
}

void PickDate(ChartDate which) {
    Charts().PickedDate = which;
    emit Charts().MonthViewWanted(which == ChartDate::Start ? QStringLiteral("SELSTARTDATE")
                                                            : QStringLiteral("SELENDDATE"));
}

void MonthView1_DateClick(QDate day) {
    setDate(Charts().PickedDate, day);
}

void StepChartDate(ChartDate which, int direction) {
    const QDate date = DateFromText(StepDate(Charts().date(which), direction));
    if (isOnCalendar(date))
        setDate(which, date);
}

void TypeChartDate(ChartDate which, const QString& text) {
    const QDate date = DateFromText(text.trimmed());
    if (isOnCalendar(date) && date != Charts().date(which))
        setDate(which, date);
}

void ChartToolBar_Click(const QString& key) {
    for (const Command& command : commands)
        if (key == QLatin1String(command.key)) {
            command.run();
            return;
        }
}

void ListDisplayType_Click(const QString& key) {
    ChartModel& charts = Charts();
    charts.settings.ListViewType =
        key == u"mnuListDisplayTypeByProject" ? list_views::ByProject : list_views::ByDate;
    charts.showChoices();
    FillViewList();
}

void mnuChartType_Click(const QString& key) {
    const ChartTypeRecord& record =
        ChartTypeAt(key.mid(QStringLiteral("mnuChartType").size()).toInt());
    ChooseChart(record.ChartTypeValue, record.Description);
    ShowFamilyOf(record.Description);
}

void WireChart() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    WireGraphControl();
    ChartModel& charts = Charts();
    const auto onClick = [&charts](KeyedItems& items, const char* routine,
                                   void (*run)(const QString&)) {
        QObject::connect(&items, &KeyedItems::Clicked, &charts,
                         [routine = QString::fromLatin1(routine), run](const QString& key) {
                             Guarded(routine, [&] { run(key); });
                         });
    };
    onClick(charts.smuiToolBar, "smuiToolBar_Click", ChartToolBar_Click);
    onClick(charts.mnuListDisplayType, "mnuListDisplayType_Click", ListDisplayType_Click);
    onClick(charts.mnuChartType, "mnuChartType_Click", mnuChartType_Click);
    QObject::connect(&charts.tree, &ChartTree::Failed, &charts, [](const RuntimeError& error) {
        ReportError(error, QStringLiteral("FillViewList"));
    });
}

} // namespace kelvrane
