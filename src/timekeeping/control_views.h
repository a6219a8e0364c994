// What the control screen shows of the day, and in which layout: its view switches, the chart's
// type, and the layout values that are kept between runs.
#pragma once

namespace kelvrane {

/// Reads the layout into Control(), GraphShowing, WeekViewShowing and ChartIndex. What is missing
/// or out of place is its fallback.
void ReadControlLayout();
/// Writes the twelve layout values; nothing when none were read. For the hide by the close box.
void SaveControlLayout();

/// The view switches; layOut says whether the screen lays itself out afterwards. Break-down list
/// and quick view exclude each other; both can be off.
void ShowControlPanel(bool showing, bool layOut);
void ShowBreakDown(bool showing, bool layOut);
void ShowQuickView(bool showing, bool layOut);
void ShowGraph(bool showing, bool layOut);
void ShowWeekView(bool showing, bool layOut);

void NextGraphType();     ///< Picture1, index 1
void PreviousGraphType(); ///< Picture1, index 0

} // namespace kelvrane
