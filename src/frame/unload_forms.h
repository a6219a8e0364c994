// Closing the day's screens.
#pragma once

namespace kelvrane {

/// Unloads the screens in their fixed order; errors are skipped. The tray's form and the end-of-day
/// prompt stay, so that the tick and the tray live on.
void UnloadAllForms();

} // namespace kelvrane
