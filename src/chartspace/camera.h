// Looks at a solid chart. The chart stands around the origin, x to the right, y up, z towards the
// viewer; the camera goes round it by the rotation and up by the inclination, and the result is
// fitted into a rectangle.
#pragma once

#include "chartspace/chart.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

#include <array>
#include <vector>

namespace kelvrane::chartspace {

/// x, y, z.
using Vec3 = std::array<double, 3>;

inline Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vec3 operator*(const Vec3& a, double f) {
    return {a[0] * f, a[1] * f, a[2] * f};
}
inline double Dot(const Vec3& a, const Vec3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

class Camera {
  public:
    /// radius: every point to be shown is at most this far from the origin.
    Camera(const View3D& view, double radius);

    /// Sets scale and place so that the points fill the rectangle; returns what they cover there.
    QRectF fit(const std::vector<Vec3>& points, const QRectF& into);
    /// Bounds of the points before any fitting.
    QRectF bounds(const std::vector<Vec3>& points) const;

    QPointF project(const Vec3& point) const;
    /// Where the viewer is. Without perspective very far away.
    const Vec3& eye() const { return m_eye; }
    /// Direction from the viewer through a point of the picture.
    Vec3 rayThrough(const QPointF& point) const;

    /// A colour on a face with that outward normal (length 1), under the view's light. The light
    /// goes with the viewer's side of the chart, not with the chart.
    QColor lit(const QColor& color, const Vec3& normal) const;

  private:
    QPointF flat(const Vec3& point) const;

    Vec3 m_right;
    Vec3 m_up;
    Vec3 m_towards; ///< from the origin to the viewer
    Vec3 m_light;
    Vec3 m_eye;
    double m_distance;
    double m_scale = 1;
    QPointF m_offset;
};

} // namespace kelvrane::chartspace
