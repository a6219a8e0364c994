// A small picture of a chart type: the type itself with a few sample values, drawn by the renderer
// of the real charts, without axes and labels.
#pragma once

#include "chartspace/chart.h"

#include <QPixmap>

class QPalette;

namespace kelvrane {

/// Size in logical pixels; the ground is transparent.
QPixmap ChartThumbnail(chartspace::ChartType type, const QSize& size, double pixelRatio,
                       const QPalette& palette);

} // namespace kelvrane
