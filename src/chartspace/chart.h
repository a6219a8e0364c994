// A chart as data: what is shown, as which type, from which side. The scene (scene.h) turns it into
// shapes, and painting is the same on a window, an image and a printer.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace kelvrane::chartspace {

/// The chart types; the numbers are stored in settings and must not change.
enum class ChartType : int {
    ColumnClustered = 0,
    ColumnStacked = 1,
    ColumnStacked100 = 2,
    BarClustered = 3,
    BarStacked = 4,
    BarStacked100 = 5,
    Pie = 18,
    PieExploded = 19,
    PieStacked = 20,
    Column3D = 46,
    ColumnClustered3D = 47,
    ColumnStacked3D = 48,
    ColumnStacked1003D = 49,
    Bar3D = 50,
    BarStacked3D = 51,
    BarClustered3D = 52,
    BarStacked1003D = 53,
    Pie3D = 58,
    PieExploded3D = 59,
};

struct Series {
    QString name;
    QList<double> values; ///< hours, one a category
    bool operator==(const Series&) const = default;
};

/// Degrees, but for the perspective in percent. The ranges are those of the sliders.
struct View3D {
    double rotation = 20;         ///< 0 to 360
    double inclination = 15;      ///< -90 to 90
    double perspective = 20;      ///< 0 to 100
    double lightRotation = 315;   ///< 0 to 360
    double lightInclination = 15; ///< -90 to 90
    bool operator==(const View3D&) const = default;
};

struct Chart {
    ChartType type = ChartType::ColumnStacked;
    QStringList categories;
    QList<Series> series;
    bool legend = true;
    QString title;     ///< over the plot; empty: none
    QString emptyText; ///< shown alone, in the middle, when there are no categories or series
    View3D view;
    bool operator==(const Chart&) const = default;
};

} // namespace kelvrane::chartspace
