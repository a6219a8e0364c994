// The arithmetic of the control screen's layout: where its bars may stand, and how the window grows
// for the week view. Sizes are twips, bars between panels are percent. The screen applies what
// comes out of it.
//
//     MoveWeekViewBar(Control().layout, theme::ToTwips(mouseY), theme::ToTwips(height()));
//     if (GrowForWeekView(Control().layout, WeekViewShowing)) resize(...);
#pragma once

namespace kelvrane {

struct ControlLayout;

/// What the window gains when the week view comes; nothing above the limit.
inline constexpr double WeekViewGrowth = 1335;
inline constexpr double WeekViewGrowthLimit = 7000;
/// The bar over the week view keeps this far from the top and from the bottom of the window.
inline constexpr double LeastAboveWeekViewBar = 400;
inline constexpr double LeastBelowWeekViewBar = 1500;

/// The nearest place to top that the bar may take in a window of this height. In a window too low
/// for both bounds the upper one holds.
double ClampWeekViewBar(double top, double height);

/// Makes the layout taller when the week view comes and gives that back when it goes. True when the
/// height changed. Safe to call again for the same state.
bool GrowForWeekView(ControlLayout& layout, bool showing);

/// After the layout was read with the week view showing: whether its height holds the growth isn't
/// stored, so a height that growing can have led to is taken as grown.
void AssumeWeekViewGrown(ControlLayout& layout, bool showing);

/// Top of the bar in a window of this height. The week view keeps its own height where it can, so
/// in a maximized window the panels above it take the difference.
double WeekViewBarTop(const ControlLayout& layout, double windowHeight);

/// The user dragged the bar to this top, in a window of this height.
void MoveWeekViewBar(ControlLayout& layout, double top, double windowHeight);

/// The user sized the window; a week view that shows keeps its height, and the bar moves.
void ResizeControlWindow(ControlLayout& layout, double width, double height, bool weekViewShowing);

/// Pixels of the first of two panels that share a space, and back; 0 to 100 percent, 0 of nothing.
int FirstOfTwo(double percent, int space);
double PercentOfTwo(int first, int space);

} // namespace kelvrane
