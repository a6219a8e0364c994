// The state of the day, and what the tray icon says of it.
#pragma once

#include "platform/ports.h"

#include <QString>

namespace kelvrane {

/// Whether an entry is current and has no stop yet.
bool EntryRunning();
DayState CurrentDayState();
/// "Alpha - 1 Hours 5 Minutes" and today's total on a second line; "No project running" otherwise.
QString TrayToolTip();
/// Hands both to the tray. Cheap when nothing changed.
void RefreshTrayState();

} // namespace kelvrane
