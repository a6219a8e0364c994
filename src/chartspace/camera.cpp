#include "chartspace/camera.h"

#include "chartspace/palette.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

// Far enough that no perspective can be seen.
constexpr double farAway = 1e4;
constexpr double widestAngle = 100; // degrees of view at 100 percent of perspective

} // namespace

Camera::Camera(const View3D& view, double radius) {
    const double rotation = qDegreesToRadians(view.rotation);
    const double inclination = qDegreesToRadians(std::clamp(view.inclination, -90.0, 90.0));
    const double sr = std::sin(rotation), cr = std::cos(rotation);
    const double si = std::sin(inclination), ci = std::cos(inclination);
    m_right = {cr, 0, -sr};
    m_up = {-sr * si, ci, -cr * si};
    m_towards = {sr * ci, si, cr * ci};

    const double angle =
        qDegreesToRadians(std::clamp(view.perspective, 0.0, 100.0) / 100 * widestAngle / 2);
    m_distance = std::min(radius / std::max(std::sin(angle), 1e-9), radius * farAway);
    m_eye = m_towards * m_distance;

    const double lightRotation = rotation + qDegreesToRadians(view.lightRotation);
    const double lightInclination = qDegreesToRadians(view.lightInclination);
    m_light = {std::sin(lightRotation) * std::cos(lightInclination), std::sin(lightInclination),
               std::cos(lightRotation) * std::cos(lightInclination)};
}

QPointF Camera::flat(const Vec3& point) const {
    const double nearness = m_distance / (m_distance - Dot(point, m_towards));
    return {Dot(point, m_right) * nearness, -Dot(point, m_up) * nearness};
}

QPointF Camera::project(const Vec3& point) const {
    return flat(point) * m_scale + m_offset;
}

QRectF Camera::bounds(const std::vector<Vec3>& points) const {
    double left = 1e300, top = 1e300, right = -1e300, bottom = -1e300;
    for (const Vec3& point : points) {
        const QPointF p = flat(point);
        left = std::min(left, p.x());
        right = std::max(right, p.x());
        top = std::min(top, p.y());
        bottom = std::max(bottom, p.y());
    }
    return {QPointF(left, top), QPointF(right, bottom)};
}

QRectF Camera::fit(const std::vector<Vec3>& points, const QRectF& into) {
    const QRectF covered = bounds(points);
    m_scale = std::min(into.width() / std::max(covered.width(), 1e-9),
                       into.height() / std::max(covered.height(), 1e-9));
    m_offset = into.center() - covered.center() * m_scale;
    return {covered.topLeft() * m_scale + m_offset, covered.size() * m_scale};
}

Vec3 Camera::rayThrough(const QPointF& point) const {
    const QPointF p = (point - m_offset) / m_scale;
    return m_right * p.x() + m_up * -p.y() + m_towards * -m_distance;
}

QColor Camera::lit(const QColor& color, const Vec3& normal) const {
    // Light reaches round the edges, so that no side falls into black.
    const double light = 0.5 + 0.5 * Dot(normal, m_light);
    const double strength = 0.66 + 0.44 * light;
    return strength < 1 ? Mixed(Qt::black, color, strength)
                        : Mixed(color, Qt::white, (strength - 1) * 1.6);
}

} // namespace kelvrane::chartspace
