#include "timekeeping/control_layout.h"

#include "timekeeping/control_model.h"

#include <algorithm>
#include <cmath>

namespace kelvrane {

double ClampWeekViewBar(double top, double height) {
    const double lowest = std::max(LeastAboveWeekViewBar, height - LeastBelowWeekViewBar);
    return std::clamp(top, LeastAboveWeekViewBar, lowest);
}

bool GrowForWeekView(ControlLayout& layout, bool showing) {
    if (showing == layout.WeekViewGrown || (showing && layout.Height > WeekViewGrowthLimit))
        return false;
    layout.WeekViewGrown = showing;
    layout.Height += showing ? WeekViewGrowth : -WeekViewGrowth;
    return true;
}

void AssumeWeekViewGrown(ControlLayout& layout, bool showing) {
    const double before = layout.Height - WeekViewGrowth;
    layout.WeekViewGrown =
        showing && before > LeastBelowWeekViewBar && before <= WeekViewGrowthLimit;
}

void MoveWeekViewBar(ControlLayout& layout, double top) {
    layout.SplitterTop = ClampWeekViewBar(top, layout.Height);
    layout.WeekViewSize = layout.Height - layout.SplitterTop;
}

void ResizeControlWindow(ControlLayout& layout, double width, double height, bool weekViewShowing) {
    // The bar moves by what the window gained, so that the panels above it take the difference.
    const double gained = height - layout.Height;
    layout.Width = width;
    layout.Height = height;
    if (weekViewShowing)
        MoveWeekViewBar(layout, layout.SplitterTop + gained);
}

int FirstOfTwo(int percent, int space) {
    return static_cast<int>(std::lround(std::clamp(percent, 0, 100) * std::max(space, 0) / 100.0));
}

int PercentOfTwo(int first, int space) {
    if (space <= 0)
        return 0;
    return std::clamp(static_cast<int>(std::lround(100.0 * first / space)), 0, 100);
}

} // namespace kelvrane
