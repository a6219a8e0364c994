#include "chartspace/stage.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

/// An edge of the stage on the picture, with the points where labels belong.
struct Edge {
    QPointF from;
    QPointF to;
    std::vector<QPointF> anchors;

    QPointF run() const { return to - from; }
    QPointF middle() const { return (from + to) / 2; }
    double length() const { return std::hypot(run().x(), run().y()); }
};

/// Which of the edges that an axis may be read at.
enum class Pick { Lowest, Leftmost, Rightmost };

/// Whether labels find room under an edge. Turned texts run to the lower left, so under an edge
/// that falls that way they would run along it.
bool LiesLevel(const Edge& edge) {
    const QPointF run = edge.run();
    const bool falls = run.x() * run.y() >= 0; // to the right
    return std::abs(run.x()) >= std::abs(run.y()) * (falls ? 1 : 2.2);
}

/// The outline of the stage's picture, a little within it.
QPolygonF Silhouette(const Camera& camera, const Stage& stage) {
    std::vector<QPointF> points;
    for (const Vec3& corner : stage.corners())
        points.push_back(camera.project(corner * 0.985));
    std::sort(points.begin(), points.end(), [](const QPointF& a, const QPointF& b) {
        return a.x() != b.x() ? a.x() < b.x() : a.y() < b.y();
    });
    // The upper chain from left to right, then the lower one back.
    QPolygonF hull;
    for (int pass = 0; pass < 2; ++pass) {
        const auto start = hull.size();
        for (const QPointF& p : points) {
            while (hull.size() >= start + 2) {
                const QPointF a = hull[hull.size() - 1] - hull[hull.size() - 2];
                const QPointF b = p - hull[hull.size() - 1];
                if (a.x() * b.y() - a.y() * b.x() > 0)
                    break;
                hull.removeLast();
            }
            hull.append(p);
        }
        hull.removeLast();
        std::reverse(points.begin(), points.end());
    }
    hull.append(hull.first());
    return hull;
}

const Edge& Picked(const std::vector<Edge>& edges, Pick pick) {
    const auto rank = [pick](const Edge& edge) {
        const QPointF middle = edge.middle();
        return pick == Pick::Lowest     ? -middle.y()
               : pick == Pick::Leftmost ? middle.x()
                                        : -middle.x();
    };
    return *std::min_element(edges.begin(), edges.end(), [&rank](const Edge& a, const Edge& b) {
        return rank(a) < rank(b) - 1e-6;
    });
}

void AddEdgeLabels(Composition& c, LabelRow row, const std::vector<Edge>& edges, Pick pick) {
    const Edge& edge = Picked(edges, pick);
    if (row.count > 1 && edge.length() < c.line() * 1.5)
        return; // seen end on; a single label would tell the wrong thing
    double middle = 0;
    for (const Edge& each : edges)
        middle += each.middle().x() / static_cast<double>(edges.size());
    double deepest = 0;
    double spacing = 0;
    const double parts = std::max(1, row.role == LabelRole::Value ? row.count - 1 : row.count);
    if (pick == Pick::Lowest && LiesLevel(edge)) {
        row.side = Side::Below;
        row.lean = std::abs(edge.run().y() / std::max(1.0, std::abs(edge.run().x())));
        spacing = std::abs(edge.run().x()) / parts;
        deepest = c.sheet.bottom() - std::max(edge.from.y(), edge.to.y()) - 8;
    } else {
        const bool left =
            pick == Pick::Leftmost || (pick == Pick::Lowest && edge.middle().x() < middle);
        row.side = left ? Side::Left : Side::Right;
        row.lean = std::abs(edge.run().x() / std::max(1.0, std::abs(edge.run().y())));
        spacing = std::abs(edge.run().y()) / parts;
        deepest = left ? edge.middle().x() - 8 : c.sheet.right() - edge.middle().x() - 8;
    }
    PlaceRow(c, row, PlanRow(c, row, spacing, deepest), edge.anchors);
}

/// at: a point of the edge by its share; anchors at the given shares.
template <typename At, typename Share>
Edge EdgeOf(int count, const At& at, const Share& share) {
    Edge edge{at(0.0), at(1.0), {}};
    for (int i = 0; i < count; ++i)
        edge.anchors.push_back(at(share(i)));
    return edge;
}

} // namespace

void AddStageLabels(Composition& c, const Camera& camera, const Stage& stage,
                    const ValueAxis& axis) {
    c.keepClear = Silhouette(camera, stage);
    const bool columns = stage.up == 1;
    const Pick upright = !columns && FromBehind(c.chart.view) ? Pick::Rightmost : Pick::Leftmost;
    const int categories = c.values.categories();
    const int rows = c.values.series();
    std::vector<Edge> valueEdges, nameEdges;
    for (const double depth : {0.0, 1.0})
        for (const double end : {0.0, 1.0}) {
            valueEdges.push_back(EdgeOf(
                axis.steps + 1,
                [&](double share) { return camera.project(stage.at(end, share, depth)); },
                [&](int i) { return static_cast<double>(i) / axis.steps; }));
            if (end == 0 || columns) // looked at from above, the far end may stand out
                nameEdges.push_back(EdgeOf(
                    categories,
                    [&](double share) { return camera.project(stage.at(share, end, depth)); },
                    [&](int i) { return (i + 0.5) / categories; }));
        }
    AddEdgeLabels(c, ValueRow(axis, Side::Left), valueEdges,
                  columns ? Pick::Leftmost : Pick::Lowest);
    AddEdgeLabels(c, CategoryRow(c, Side::Below), nameEdges, columns ? Pick::Lowest : upright);
    if (c.form.arrangement != Arrangement::Deep || c.chart.legend)
        return; // the legend names the series

    const LabelRow names{rows, [&c](int i) { return OneLine(c.chart.series[i].name); }, Side::Right,
                         LabelRole::Series, true};
    std::vector<Edge> depthEdges;
    for (const double end : {0.0, 1.0})
        depthEdges.push_back(EdgeOf(
            rows,
            [&](double share) {
                return camera.project(columns ? stage.at(end, 0, share) : stage.at(0, end, share));
            },
            [&](int i) { return (rows - 0.5 - i) / rows; }));
    AddEdgeLabels(c, names, depthEdges, Pick::Rightmost);
}

} // namespace kelvrane::chartspace
