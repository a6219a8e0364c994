// What flat and solid pies share: how the whole is cut, and where the names of the slices go.
#pragma once

#include "chartspace/labels.h"

#include <vector>

namespace kelvrane::chartspace {

/// Angles in radians, clockwise from the top of the pie.
struct Slice {
    int series = 0;
    int category = 0;
    double start = 0;
    double sweep = 0;
    double share = 0; ///< of its ring, 0 to 1

    double middle() const { return start + sweep / 2; }
};

/// The slices of one series, in the order of the categories; none when its sum is zero.
std::vector<Slice> SlicesOf(const Composition& c, int series);

/// The name of a slice beside its rim.
struct RimLabel {
    QString name;
    QPointF rim; ///< point on the rim
    double share = 0;
};

/// Names for the rim labels when there is no legend; empty otherwise.
std::vector<QString> RimNames(const Composition& c, const std::vector<Slice>& slices);
/// Room that rim labels take left and right of the pie.
double RimWidth(const Composition& c, const std::vector<QString>& names);
/// Two columns of names and shares ("Alpha  25%") with lines to the rim, left and right of the pie.
/// When they are too many, the smallest slices stay without.
void AddRimLabels(Composition& c, std::vector<RimLabel> labels, const QRectF& pie);

/// "25%" within a slice, if it fits into the outline there.
void AddShare(Composition& c, const Slice& slice, const QPointF& middle, const QPolygonF& outline,
              const QColor& ground);

/// The outline of a pie that has nothing to show.
void AddEmptyPie(Composition& c, const QRectF& around);

} // namespace kelvrane::chartspace
