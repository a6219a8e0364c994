#include "chartspace/slices.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

constexpr double leader = 12; // length of the line from the rim to a name
constexpr double away = 4;    // between line and name

QString ShareText(double share) {
    return share < 0.005 ? QStringLiteral("<1%")
                         : QStringLiteral("%1%").arg(std::lround(share * 100));
}

/// Moves the labels of one side apart, top to bottom, within the sheet. Each is at least a line
/// below the one before.
std::vector<double> Spread(const std::vector<RimLabel>& side, double line, double top,
                           double bottom) {
    std::vector<double> ys;
    for (const RimLabel& label : side)
        ys.push_back(std::max(label.rim.y(), ys.empty() ? top : ys.back() + line));
    double lowest = bottom;
    for (auto y = ys.rbegin(); y != ys.rend(); ++y) {
        *y = std::min(*y, lowest);
        lowest = *y - line;
    }
    return ys;
}

void AddSide(Composition& c, std::vector<RimLabel> side, const QRectF& pie, bool left) {
    const double line = c.line();
    const double top = c.room.top() + line / 2;
    const double bottom = c.room.bottom() - line / 2;
    const auto capacity = static_cast<size_t>(std::max(0.0, (bottom - top) / line) + 1);
    std::stable_sort(side.begin(), side.end(),
                     [](const RimLabel& a, const RimLabel& b) { return a.share > b.share; });
    if (side.size() > capacity)
        side.resize(capacity);
    std::stable_sort(side.begin(), side.end(),
                     [](const RimLabel& a, const RimLabel& b) { return a.rim.y() < b.rim.y(); });
    const std::vector<double> ys = Spread(side, line, top, bottom);
    const double x = left ? pie.left() - leader : pie.right() + leader;
    const double width = left ? x - away - c.room.left() : c.room.right() - x - away;
    for (size_t i = 0; i < side.size(); ++i) {
        const QString share = QStringLiteral("  ") + ShareText(side[i].share);
        const QString text =
            Shortened(side[i].name, c.metrics, width - c.metrics.horizontalAdvance(share) - 1) +
            share;
        const QRectF box(left ? x - away - width : x + away, ys[i] - line / 2, width, line);
        if (!AddIfClear(c, LevelLabel(c, text, box,
                                      Qt::AlignVCenter | (left ? Qt::AlignRight : Qt::AlignLeft),
                                      LabelRole::Category)))
            continue;
        const QPointF end(x, ys[i]);
        const QPointF knee(left ? std::min(side[i].rim.x(), pie.left() - 2)
                                : std::max(side[i].rim.x(), pie.right() + 2),
                           ys[i]);
        // First of all marks, so that a line from behind a solid pie stays behind it.
        const bool reaches = std::abs(side[i].rim.y() - ys[i]) < 1;
        c.marks.prepend(
            {reaches ? QPolygonF({side[i].rim, end}) : QPolygonF({side[i].rim, knee, end}),
             Qt::NoBrush, QPen(c.theme.baseLine, 1)});
    }
}

} // namespace

std::vector<Slice> SlicesOf(const Composition& c, int series) {
    const double total = c.values.seriesTotal(series);
    std::vector<Slice> slices;
    double sum = 0;
    for (int i = 0; i < c.values.categories(); ++i) {
        const double value = c.values.at(series, i);
        if (value <= 0)
            continue;
        const double share = value / total;
        slices.push_back({series, i, sum * 2 * M_PI, share * 2 * M_PI, share});
        sum += share;
    }
    return slices;
}

std::vector<QString> RimNames(const Composition& c, const std::vector<Slice>& slices) {
    std::vector<QString> names;
    if (c.chart.legend || c.room.width() < 180 || c.room.height() < c.line() * 5)
        return names;
    // More would find no room; the largest are kept.
    std::vector<double> shares;
    for (const Slice& slice : slices)
        shares.push_back(slice.share);
    std::sort(shares.rbegin(), shares.rend());
    const double least = shares.size() > 200 ? shares[200] : 0;
    for (const Slice& slice : slices)
        names.push_back(slice.share < least ? QString()
                                            : OneLine(c.chart.categories[slice.category]));
    return names;
}

double RimWidth(const Composition& c, const std::vector<QString>& names) {
    if (names.empty())
        return 0;
    double widest = 0;
    for (const QString& name : names)
        widest = std::max(widest, c.metrics.horizontalAdvance(name) + 1);
    widest += c.metrics.horizontalAdvance(QStringLiteral("  100%"));
    return std::min(widest, c.room.width() * 0.28) + leader + away;
}

void AddRimLabels(Composition& c, std::vector<RimLabel> labels, const QRectF& pie) {
    std::vector<RimLabel> left, right;
    for (RimLabel& label : labels)
        if (!label.name.isEmpty())
            (label.rim.x() < pie.center().x() ? left : right).push_back(std::move(label));
    AddSide(c, std::move(left), pie, true);
    AddSide(c, std::move(right), pie, false);
}

void AddShare(Composition& c, const Slice& slice, const QPointF& middle, const QPolygonF& outline,
              const QColor& ground) {
    if (slice.share < 0.03)
        return;
    const QString text = ShareText(slice.share);
    QRectF box(0, 0, c.metrics.horizontalAdvance(text) + 2, c.line());
    box.moveCenter(middle);
    const QRectF needed = box.adjusted(-2, 1, 2, -1);
    for (const QPointF& corner :
         {needed.topLeft(), needed.topRight(), needed.bottomLeft(), needed.bottomRight()})
        if (!outline.containsPoint(corner, Qt::OddEvenFill))
            return;
    Label label = LevelLabel(c, text, box, Qt::AlignCenter, LabelRole::Share);
    label.color = InkOn(ground);
    AddIfClear(c, label);
}

void AddEmptyPie(Composition& c, const QRectF& around) {
    QPolygonF circle;
    for (int i = 0; i <= 90; ++i) {
        const double angle = 2 * M_PI * i / 90;
        circle.append({around.center().x() + std::sin(angle) * around.width() / 2,
                       around.center().y() - std::cos(angle) * around.height() / 2});
    }
    c.marks.append({circle, c.theme.wall, QPen(c.theme.grid, 1)});
}

} // namespace kelvrane::chartspace
