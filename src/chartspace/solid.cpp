// Solid columns and bars: boxes on a ground before two walls. Every box stands in a cell of its own
// of a regular grid, so sorting the cells by their distance from the viewer, axis by axis, gives an
// order in which no box ever covers one that is nearer.
#include "chartspace/stage.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

constexpr double depthFilled = 0.66; // of a row's depth, where rows stand behind each other

Stage StageOf(const Composition& c, double height) {
    const bool columns = c.form.family == Family::Column;
    Stage stage{{1, height, 0}, columns ? 0 : 1, columns ? 1 : 0};
    const double slot = (columns ? 1.0 : height) / c.values.categories();
    const bool deep = c.form.arrangement == Arrangement::Deep;
    stage.size[2] = deep ? c.values.series() * std::clamp(slot * 0.9, 0.06, 0.2)
                         : std::clamp(slot * 0.9, 0.03, 0.24);
    return stage;
}

/// The stage whose picture has the proportions of the room.
Stage FittingStage(const Composition& c, const QRectF& room) {
    const double wanted = room.width() / room.height();
    double low = 0.15, high = 3;
    for (int i = 0; i < 16; ++i) {
        const double middle = std::sqrt(low * high);
        const Stage stage = StageOf(c, middle);
        const QRectF seen = Camera(c.chart.view, stage.radius()).bounds(stage.corners());
        (seen.width() / std::max(seen.height(), 1e-9) > wanted ? low : high) = middle;
    }
    return StageOf(c, std::sqrt(low * high));
}

double DistanceAlong(double eye, double low, double high) {
    return eye < low ? low - eye : eye > high ? eye - high : 0;
}

/// Farthest first.
std::vector<Box> SortedBoxes(const Composition& c, const Stage& stage, const ValueAxis& axis,
                             const Vec3& eye) {
    const bool deep = c.form.arrangement == Arrangement::Deep;
    const double rows = deep ? c.values.series() : 1;
    const double margin = (1 - (deep ? depthFilled : 0.8)) / 2;
    const double thickest = deep ? 0.16 : c.form.arrangement == Arrangement::Clustered ? 0.1 : 0.2;
    const std::array<size_t, 3> axes{static_cast<size_t>(stage.along), 2,
                                     static_cast<size_t>(stage.up)};
    std::vector<Box> boxes;
    for (const Block& block : BlocksOf(c, axis, thickest)) {
        // The first series stands in front.
        const double row = deep ? rows - 1 - block.series : 0;
        const Vec3 a = stage.at(block.near, block.low, (row + margin) / rows);
        const Vec3 b = stage.at(block.far, block.high, (row + 1 - margin) / rows);
        Box box{a, b, block.series, block.category, {}};
        for (size_t i = 0; i < 3; ++i) {
            box.low[i] = std::min(a[i], b[i]);
            box.high[i] = std::max(a[i], b[i]);
        }
        for (size_t i = 0; i < 3; ++i)
            box.distance[i] = DistanceAlong(eye[axes[i]], box.low[axes[i]], box.high[axes[i]]);
        boxes.push_back(box);
    }
    std::stable_sort(boxes.begin(), boxes.end(),
                     [](const Box& a, const Box& b) { return a.distance > b.distance; });
    return boxes;
}

/// The rectangle of a box at one end of an axis.
QPolygonF SideOf(const Camera& camera, const Vec3& low, const Vec3& high, size_t axis, double at) {
    const size_t u = (axis + 1) % 3;
    const size_t v = (axis + 2) % 3;
    const std::array<std::pair<double, double>, 4> corners{
        {{low[u], low[v]}, {high[u], low[v]}, {high[u], high[v]}, {low[u], high[v]}}};
    QPolygonF outline;
    for (const auto& [first, second] : corners) {
        Vec3 p{};
        p[axis] = at;
        p[u] = first;
        p[v] = second;
        outline.append(camera.project(p));
    }
    outline.append(outline.first());
    return outline;
}

/// Closed: a line in the faces' own colour hides the seams between them.
void AddBox(Composition& c, const Camera& camera, const Box& box, bool closed) {
    const Vec3& eye = camera.eye();
    const QColor color = c.seriesColor(box.series);
    for (size_t axis = 0; axis < 3; ++axis) {
        const bool above = eye[axis] > box.high[axis];
        if (!above && eye[axis] >= box.low[axis])
            continue; // seen from within its span: this pair of sides is hidden
        Vec3 normal{};
        normal[axis] = above ? 1 : -1;
        const QColor lit = camera.lit(color, normal);
        c.marks.append(
            {SideOf(camera, box.low, box.high, axis, above ? box.high[axis] : box.low[axis]), lit,
             closed ? QPen(lit, 0.6, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin) : QPen(Qt::NoPen),
             box.series, box.category});
    }
}

