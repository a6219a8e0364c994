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

double WeekViewBarTop(const ControlLayout& layout, double windowHeight) {
    const double weekView = layout.Height - ClampWeekViewBar(layout.SplitterTop, layout.Height);
    return ClampWeekViewBar(windowHeight - weekView, windowHeight);
}

void MoveWeekViewBar(ControlLayout& layout, double top, double windowHeight) {
    layout.WeekViewSize = windowHeight - ClampWeekViewBar(top, windowHeight);
    layout.SplitterTop = ClampWeekViewBar(layout.Height - layout.WeekViewSize, layout.Height);
}

void ResizeControlWindow(ControlLayout& layout, double width, double height, bool weekViewShowing) {
    if (weekViewShowing)
        layout.SplitterTop = WeekViewBarTop(layout, height);
    layout.Width = width;
    layout.Height = height;
}

int FirstOfTwo(double percent, int space) {
    return static_cast<int>(
        std::lround(std::clamp(percent, 0.0, 100.0) * std::max(space, 0) / 100));
}

double PercentOfTwo(int first, int space) {
    return space > 0 ? std::clamp(100.0 * first / space, 0.0, 100.0) : 0;
}

} // namespace kelvrane
