// What flat and solid columns and bars share: the axis, the place of every value along the axes,
// and the room that the labels take.
#pragma once

#include "chartspace/axis.h"
#include "chartspace/labels.h"

#include <vector>

namespace kelvrane::chartspace {

/// One value in units of the axes: along the categories 0 to 1, along the values 0 to 1 (the top of
/// the axis), both from the origin of the axes.
struct Block {
    double near = 0; ///< along the categories
    double far = 0;
    double low = 0; ///< along the values
    double high = 0;
    int series = 0;
    int category = 0;
    bool outermost = true; ///< nothing is stacked on it
};

ValueAxis AxisFor(const Composition& c, double length);

/// All values above zero, category by category. thickest: of one column or bar, as a share of the
/// category axis.
std::vector<Block> BlocksOf(const Composition& c, const ValueAxis& axis, double thickest);

LabelRow CategoryRow(const Composition& c, Side side);
LabelRow ValueRow(const ValueAxis& axis, Side side);

} // namespace kelvrane::chartspace
