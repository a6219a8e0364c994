// What a chart type looks like, as plain facts: the drawing code asks for these and never for the
// type itself.
#pragma once

#include "chartspace/chart.h"

namespace kelvrane::chartspace {

enum class Family { Column, Bar, Pie };

/// How the series of one category stand to each other.
enum class Arrangement {
    Clustered, ///< side by side
    Stacked,   ///< one on the other
    Percent,   ///< one on the other, the whole is 100 %
    Deep,      ///< one behind the other
    First,     ///< only the first series is shown
};

struct Form {
    ChartType type;
    Family family;
    Arrangement arrangement;
    bool solid;
    bool exploded;
};

/// An unknown number counts as a stacked column.
const Form& FormOf(ChartType type);

} // namespace kelvrane::chartspace
