// Solid pies: wedges of a thick disc. A sight line passes the wedges in the order of their angle
// from the viewer's direction, so sorting by that angle, farthest first, covers no near one. For
// that a wedge that reaches across the line from the viewer through the middle is cut there.
#include "chartspace/camera.h"
#include "chartspace/slices.h"

#include <QLinearGradient>

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

constexpr double thickness = 0.24; // of the radius
constexpr double pulledOut = 0.16;
constexpr double facet = 2 * M_PI / 120; // angle of one flat piece of the rim

/// A wedge, or the part of one on one side of the cut. Angles as in Slice.
struct Wedge {
    const Slice* slice;
    double from;
    double to;
    bool cutAtFrom; ///< that end is a real side of the slice, not a cut for the sorting
    bool cutAtTo;
    double farthest; ///< angle from the viewer's direction
};

/// A point of the disc: 0 is the side that faces away, clockwise seen from above.
Vec3 OnDisc(double angle, double radius, double y) {
    return {std::sin(angle) * radius, y, -std::cos(angle) * radius};
}

bool IsWhole(const Slice& slice) {
    return slice.share > 1 - 1e-9;
}

double Turned(double angle) {
    return angle - 2 * M_PI * std::floor(angle / (2 * M_PI));
}

/// A disc seen at a low angle is hardly a pie any more, so low inclinations are lifted; 0 and the
/// ends stay what they are.
View3D Lifted(View3D view) {
    const double part = std::min(1.0, std::abs(view.inclination) / 90);
    view.inclination = std::copysign(90 * (1 - std::pow(1 - part, 2.6)), view.inclination);
    return view;
}

/// apart: the slices are pulled out. As one disc they hide nothing of each other, and are cut only
/// on the far side, where no seam shows.
std::vector<Wedge> SortedWedges(const std::vector<Slice>& slices, double viewer, bool apart) {
    std::vector<Wedge> wedges;
    for (const Slice& slice : slices) {
        const bool whole = IsWhole(slice);
        // Cuts at the viewer's direction and opposite, where they fall into the slice.
        std::vector<double> ends{slice.start};
        for (int half = -4; half <= 4; ++half) {
            if (half % 2 == 0 && (!apart || whole))
                continue;
            const double cut = viewer + half * M_PI;
            if (cut > slice.start + 1e-9 && cut < slice.start + slice.sweep - 1e-9)
                ends.push_back(cut);
        }
        ends.push_back(slice.start + slice.sweep);
        for (size_t i = 0; i + 1 < ends.size(); ++i) {
            const double turn = Turned((ends[i] + ends[i + 1]) / 2 - viewer);
            const double middle = std::min(turn, 2 * M_PI - turn);
            wedges.push_back({&slice, ends[i], ends[i + 1], i == 0 && !whole,
                              i + 2 == ends.size() && !whole, middle});
        }
    }
    std::stable_sort(wedges.begin(), wedges.end(),
                     [](const Wedge& a, const Wedge& b) { return a.farthest > b.farthest; });
    return wedges;
}

class Pie {
  public:
    Pie(Composition& composition, const Camera& camera, double pull)
        : c(composition), m_camera(camera), m_pull(pull) {}

    void add(const Wedge& wedge) {
        const Vec3 shift = shiftOf(*wedge.slice);
        const QColor color = c.categoryColor(wedge.slice->category);
        if (m_pull > 0) {
            if (wedge.cutAtFrom)
                addCut(wedge, shift, color, wedge.from, -1);
            if (wedge.cutAtTo)
                addCut(wedge, shift, color, wedge.to, 1);
        }
        addRim(wedge, shift, color);
    }

    /// The top, or seen from below the bottom. It lies over all rims and sides.
    void addFace(const Slice& slice) {
        const double y = level();
        if (fromAbove() ? m_camera.eye()[1] <= y : m_camera.eye()[1] >= y)
            return;
        append(slice, face(slice), faceColor(slice));
    }

    QPolygonF face(const Slice& slice) const {
        const int steps = std::max(1, static_cast<int>(std::ceil(slice.sweep / facet)));
        const Vec3 shift = shiftOf(slice);
        QPolygonF outline;
        for (int i = 0; i <= steps; ++i)
            outline.append(at(slice.start + slice.sweep * i / steps, shift, level()));
        if (!IsWhole(slice))
            outline.append(m_camera.project(shift + Vec3{0, level(), 0}));
        return outline;
    }

    QColor faceColor(const Slice& slice) const {
        return m_camera.lit(c.categoryColor(slice.category), {0, fromAbove() ? 1.0 : -1.0, 0});
    }

    /// Height of the face that is seen.
    double level() const { return fromAbove() ? thickness / 2 : -thickness / 2; }

    Vec3 shiftOf(const Slice& slice) const {
        return IsWhole(slice) ? Vec3{} : OnDisc(slice.middle(), m_pull, 0);
    }

    bool fromAbove() const { return m_camera.eye()[1] > 0; }

