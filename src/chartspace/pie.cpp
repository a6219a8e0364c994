// Flat pies: one disc of the first series, pulled apart or not.
#include "chartspace/slices.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

constexpr double pulledOut = 0.1;   // of the radius
constexpr double arcStep = 3;       // pixels of arc between two points of an outline
constexpr double separatedFrom = 3; // length of an arc from which slices are set apart by a line

QPointF Towards(double angle, double length) {
    return {std::sin(angle) * length, -std::cos(angle) * length};
}

QPolygonF SliceOutline(const QPointF& centre, const Slice& slice, double radius) {
    const int steps =
        std::clamp(static_cast<int>(std::ceil(slice.sweep * radius / arcStep)), 1, 720);
    QPolygonF outline;
    for (int i = 0; i <= steps; ++i)
        outline.append(centre + Towards(slice.start + slice.sweep * i / steps, radius));
    if (slice.share < 1)
        outline.append(centre);
    outline.append(outline.first());
    return outline;
}

void AddSlices(Composition& c, const std::vector<Slice>& slices, const QPointF& centre,
               double radius, double pull) {
    for (const Slice& slice : slices) {
        const bool whole = slice.share > 1 - 1e-9;
        const QPointF shift = whole ? QPointF() : Towards(slice.middle(), pull);
        const QColor color = c.categoryColor(slice.category);
        const QPolygonF outline = SliceOutline(centre + shift, slice, radius);
        const bool separated = !whole && pull == 0 && slice.sweep * radius > separatedFrom;
        c.marks.append(
            {outline, color,
             separated ? QPen(c.theme.background, 1.2, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin)
                       : QPen(Qt::NoPen),
             slice.series, slice.category});
        if (c.chart.legend) {
            const double at = radius * (whole ? 0 : 0.68);
            AddShare(c, slice, centre + shift + Towards(slice.middle(), at), outline, color);
        }
    }
}

} // namespace

void DrawPie(Composition& c) {
    const std::vector<Slice> slices = SlicesOf(c, 0);
    std::vector<QString> names = RimNames(c, slices);
    const double beside = RimWidth(c, names);
    const double above = names.empty() ? 0 : 4;
    const QRectF room = c.room.adjusted(beside, above, -beside, -above);
    const double radius = std::min(room.width(), room.height()) / 2;
    if (radius < 4)
        return;
    const QPointF centre = room.center();
    const QRectF disc(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    c.plot = disc;
    if (slices.empty()) {
        AddEmptyPie(c, disc);
        return;
    }
    const double pull = c.form.exploded ? radius * pulledOut : 0;
    const double outer = radius - pull;
    AddSlices(c, slices, centre, outer, pull);
    std::vector<RimLabel> labels;
    for (size_t i = 0; i < names.size(); ++i)
        labels.push_back(
            {names[i], centre + Towards(slices[i].middle(), pull + outer + 1), slices[i].share});
    AddRimLabels(c, std::move(labels), disc);
}

} // namespace kelvrane::chartspace
