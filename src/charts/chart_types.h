// The table of the 19 chart types. The daily chart walks it by ChartIndex; the chart screens keep
// the constant and the description.
#pragma once

#include "chartspace/chart.h"

#include <QString>

#include <span>

namespace kelvrane {

struct ChartTypeRecord {
    const char* Description;
    chartspace::ChartType type; ///< the stored constant
    bool Is3D;

    int ChartTypeValue() const { return static_cast<int>(type); }
};

inline constexpr int ChartTypeCount = 19;

/// The whole table: columns, bars, pies. Index 0 is "Stacked Column".
std::span<const ChartTypeRecord> ChartTypes();
std::span<const ChartTypeRecord> ColumnCharts();
std::span<const ChartTypeRecord> BarCharts();
std::span<const ChartTypeRecord> PieCharts();

/// The record at an index, clamped to 0..18.
const ChartTypeRecord& ChartTypeAt(int index);

} // namespace kelvrane
