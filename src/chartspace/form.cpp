#include "chartspace/form.h"

#include <algorithm>
#include <array>

namespace kelvrane::chartspace {

namespace {

constexpr std::array forms{
    Form{ChartType::ColumnStacked, Family::Column, Arrangement::Stacked, false, false},
    Form{ChartType::ColumnClustered, Family::Column, Arrangement::Clustered, false, false},
    Form{ChartType::ColumnStacked100, Family::Column, Arrangement::Percent, false, false},
    Form{ChartType::Column3D, Family::Column, Arrangement::Deep, true, false},
    Form{ChartType::ColumnStacked3D, Family::Column, Arrangement::Stacked, true, false},
    Form{ChartType::ColumnClustered3D, Family::Column, Arrangement::Clustered, true, false},
    Form{ChartType::ColumnStacked1003D, Family::Column, Arrangement::Percent, true, false},
    Form{ChartType::BarStacked, Family::Bar, Arrangement::Stacked, false, false},
    Form{ChartType::BarClustered, Family::Bar, Arrangement::Clustered, false, false},
    Form{ChartType::BarStacked100, Family::Bar, Arrangement::Percent, false, false},
    Form{ChartType::Bar3D, Family::Bar, Arrangement::Deep, true, false},
    Form{ChartType::BarStacked3D, Family::Bar, Arrangement::Stacked, true, false},
    Form{ChartType::BarClustered3D, Family::Bar, Arrangement::Clustered, true, false},
    Form{ChartType::BarStacked1003D, Family::Bar, Arrangement::Percent, true, false},
    Form{ChartType::Pie, Family::Pie, Arrangement::First, false, false},
    Form{ChartType::PieExploded, Family::Pie, Arrangement::First, false, true},
    Form{ChartType::PieStacked, Family::Pie, Arrangement::First, false, false},
    Form{ChartType::Pie3D, Family::Pie, Arrangement::First, true, false},
    Form{ChartType::PieExploded3D, Family::Pie, Arrangement::First, true, true},
};

} // namespace

const Form& FormOf(ChartType type) {
    const auto found =
        std::find_if(forms.begin(), forms.end(), [type](const Form& f) { return f.type == type; });
    return found == forms.end() ? forms.front() : *found;
}

} // namespace kelvrane::chartspace
