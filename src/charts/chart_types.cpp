#include "charts/chart_types.h"

#include <algorithm>

namespace kelvrane {

namespace {

using chartspace::ChartType;

constexpr int columnCount = 7;
constexpr int barCount = 7;

// The constants are not in the order of the rows.
constexpr ChartTypeRecord table[ChartTypeCount] = {
    {"Stacked Column", ChartType::ColumnStacked, false},
    {"Clustered Column", ChartType::ColumnClustered, false},
    {"100 Stacked Column", ChartType::ColumnStacked100, false},
    {"3D Column", ChartType::Column3D, true},
    {"3D Stacked Column", ChartType::ColumnStacked3D, true},
    {"3D Column Clustered", ChartType::ColumnClustered3D, true},
    {"100 3D Stacked Column", ChartType::ColumnStacked1003D, true},
    {"Stacked Bar", ChartType::BarStacked, false},
    {"Clustered Bar", ChartType::BarClustered, false},
    {"100 Stacked Bar", ChartType::BarStacked100, false},
    {"3D Bar", ChartType::Bar3D, true},
    {"3D Stacked Bar", ChartType::BarStacked3D, true},
    {"3D Bar Clustered", ChartType::BarClustered3D, true},
    {"3D 100 Stacked Bar", ChartType::BarStacked1003D, true},
    {"Pie", ChartType::Pie, false},
    {"Exploding Pie", ChartType::PieExploded, false},
    {"Stacked Pie", ChartType::PieStacked, false},
    {"3D Pie", ChartType::Pie3D, true},
    {"3D Exploding Pie", ChartType::PieExploded3D, true},
};

} // namespace

std::span<const ChartTypeRecord> ChartTypes() {
    return table;
}

std::span<const ChartTypeRecord> ColumnCharts() {
    return ChartTypes().first(columnCount);
}

std::span<const ChartTypeRecord> BarCharts() {
    return ChartTypes().subspan(columnCount, barCount);
}

std::span<const ChartTypeRecord> PieCharts() {
    return ChartTypes().subspan(columnCount + barCount);
}

const ChartTypeRecord& ChartTypeAt(int index) {
    return table[std::clamp(index, 0, ChartTypeCount - 1)];
}

} // namespace kelvrane
