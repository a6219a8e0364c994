// An empty history has nothing to show: at the start the program offers example data, prepared
// databases whose dates are moved to the last week.
#pragma once

namespace kelvrane {

/// Asks once a start, while the history is empty, whether to generate example data. Leaves silently
/// at the first error.
void InitializeDayInfo();

/// Sets both databases aside as ".orig", puts the starter copies in their places and moves the
/// seven rows of 1/1/2000 to 1/7/2000 to the seven days before today.
void GenerateExampleData();

} // namespace kelvrane
