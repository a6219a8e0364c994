// Hours of work and break by project as a chart: what the daily chart and the chart screen share.
#pragma once

#include "chartspace/chart.h"

#include <QList>
#include <QString>

namespace kelvrane {

/// A project's share of what is charted.
struct DayProjectTotal {
    QString Name;
    QString Number;
    qint32 BreakMinutes = 0;
    qint32 WorkMinutes = 0; ///< without the break

    bool operator==(const DayProjectTotal&) const = default;
};

/// Gives the chart a category for each total, in their order, and the series "Work" and "Break" in
/// hours. All else in the chart stays.
void SetHours(chartspace::Chart& chart, const QList<DayProjectTotal>& totals);

/// The tip of a chart's value, by ChartIndex whatever chart it stands on; "" for none, also where
/// the text has a form that ReformatChartValueText refuses.
QString ChartValueTip(const QString& text);

} // namespace kelvrane
