// Flat columns and bars. Both are the same drawing; a bar chart only swaps the directions, with the
// first category on top.
#include "chartspace/bars.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

constexpr double thickestBar = 72;
constexpr double thickestOfCluster = 44;
constexpr double roundedFrom = 7; // thickness from which the free end has round corners
constexpr double seam = 1;        // between stacked blocks

struct Frame {
    QRectF plot;
    bool columns;

    QPointF at(double along, double value) const {
        return columns ? QPointF(plot.left() + along * plot.width(),
                                 plot.bottom() - value * plot.height())
                       : QPointF(plot.left() + value * plot.width(),
                                 plot.top() + along * plot.height());
    }
    double length() const { return columns ? plot.width() : plot.height(); }
};

/// Corner points of a block whose free end may be rounded. Works in (along, value) directions, so
/// that it serves columns and bars.
QPolygonF Outline(const Frame& frame, const Block& block) {
    QPointF from = frame.at(block.near, block.low);
    QPointF to = frame.at(block.far, block.high);
    double& alongFrom = frame.columns ? from.rx() : from.ry();
    double& alongTo = frame.columns ? to.rx() : to.ry();
    double& valueTo = frame.columns ? to.ry() : to.rx();
    double& valueFrom = frame.columns ? from.ry() : from.rx();
    if (alongTo - alongFrom >= 4) { // whole pixels keep the edges crisp
        alongFrom = std::round(alongFrom);
        alongTo = std::round(alongTo);
    }
    const double direction = frame.columns ? -1 : 1;
    const double length = std::max(1.0, std::abs(valueTo - valueFrom));
    valueTo = valueFrom + direction * length;
    if (!block.outermost && length > 3 * seam)
        valueTo -= direction * seam;

    const double thickness = alongTo - alongFrom;
    const double radius =
        block.outermost && thickness >= roundedFrom ? std::min(3.0, length / 2) : 0;
    QPolygonF outline;
    const auto add = [&](double along, double value) {
        outline.append(frame.columns ? QPointF(along, value) : QPointF(value, along));
    };
    add(alongFrom, valueFrom);
    if (radius == 0) {
        add(alongFrom, valueTo);
        add(alongTo, valueTo);
    } else {
        constexpr int points = 4;
        for (int i = 0; i <= points; ++i) {
            const double angle = M_PI / 2 * i / points;
            add(alongFrom + radius * (1 - std::cos(angle)),
                valueTo - direction * radius * (1 - std::sin(angle)));
        }
        for (int i = points; i >= 0; --i) {
            const double angle = M_PI / 2 * i / points;
            add(alongTo - radius * (1 - std::cos(angle)),
                valueTo - direction * radius * (1 - std::sin(angle)));
        }
    }
    add(alongTo, valueFrom);
    outline.append(outline.first());
    return outline;
}

/// Takes the room of both label rows off; what is left is the plot.
QRectF PlotRoom(const Composition& c, bool columns) {
    QRectF plot = c.room;
    // The axis isn't known yet: its longest text is, near enough.
    const ValueAxis axis = AxisFor(c, columns ? plot.height() * 0.8 : plot.width() * 0.7);
    const LabelRow values = ValueRow(axis, columns ? Side::Left : Side::Below);
    const LabelRow names = CategoryRow(c, columns ? Side::Below : Side::Left);
    constexpr double away = 5;
    if (columns) {
        plot.setLeft(plot.left() + PlanRow(c, values, 1, 0).depth + away + 1);
        plot.setTop(plot.top() + c.line() / 2);
        const double spacing = plot.width() / names.count;
        const double depth = PlanRow(c, names, spacing, plot.height() * 0.32).depth;
        plot.setBottom(plot.bottom() - depth - away - 1);
    } else {
        plot.setBottom(plot.bottom() - c.line() - away - 1);
        const double spacing = plot.height() / names.count;
        const double depth = PlanRow(c, names, spacing, plot.width() * 0.34).depth;
        plot.setLeft(plot.left() + depth + away + 1);
        plot.setRight(plot.right() - c.metrics.horizontalAdvance(axis.text(axis.steps)) / 2);
    }
    return QRectF(QPointF(std::round(plot.left()), std::round(plot.top())),
                  QPointF(std::round(plot.right()), std::round(plot.bottom())));
}

void AddGrid(Composition& c, const Frame& frame, const ValueAxis& axis) {
    for (int line = axis.steps; line >= 0; --line) {
        const double value = static_cast<double>(line) / axis.steps;
        QPolygonF points({frame.at(0, value), frame.at(1, value)});
        for (QPointF& p : points) // one sharp row of pixels
            p = QPointF(std::floor(p.x()) + 0.5, std::floor(p.y()) + 0.5);
        c.marks.append({points, Qt::NoBrush, QPen(line == 0 ? c.theme.baseLine : c.theme.grid, 1)});
    }
}

} // namespace

void DrawFlat(Composition& c) {
    const bool columns = c.form.family == Family::Column;
    const Frame frame{PlotRoom(c, columns), columns};
    c.plot = frame.plot;
    if (c.plot.width() < 4 || c.plot.height() < 4) {
        c.plot = {};
        return;
    }
    const ValueAxis axis = AxisFor(c, columns ? c.plot.height() : c.plot.width());
    AddGrid(c, frame, axis);
    const double thickest =
        c.form.arrangement == Arrangement::Clustered ? thickestOfCluster : thickestBar;
    for (const Block& block : BlocksOf(c, axis, thickest / frame.length()))
        c.marks.append({Outline(frame, block), c.seriesColor(block.series), Qt::NoPen, block.series,
                        block.category});

    std::vector<QPointF> anchors;
    for (int line = 0; line <= axis.steps; ++line)
        anchors.push_back(frame.at(0, static_cast<double>(line) / axis.steps));
    if (!columns) // under the plot
        for (QPointF& anchor : anchors)
            anchor.setY(c.plot.bottom());
    const LabelRow values = ValueRow(axis, columns ? Side::Left : Side::Below);
    const double valueSpacing = (columns ? c.plot.height() : c.plot.width()) / axis.steps;
    PlaceRow(c, values, PlanRow(c, values, valueSpacing, 0), anchors);

    anchors.clear();
    for (int i = 0; i < c.values.categories(); ++i)
        anchors.push_back(frame.at((i + 0.5) / c.values.categories(), 0));
    const LabelRow names = CategoryRow(c, columns ? Side::Below : Side::Left);
    const double deepest = columns ? c.sheet.bottom() - c.plot.bottom() : c.plot.left();
    PlaceRow(c, names, PlanRow(c, names, frame.length() / c.values.categories(), deepest), anchors);
}

} // namespace kelvrane::chartspace