/// The three sides of the stage that are turned to the viewer from within, with the grid on them.
void AddWalls(Composition& c, const Camera& camera, const Stage& stage, const ValueAxis& axis) {
    const Vec3 high = stage.size * 0.5;
    const Vec3 low = high * -1;
    const auto up = static_cast<size_t>(stage.up);
    for (size_t wall = 0; wall < 3; ++wall) {
        const bool ground = wall == up;
        if (ground && camera.eye()[wall] <= low[wall])
            continue; // seen from below, the ground would hide the chart
        const double at = ground || camera.eye()[wall] > 0 ? low[wall] : high[wall];
        c.marks.append(
            {SideOf(camera, low, high, wall, at), ground ? c.theme.floor : c.theme.wall});
        if (ground)
            continue;
        const size_t other = 3 - wall - up;
        for (int line = 0; line <= axis.steps; ++line) {
            Vec3 from{}, to{};
            from[wall] = to[wall] = at;
            from[up] = to[up] = low[up] + stage.size[up] * line / axis.steps;
            from[other] = low[other];
            to[other] = high[other];
            c.marks.append({QPolygonF({camera.project(from), camera.project(to)}), Qt::NoBrush,
                            QPen(line == 0 ? c.theme.baseLine : c.theme.grid, 1)});
        }
    }
}

/// The room for the stage itself, between the labels.
QRectF StageRoom(const Composition& c) {
    QRectF room = c.room;
    const bool columns = c.form.family == Family::Column;
    const ValueAxis axis = AxisFor(c, columns ? room.height() * 0.7 : room.width() * 0.6);
    const LabelRow values = ValueRow(axis, columns ? Side::Left : Side::Below);
    const LabelRow names = CategoryRow(c, columns ? Side::Below : Side::Left);
    constexpr double away = 6;
    room.setTop(room.top() + c.line() / 2);
    if (c.form.arrangement == Arrangement::Deep && !c.chart.legend) {
        double widest = 0;
        for (const Series& series : c.chart.series)
            widest = std::max(widest, c.metrics.horizontalAdvance(OneLine(series.name)));
        room.setRight(room.right() - std::min(widest + away, room.width() * 0.15));
    }
    if (columns) {
        room.setLeft(room.left() + PlanRow(c, values, 1, 0).depth + 2 * away);
        const double spacing = room.width() * 0.85 / names.count;
        const RowPlan plan = PlanRow(c, names, spacing, room.height() * 0.32);
        room.setBottom(room.bottom() - plan.depth - 2 * away);
    } else {
        room.setBottom(room.bottom() - c.line() - away);
        const RowPlan plan = PlanRow(c, names, room.height() / names.count, room.width() * 0.32);
        const double beside = plan.depth + away;
        room.adjust(FromBehind(c.chart.view) ? 8 : beside, 0,
                    FromBehind(c.chart.view) ? -beside : -8, 0);
    }
    return room;
}

} // namespace

std::optional<SolidLayout> LayOutSolid(const Composition& c) {
    const QRectF room = StageRoom(c);
    if (room.width() < 8 || room.height() < 8)
        return std::nullopt;
    const Stage stage = FittingStage(c, room);
    Camera camera(c.chart.view, stage.radius());
    const QRectF plot = camera.fit(stage.corners(), room);
    const ValueAxis axis = AxisFor(c, stage.up == 1 ? plot.height() * 0.85 : plot.width() * 0.9);
    std::vector<Box> boxes = SortedBoxes(c, stage, axis, camera.eye());
    return SolidLayout{stage, camera, plot, axis, std::move(boxes)};
}

void DrawSolid(Composition& c) {
    const auto layout = LayOutSolid(c);
    if (!layout)
        return;
    c.plot = layout->plot;
    AddWalls(c, layout->camera, layout->stage, layout->axis);
    // Among thousands, thinner than a pixel, nobody sees seams, and they cost most of the time.
    const bool closed = layout->boxes.size() < 1000;
    for (const Box& box : layout->boxes)
        AddBox(c, layout->camera, box, closed);
    AddStageLabels(c, layout->camera, layout->stage, layout->axis);
}

} // namespace kelvrane::chartspace