  private:
    QPointF at(double angle, const Vec3& shift, double y) const {
        return m_camera.project(shift + OnDisc(angle, 1, y));
    }

    void append(const Slice& slice, QPolygonF outline, const QBrush& fill) {
        outline.append(outline.first());
        c.marks.append({std::move(outline), fill,
                        QPen(fill, 0.6, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin), slice.series,
                        slice.category});
    }

    /// A plane side of a wedge that was pulled out.
    void addCut(const Wedge& wedge, const Vec3& shift, const QColor& color, double angle,
                double side) {
        const Vec3 normal = OnDisc(angle + side * M_PI / 2, 1, 0);
        if (Dot(normal, m_camera.eye() + shift * -1) <= 0)
            return;
        append(*wedge.slice,
               QPolygonF({m_camera.project(shift + Vec3{0, thickness / 2, 0}),
                          at(angle, shift, thickness / 2), at(angle, shift, -thickness / 2),
                          m_camera.project(shift + Vec3{0, -thickness / 2, 0})}),
               m_camera.lit(color, normal));
    }

    /// The part of the rim that is turned to the viewer, in one piece whose shade runs with it.
    void addRim(const Wedge& wedge, const Vec3& shift, const QColor& color) {
        const int steps = std::max(1, static_cast<int>(std::ceil((wedge.to - wedge.from) / facet)));
        int first = -1, last = -1;
        const auto angleAt = [&](int i) {
            return wedge.from + (wedge.to - wedge.from) * i / steps;
        };
        for (int i = 0; i < steps; ++i) {
            const Vec3 normal = OnDisc((angleAt(i) + angleAt(i + 1)) / 2, 1, 0);
            if (Dot(normal, m_camera.eye() + (shift + normal) * -1) <= 0)
                continue;
            first = first < 0 ? i : first;
            last = i + 1;
        }
        if (first < 0)
            return;
        QPolygonF outline;
        for (int i = first; i <= last; ++i)
            outline.append(at(angleAt(i), shift, thickness / 2));
        for (int i = last; i >= first; --i)
            outline.append(at(angleAt(i), shift, -thickness / 2));
        const double from = outline[0].x();
        const double width = outline[last - first].x() - from;
        QLinearGradient shade(from, 0, from + width, 0);
        for (int i = first; i <= last; ++i) {
            const double share =
                std::abs(width) < 1e-6 ? 0 : (outline[i - first].x() - from) / width;
            shade.setColorAt(std::clamp(share, 0.0, 1.0),
                             m_camera.lit(color, OnDisc(angleAt(i), 1, 0)));
        }
        append(*wedge.slice, outline,
               std::abs(width) < 1 ? QBrush(shade.stops().first().second) : QBrush(shade));
    }

    Composition& c;
    const Camera& m_camera;
    double m_pull;
};

std::vector<Vec3> Extent(double radius) {
    std::vector<Vec3> points;
    for (int i = 0; i < 72; ++i)
        for (const double y : {-thickness / 2, thickness / 2})
            points.push_back(OnDisc(2 * M_PI * i / 72, radius, y));
    return points;
}

} // namespace

void DrawSolidPie(Composition& c) {
    std::vector<Slice> slices = SlicesOf(c, 0);
    const std::vector<QString> names = RimNames(c, slices);
    const double beside = RimWidth(c, names);
    const QRectF room = c.room.adjusted(beside, 4, -beside, -4);
    if (room.width() < 8 || room.height() < 8)
        return;
    const double pull = c.form.exploded ? pulledOut : 0;
    const double radius = 1 + pull;
    View3D view = Lifted(c.chart.view);
    const double turned = -view.rotation * M_PI / 180; // the pie turns, the viewer stays in front
    view.rotation = 0;
    for (Slice& slice : slices)
        slice.start += turned;
    Camera camera(view, std::hypot(radius, thickness / 2));
    c.plot = camera.fit(Extent(radius), room);
    if (slices.empty()) {
        AddEmptyPie(c, c.plot);
        return;
    }
    Pie pie(c, camera, pull);
    for (const Wedge& wedge : SortedWedges(slices, M_PI, pull > 0))
        pie.add(wedge);
    for (const Slice& slice : slices)
        pie.addFace(slice);

    std::vector<RimLabel> labels;
    for (size_t i = 0; i < slices.size(); ++i) {
        const Slice& slice = slices[i];
        const Vec3 shift = pie.shiftOf(slice);
        if (!names.empty()) {
            labels.push_back(
                {names[i], camera.project(shift + OnDisc(slice.middle(), 1, 0)), slice.share});
        } else if (c.chart.legend) {
            const Vec3 middle = OnDisc(slice.middle(), IsWhole(slice) ? 0 : 0.7, pie.level());
            AddShare(c, slice, camera.project(shift + middle), pie.face(slice),
                     pie.faceColor(slice));
        }
    }
    AddRimLabels(c, std::move(labels), c.plot);
}

} // namespace kelvrane::chartspace
