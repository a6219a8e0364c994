#include "charts/chart_types.h"

#include <algorithm>
#include <array>

namespace kelvrane {

namespace {

struct Row {
    const char* description;
    chartspace::ChartType type;
    bool is3D;
};

using chartspace::ChartType;

constexpr std::array columnRows{
    Row{"Stacked Column", ChartType::ColumnStacked, false},
    Row{"Clustered Column", ChartType::ColumnClustered, false},
    Row{"100 Stacked Column", ChartType::ColumnStacked100, false},
    Row{"3D Column", ChartType::Column3D, true},
    Row{"3D Stacked Column", ChartType::ColumnStacked3D, true},
    Row{"3D Column Clustered", ChartType::ColumnClustered3D, true},
    Row{"100 3D Stacked Column", ChartType::ColumnStacked1003D, true},
};

constexpr std::array barRows{
    Row{"Stacked Bar", ChartType::BarStacked, false},
    Row{"Clustered Bar", ChartType::BarClustered, false},
    Row{"100 Stacked Bar", ChartType::BarStacked100, false},
    Row{"3D Bar", ChartType::Bar3D, true},
    Row{"3D Stacked Bar", ChartType::BarStacked3D, true},
    Row{"3D Bar Clustered", ChartType::BarClustered3D, true},
    Row{"3D 100 Stacked Bar", ChartType::BarStacked1003D, true},
};

constexpr std::array pieRows{
    Row{"Pie", ChartType::Pie, false},
    Row{"Exploding Pie", ChartType::PieExploded, false},
    Row{"Stacked Pie", ChartType::PieStacked, false},
    Row{"3D Pie", ChartType::Pie3D, true},
    Row{"3D Exploding Pie", ChartType::PieExploded3D, true},
};

static_assert(columnRows.size() + barRows.size() + pieRows.size() == chartTypeCount);

template <typename Rows>
QList<ChartTypeRecord> Records(const Rows& rows) {
    QList<ChartTypeRecord> records;
    for (const Row& row : rows)
        records.append(
            {QString::fromLatin1(row.description), static_cast<qint16>(row.type), row.is3D});
    return records;
}

} // namespace

void FillChartTypes() {
    ColumnCharts = Records(columnRows);
    BarCharts = Records(barRows);
    PieCharts = Records(pieRows);
    ChartTypes = ColumnCharts + BarCharts + PieCharts;
}

const ChartTypeRecord& ChartTypeAt(int chartIndex) {
    if (ChartTypes.isEmpty())
        FillChartTypes();
    return ChartTypes.at(std::clamp(chartIndex, 0, chartTypeCount - 1));
}

chartspace::ChartType DrawnTypeAt(int chartIndex) {
    return static_cast<chartspace::ChartType>(ChartTypeAt(chartIndex).ChartTypeValue);
}

} // namespace kelvrane
