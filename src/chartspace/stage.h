// The block of space that a solid chart of columns or bars fills, centred on the origin.
#pragma once

#include "chartspace/bars.h"
#include "chartspace/camera.h"

#include <cmath>
#include <optional>
#include <vector>

namespace kelvrane::chartspace {

struct Stage {
    Vec3 size;
    int along; ///< index of the axis of the categories: x of columns, y of bars
    int up;    ///< of the values

    Vec3 at(double category, double value, double depth) const {
        Vec3 p{};
        const auto a = static_cast<size_t>(along);
        const auto u = static_cast<size_t>(up);
        // The first bar stands on top.
        p[a] = (along == 1 ? 0.5 - category : category - 0.5) * size[a];
        p[u] = (value - 0.5) * size[u];
        p[2] = (depth - 0.5) * size[2];
        return p;
    }
    double radius() const { return std::sqrt(Dot(size, size)) / 2; }
    std::vector<Vec3> corners() const {
        std::vector<Vec3> all;
        for (int i = 0; i < 8; ++i)
            all.push_back({((i & 1) - 0.5) * size[0], ((i >> 1 & 1) - 0.5) * size[1],
                           ((i >> 2 & 1) - 0.5) * size[2]});
        return all;
    }
};

/// Whether the viewer stands behind the chart, so that left and right are exchanged.
inline bool FromBehind(const View3D& view) {
    return std::cos(view.rotation * M_PI / 180) < 0;
}

/// A solid column or bar.
struct Box {
    Vec3 low;
    Vec3 high;
    int series;
    int category;
    Vec3 distance; ///< from the viewer: along categories, depth, values
};

/// A solid chart of columns or bars, ready to be drawn.
struct SolidLayout {
    Stage stage;
    Camera camera;
    QRectF plot; ///< what the stage covers on the picture
    ValueAxis axis;
    std::vector<Box> boxes; ///< in the order of painting: none covers one that is nearer
};

/// Nothing when there is no room.
std::optional<SolidLayout> LayOutSolid(const Composition& c);

/// Values, names and, without a legend, series along the edges of the stage's picture.
void AddStageLabels(Composition& c, const Camera& camera, const Stage& stage,
                    const ValueAxis& axis);

} // namespace kelvrane::chartspace
