#include "chartspace/bars.h"

#include <algorithm>

namespace kelvrane::chartspace {

namespace {

constexpr double filledShare = 0.66;   // of a category's room; the rest is the gap to the next
constexpr double oneGridLineEach = 30; // pixels

double Highest(const Composition& c) {
    return c.form.arrangement == Arrangement::Stacked ? c.values.highestTotal()
                                                      : c.values.highestValue();
}

} // namespace

ValueAxis AxisFor(const Composition& c, double length) {
    // Numbers side by side need more room than above each other.
    const double each = c.form.family == Family::Bar ? oneGridLineEach * 2 : oneGridLineEach;
    const int most = std::clamp(static_cast<int>(length / each), 1, 6);
    return c.form.arrangement == Arrangement::Percent ? PercentAxis(most)
                                                      : RoundAxis(Highest(c), most);
}

std::vector<Block> BlocksOf(const Composition& c, const ValueAxis& axis, double thickest) {
    const Values& values = c.values;
    const double slot = 1.0 / values.categories();
    const int abreast = c.form.arrangement == Arrangement::Clustered ? values.series() : 1;
    const bool piled =
        c.form.arrangement == Arrangement::Stacked || c.form.arrangement == Arrangement::Percent;
    const double thick = std::min(slot * filledShare / abreast, thickest);
    std::vector<Block> blocks;
    blocks.reserve(static_cast<size_t>(values.categories()) * static_cast<size_t>(values.series()));
    for (int i = 0; i < values.categories(); ++i) {
        const double unit =
            c.form.arrangement == Arrangement::Percent ? values.categoryTotal(i) : axis.top();
        double pile = 0;
        for (int s = 0; s < values.series(); ++s) {
            const double value = values.at(s, i);
            if (value <= 0)
                continue;
            Block block;
            block.near = slot * (i + 0.5) + thick * ((abreast > 1 ? s : 0) - abreast / 2.0);
            block.far = block.near + thick;
            block.low = piled ? pile / unit : 0;
            pile += value;
            block.high = (piled ? pile : value) / unit;
            block.series = s;
            block.category = i;
            if (piled && block.low > 0)
                blocks.back().outermost = false;
            blocks.push_back(block);
        }
    }
    return blocks;
}

LabelRow CategoryRow(const Composition& c, Side side) {
    const QStringList& names = c.chart.categories;
    return {c.values.categories(), [&names](int i) { return OneLine(names[i]); }, side,
            LabelRole::Category, true};
}

LabelRow ValueRow(const ValueAxis& axis, Side side) {
    return {axis.steps + 1, [axis](int line) { return axis.text(line); }, side, LabelRole::Value,
            false};
}

} // namespace kelvrane::chartspace
