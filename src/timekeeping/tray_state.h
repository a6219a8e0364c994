// What the tray icon says of the day.
#pragma once

#include "platform/ports.h"

#include <QString>

namespace kelvrane {

DayState CurrentDayState();
/// "Alpha - 1 Hours 5 Minutes" and today's total on a second line; "No project running" otherwise.
QString TrayToolTip();
/// Hands both to the tray. Cheap when nothing changed.
void RefreshTrayState();

} // namespace kelvrane
