#include "timekeeping/daily_chart.h"

#include "charts/chart_types.h"
#include "frame/globals.h"
#include "platform/skip_errors.h"
#include "timekeeping/control_model.h"
#include "timevalues/time_values.h"

#include <algorithm>

namespace kelvrane {

namespace {

struct DayProjectTotal {
    QString Name;
    QString Number;
    qint32 BreakMinutes = 0;
    qint32 WorkMinutes = 0;
};

QList<DayProjectTotal> totalsByProject() {
    if (DayEntries.isEmpty())
        Raise(errors::Subscript);
    QList<DayProjectTotal> totals;
    for (const DayEntry& entry : DayEntries) {
        auto total = std::ranges::find(totals, entry.ProjectName, &DayProjectTotal::Name);
        if (total == totals.end()) {
            totals.append({entry.ProjectName, entry.ProjectNumber});
            total = totals.end() - 1;
        }
        const int breakMinutes = ToMinutes(entry.BreakTime);
        total->BreakMinutes += breakMinutes;
        total->WorkMinutes += ToMinutes(entry.TotalTime) - breakMinutes;
    }
    return totals;
}

} // namespace

void UpdateDailyChart() {
    NumProjects = 0;
    chartspace::Chart chart;
    chart.type = DrawnTypeAt(ChartIndex);
    chart.emptyText = QStringLiteral("No Data");
    SkipErrors guard(QStringLiteral("UpdateDailyChart"));
    guard([&] {
        const QList<DayProjectTotal> totals = totalsByProject();
        chartspace::Series work{QStringLiteral("Work"), {}};
        chartspace::Series breaks{QStringLiteral("Break"), {}};
        for (const DayProjectTotal& total : totals) {
            chart.categories.append(total.Name);
            work.values.append(total.WorkMinutes / 60.0);
            breaks.values.append(total.BreakMinutes / 60.0);
        }
        chart.series = {work, breaks};
        NumProjects = totals.size();
    });
    Control().setDailyChart(chart);
}

void ApplyChartType() {
    chartspace::Chart chart = Control().dailyChart();
    chart.type = DrawnTypeAt(ChartIndex);
    Control().setDailyChart(chart);
}

} // namespace kelvrane
