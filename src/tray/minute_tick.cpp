#include "tray/minute_tick.h"

#include "collections/collection_viewer.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/day_change.h"
#include "timekeeping/shut_down.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"
#include "timesheets/spreadsheet_screen.h"
#include "timevalues/day_file.h"
#include "timevalues/time_values.h"
#include "tray/time_rules.h"
#include "update/auto_update.h"

#include <QScopedValueRollback>

namespace kelvrane {

namespace {

constexpr int lastMinute = 1439; // 11:59 PM

/// What failed before is tried again.
void repeatWrites() {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    if (DayUnsaved)
        step([] { SaveDayFile(); });
    step([] { RetryRollUp(); });
}

/// Behind a box that an earlier tick opened nothing more is asked or shown.
void clockRules(Int16 now, bool behindBox) {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    if (!behindBox)
        step([&] { EndOfDayRule(now); });
    if (now == lastMinute && !DayStopped)
        step([] { AddDataToDayInfoDataBase(); });
    if (behindBox)
        return;
    step([&] { AutoStartRule(now); });
    step([&] { AutoSaveRule(now); });
    step([&] { IntraDayReminderRule(now); });
}

} // namespace

void TMR_Minute() {
    static bool handling = false;
    const QuietReports quiet;
    FollowClock();
    RefreshRunningEntry();
    RefreshTrayState();
    const bool behindBox = handling;
    const QScopedValueRollback<bool> guard(handling, true);
    if (!DayIsKnown())
        return;
    repeatWrites();
    clockRules(ToMinutes(SystemTimeText(ports.clock->time())), behindBox);
    RefreshTrayState();
}

void ReadClocks() {
    const QuietReports quiet;
    FollowClock();
}

void CheckForNightlyUpdate() {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    step([] { AutoUpdate(false, false, {}); });
}

void SaveForLogOut() {
    SkipErrors step(QStringLiteral("LogOut"));
    step(KeepTemplateChanges);
    step(KeepViewerChanges);
    step(SaveForEnd);
}

} // namespace kelvrane
