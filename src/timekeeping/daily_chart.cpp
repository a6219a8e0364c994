#include "timekeeping/daily_chart.h"

#include "charts/chart_types.h"
#include "frame/globals.h"
#include "platform/skip_errors.h"
#include "timekeeping/control_model.h"
#include "timekeeping/hours_chart.h"
#include "timevalues/time_values.h"

#include <algorithm>

namespace kelvrane {

namespace {

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
        SetHours(chart, totals);
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
