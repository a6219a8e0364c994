#include "tray/minute_tick.h"

#include "collections/collection_viewer.h"
#include "frame/globals.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/control_model.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"
#include "timesheets/spreadsheet_screen.h"
#include "timevalues/day_file.h"
#include "timevalues/day_history.h"
#include "timevalues/time_values.h"
#include "tray/time_rules.h"
#include "update/auto_update.h"

#include <QScopedValueRollback>

#include <utility>

namespace kelvrane {

namespace {

constexpr int lastMinute = 1439; // 11:59 PM
constexpr int changeMinute = 1;  // 12:01 AM
constexpr qint64 sleepSeconds = 600;

/// The running entry as the first one of the new date.
void carryOverMidnight() {
    const DayEntry running = At(DayEntries, CurrentEntryIndex);
    DayEntries = {{running.ProjectName,
                   running.ProjectNumber,
                   QStringLiteral("12:00 AM"),
                   {},
                   MinutesToText(0),
                   MinutesToText(1)}};
    CurrentEntryIndex = 0;
}

/// Before the control screen's first load there is no day to change.
bool dayIsKnown() {
    return ControlScreenLoaded || Control().loaded || DayStopped;
}

/// Yesterday's totals as the last tick left them, then the change that was slept through, unless
/// the minute itself brings it.
void catchUp(const QDateTime& lastTick, Int16 now) {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    if (!DayStopped)
        step([&] { RollUpDay(lastTick.date()); });
    if (now != changeMinute)
        step([] { ChangeOfDay(); });
}

/// Behind a box that an earlier tick opened only the date changes; it can't wait for an answer.
void clockRules(Int16 now, bool behindBox) {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    if (!behindBox)
        step([&] { EndOfDayRule(now); });
    if (now == lastMinute && !DayStopped)
        step([] { AddDataToDayInfoDataBase(); });
    if (now == changeMinute)
        step([] { ChangeOfDay(); });
    if (behindBox)
        return;
    step([&] { AutoStartRule(now); });
    step([&] { AutoSaveRule(now); });
    step([&] { IntraDayReminderRule(now); });
}

} // namespace

void TMR_Minute() {
    static bool handling = false;
    const QDateTime thisTick = ports.clock->now();
    const QDateTime lastTick = std::exchange(LastTick, thisTick);
    const bool slept = dayIsKnown() && SleptOverMidnight(lastTick, thisTick);
    if (!slept)
        RefreshRunningEntry();
    RefreshTrayState();
    const bool behindBox = handling;
    const QScopedValueRollback<bool> guard(handling, true);
    const Int16 now = ToMinutes(SystemTimeText(thisTick.time()));
    if (slept)
        catchUp(lastTick, now);
    if (dayIsKnown())
        clockRules(now, behindBox);
    RefreshTrayState();
}

void NoticeSleep() {
    if (dayIsKnown() && SleptOverMidnight(LastTick, ports.clock->now()))
        TMR_Minute();
}

void ChangeOfDay() {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    step([] { AutoUpdate(false, false, {}); });
    if (DayStopped) {
        step([] { LoadDayFile(QStringLiteral("Single Timer Mode"), DayEntries); });
        CurrentEntryIndex = -1;
        return;
    }
    if (!step.condition([] { return At(DayEntries, CurrentEntryIndex).StopTime.isEmpty(); }))
        return; // stopped from the tray: the old file stays till the next read
    carryOverMidnight();
    step([] { SaveDayFile(); });
    step([] { ports.screens->unload(Screen::frmSTM); });
    Control().loaded = false;
    step([] { LoadDayFile(QStringLiteral("Single Timer Mode"), DayEntries); });
    step([] { ports.screens->show(Screen::frmSTM); });
}

void SaveForLogOut() {
    SkipErrors step(QStringLiteral("LogOut"));
    step(KeepTemplateChanges);
    step(KeepViewerChanges);
    // A process that never loaded the day, such as a collection's viewer, has none to save, and the
    // files are perhaps being written by the one that has.
    if (!dayIsKnown())
        return;
    const bool slept = SleptOverMidnight(LastTick, ports.clock->now());
    if (!slept)
        step([] { SaveDayFile(); });
    if (!DayStopped)
        step([&] { RollUpDay(slept ? LastTick.date() : ports.clock->today()); });
}

bool SleptOverMidnight(const QDateTime& lastTick, const QDateTime& thisTick) {
    return lastTick.isValid() && lastTick.secsTo(thisTick) > sleepSeconds &&
           lastTick.date() != thisTick.date();
}

} // namespace kelvrane
