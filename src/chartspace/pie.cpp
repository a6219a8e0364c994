// Flat pies: one disc, pulled apart or not, or a ring a series with the first one inside.
#include "chartspace/slices.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

constexpr double pulledOut = 0.1;   // of the radius
constexpr double arcStep = 3;       // pixels of arc between two points of an outline
constexpr double ringGap = 2;       // pixels between rings
constexpr double separatedFrom = 3; // length of an arc from which slices are set apart by a line

QPointF Towards(double angle, double length) {
    return {std::sin(angle) * length, -std::cos(angle) * length};
}

QPolygonF SliceOutline(const QPointF& centre, const Slice& slice, double inner, double outer) {
    const int steps =
        std::clamp(static_cast<int>(std::ceil(slice.sweep * outer / arcStep)), 1, 720);
    QPolygonF outline;
    for (int i = 0; i <= steps; ++i)
        outline.append(centre + Towards(slice.start + slice.sweep * i / steps, outer));
    if (inner <= 0) {
        if (slice.share < 1)
            outline.append(centre);
    } else {
        for (int i = steps; i >= 0; --i)
            outline.append(centre + Towards(slice.start + slice.sweep * i / steps, inner));
    }
    outline.append(outline.first());
    return outline;
}

/// The series' own shade of a project's hue: the further outside, the lighter.
QColor RingColor(const Composition& c, const Slice& slice) {
    const QColor color = c.categoryColor(slice.category);
    return slice.series == 0 ? color : Mixed(color, c.theme.background, 0.45);
}

void AddRing(Composition& c, const std::vector<Slice>& slices, const QPointF& centre, double inner,
             double outer, double pull) {
    for (const Slice& slice : slices) {
        const bool whole = slice.share > 1 - 1e-9;
        const QPointF shift = whole ? QPointF() : Towards(slice.middle(), pull);
        const QColor color = RingColor(c, slice);
        const QPolygonF outline = SliceOutline(centre + shift, slice, inner, outer);
        const bool separated = !whole && pull == 0 && slice.sweep * outer > separatedFrom;
        c.marks.append(
            {outline, color,
             separated ? QPen(c.theme.background, 1.2, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin)
                       : QPen(Qt::NoPen),
             slice.series, slice.category});
        if (c.chart.legend) {
            const double at = inner > 0 ? (inner + outer) / 2 : outer * (whole ? 0 : 0.68);
            AddShare(c, slice, centre + shift + Towards(slice.middle(), at), outline, color);
        }
    }
}

/// Radius of the outer rim of a ring: the inner disc gets the most room, as its slices are narrow.
double RimOf(double radius, int ring, int rings) {
    return rings == 1 ? radius : radius * (0.58 + 0.42 * ring / (rings - 1));
}

/// Which ring is which series, under the pie.
void AddRingNames(Composition& c) {
    if (c.values.series() < 2 || c.room.height() < c.line() * 8)
        return;
    QStringList names;
    for (const Series& series : c.chart.series.mid(0, 20))
        names.append(OneLine(series.name));
    const QString text =
        Shortened(QStringLiteral("Inside to outside: ") + names.join(QStringLiteral(", ")),
                  c.metrics, c.room.width());
    const QRectF box(c.room.left(), c.room.bottom() - c.line(), c.room.width(), c.line());
    Label label = LevelLabel(c, text, box, Qt::AlignCenter, LabelRole::Series);
    label.color = c.theme.mutedText;
    AddIfClear(c, label);
    c.room.setBottom(box.top() - 4);
}

} // namespace

void DrawPie(Composition& c) {
    const bool rings = c.form.arrangement == Arrangement::Rings;
    if (rings)
        AddRingNames(c);
    const std::vector<Slice> first = SlicesOf(c, 0);
    std::vector<QString> names = RimNames(c, first);
    const double beside = RimWidth(c, names);
    const double above = names.empty() ? 0 : 4;
    const QRectF room = c.room.adjusted(beside, above, -beside, -above);
    const double radius = std::min(room.width(), room.height()) / 2;
    if (radius < 4)
        return;
    const QPointF centre = room.center();
    const QRectF disc(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    c.plot = disc;

    const double pull = c.form.exploded ? radius * pulledOut : 0;
    const double outer = radius - pull;
    const int count = rings ? c.values.series() : 1;
    bool empty = true;
    for (int ring = 0; ring < count; ++ring) {
        const std::vector<Slice> slices = SlicesOf(c, ring);
        empty = empty && slices.empty();
        AddRing(c, slices, centre, ring == 0 ? 0 : RimOf(outer, ring - 1, count) + ringGap,
                RimOf(outer, ring, count), pull);
    }
    if (empty) {
        AddEmptyPie(c, disc);
        return;
    }
    std::vector<RimLabel> labels;
    for (size_t i = 0; i < names.size(); ++i)
        labels.push_back(
            {names[i],
             centre + Towards(first[i].middle(), pull + RimOf(outer, count - 1, count) + 1),
             first[i].share});
    AddRimLabels(c, std::move(labels), disc);
}

} // namespace kelvrane::chartspace
