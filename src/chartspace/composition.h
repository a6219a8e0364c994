// The sheet that the drawing routines of a scene hand on to each other: what is to be shown, the
// room that is still free, and what was drawn so far.
#pragma once

#include "chartspace/form.h"
#include "chartspace/scene.h"
#include "chartspace/values.h"

#include <QFontMetricsF>

namespace kelvrane::chartspace {

struct Composition {
    Composition(const Chart& shownChart, const QSizeF& size, const ChartTheme& shownTheme,
                const QFont& shownFont);

    const Chart& chart;
    const Form& form;
    const ChartTheme& theme;
    Values values;
    QFont font;            ///< of axis labels and legend; in pixels, so that every device agrees
    QFontMetricsF metrics; ///< of that font
    QRectF sheet;          ///< all
    QRectF room;           ///< what is still free

    QList<Mark> marks;
    QList<Label> labels;
    QRectF plot;
    QPolygonF keepClear; ///< convex; labels on the outside stay off it

    double line() const { return metrics.height(); }
    QColor seriesColor(int series) const;
    QColor categoryColor(int category) const;
};

/// The parts of a scene. Each draws and takes what it needs from the room.
void AddEmptyText(Composition& c);
void AddTitle(Composition& c);
void AddLegend(Composition& c);
void DrawFlat(Composition& c); ///< columns and bars
void DrawSolid(Composition& c);
void DrawPie(Composition& c);
void DrawSolidPie(Composition& c);

} // namespace kelvrane::chartspace
