// Charts to draw, and the list of all types.
#pragma once

#include "chartspace/form.h"
#include "chartspace/scene.h"

#include <QFont>

#include <array>

namespace kelvrane::chartspace {

inline constexpr std::array allTypes{
    ChartType::ColumnClustered,
    ChartType::ColumnStacked,
    ChartType::ColumnStacked100,
    ChartType::BarClustered,
    ChartType::BarStacked,
    ChartType::BarStacked100,
    ChartType::Pie,
    ChartType::PieExploded,
    ChartType::PieStacked,
    ChartType::Column3D,
    ChartType::ColumnClustered3D,
    ChartType::ColumnStacked3D,
    ChartType::ColumnStacked1003D,
    ChartType::Bar3D,
    ChartType::BarStacked3D,
    ChartType::BarClustered3D,
    ChartType::BarStacked1003D,
    ChartType::Pie3D,
    ChartType::PieExploded3D,
};

/// Every third name is a very long one; no value is zero.
inline Chart SampleChart(ChartType type, int categories) {
    Chart chart;
    chart.type = type;
    chart.emptyText = QStringLiteral("No Data");
    Series work{QStringLiteral("Work"), {}};
    Series rest{QStringLiteral("Break"), {}};
    for (int i = 0; i < categories; ++i) {
        chart.categories.append(
            i % 3 == 1 ? QStringLiteral("Move of the archive to the new building, part %1").arg(i)
                       : QStringLiteral("Project %1").arg(i));
        work.values.append(1.5 + (i * 37 % 50) / 8.0);
        rest.values.append(0.25 + (i * 13 % 9) / 8.0);
    }
    chart.series = {work, rest};
    return chart;
}

inline QFont SampleFont() {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

inline Scene SceneOf(const Chart& chart, const QSizeF& size = {480, 300}) {
    return Scene(chart, size, PaperTheme(), SampleFont());
}

} // namespace kelvrane::chartspace
