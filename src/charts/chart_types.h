// The chart types that the user may choose from, in their given order. The daily chart keeps its
// type as an index into the whole table, the chart screen keeps value and description.
#pragma once

#include "chartspace/chart.h"

#include <QList>
#include <QString>

namespace kelvrane {

struct ChartTypeRecord {
    QString Description;
    qint16 ChartTypeValue = 0; ///< number of a chartspace::ChartType
    bool Is3D = false;

    bool operator==(const ChartTypeRecord&) const = default;
};

inline QList<ChartTypeRecord> ColumnCharts; ///< 7
inline QList<ChartTypeRecord> BarCharts;    ///< 7
inline QList<ChartTypeRecord> PieCharts;    ///< 5
inline QList<ChartTypeRecord> ChartTypes;   ///< columns, bars, pies: the table of ChartIndex

inline constexpr int chartTypeCount = 19;

/// Fills the three lists and the whole table; a second call gives the same.
void FillChartTypes();

/// The row of a 0-based index, which is clamped to the table. Fills the table when it is empty.
const ChartTypeRecord& ChartTypeAt(int chartIndex);
/// What that row draws.
chartspace::ChartType DrawnTypeAt(int chartIndex);

} // namespace kelvrane
