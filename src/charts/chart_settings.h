// What the chart screen keeps from one opening to the next, in the section "Chart" of the settings.
#pragma once

#include "chartspace/chart.h"

#include <QString>

namespace kelvrane {

struct ChartSettings {
    int Width = 9375; ///< twips
    int Height = 7695;
    qint16 ChartType = 1; ///< ChartTypeValue of a row of the chart type table
    QString ChartTypeDesc = QStringLiteral("Stacked Column");
    chartspace::View3D view; ///< LastRot, LastIncl, LastPers, LastLightRot, LastLightIncl
    qint32 ListViewType = 0; ///< one of list_views::
    bool ViewList = false;   ///< the tree shows

    bool operator==(const ChartSettings&) const = default;
};

/// What is missing, no number or out of its range is the default; a type that the table doesn't
/// have, or a description of another type, too.
ChartSettings ReadChartSettings();
/// In one write.
void WriteChartSettings(const ChartSettings& settings);

} // namespace kelvrane
