// The state of the day, and what the tray icon says of it.
#pragma once

#include "platform/ports.h"

#include <QString>

namespace kelvrane {

/// Whether an entry is current and has no stop yet.
bool EntryRunning();
/// Index of the last entry when it runs; -1 when nothing does.
int RunningIndex();
DayState CurrentDayState();
/// Work minutes of all entries as a span text, also of a day that was stopped; entries that can't
/// be read don't count.
QString WorkedToday();
/// "Alpha - 1 Hours 5 Minutes. Worked today: 2 Hours 10 Minutes"; "No project running" in
/// the project's place otherwise.
QString TrayToolTip();
/// Hands both to the tray. Cheap when nothing changed.
void RefreshTrayState();

} // namespace kelvrane
