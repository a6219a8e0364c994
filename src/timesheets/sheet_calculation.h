// The calculation, from template and databases to the sheet: the steps that both kinds share.
#pragma once

namespace kelvrane {

/// Loads the template, finds its anchors, expands the dates and fills the sheet from the accepted
/// databases. By customer, or with two databases accepted, the sheets are filed in the current
/// collection. What is missing is told or asked for, and the sheet then stays. Ignored while one is
/// under way, since filing a sheet lets events through. Raises what loading the template raises.
void AddData();

/// Both parts of the current collection are set.
bool HasCollection();
/// By project a sheet is filed by ADDTO_COLLECTION once there is one; by customer it files itself.
void EnableAdding();
/// First day of the week by the setting, Sunday is 1; Sunday for a setting that is none.
int SheetFirstDayOfWeek();

} // namespace kelvrane
