#include "timekeeping/hours_chart.h"

#include "platform/error.h"
#include "timevalues/time_values.h"

namespace kelvrane {

namespace {
constexpr double minutesPerHour = 60;
} // namespace

void SetHours(chartspace::Chart& chart, const QList<DayProjectTotal>& totals) {
    chartspace::Series work{QStringLiteral("Work"), {}};
    chartspace::Series breaks{QStringLiteral("Break"), {}};
    chart.categories.clear();
    for (const DayProjectTotal& total : totals) {
        chart.categories.append(total.Name);
        work.values.append(total.WorkMinutes / minutesPerHour);
        breaks.values.append(total.BreakMinutes / minutesPerHour);
    }
    chart.series = {work, breaks};
}

QString ChartValueTip(const QString& text) {
    try {
        return ReformatChartValueText(text);
    } catch (const RuntimeError&) {
        return {};
    }
}

} // namespace kelvrane
