#include "timekeeping/day_steps.h"

#include "frame/day_tail.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "timekeeping/control_model.h"
#include "timekeeping/daily_chart.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/week_hours.h"
#include "timekeeping/working_day.h"
#include "timevalues/day_file.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

#include <algorithm>
#include <optional>

namespace kelvrane {

namespace {

/// A date that was closed is the day again.
void reopen(QDate date, const QList<DayEntry>& entries) {
    ForgetClosedDay(date);
    DayStopped = true;
    BeginDay(date, entries);
}

} // namespace

DayEntry EntryFrom(const DayEntry& former, int minute) {
    return {former.ProjectName, former.ProjectNumber, ClockTextOf(minute), {},
            MinutesToText(0),   MinutesToText(0)};
}

void AppendRunning(const DayEntry& entry) {
    DayEntries.append(entry);
    CurrentEntryIndex = qint64(DayEntries.size()) - 1;
    DayStopped = false;
    BreakMinutes = 0;
    if (OnBreak == 1)
        BeginBreak(entry.StartTime);
}

void SplitRunning(int end, int start) {
    const DayEntry next = EntryFrom(At(DayEntries, CurrentEntryIndex), start);
    FinishCurrentEntry(end);
    AppendRunning(next);
    SaveDayFile();
    ShowDay();
}

void CarryOver(int end, QDate date, int start) {
    const DayEntry next = EntryFrom(At(DayEntries, CurrentEntryIndex), start);
    const QList<DayEntry> putBy = EntriesPutBy(date);
    FinishCurrentEntry(end);
    CloseDay();
    ForgetClosedDay(date);
    DayDate = date;
    DayEntries = putBy;
    AppendRunning(next);
    SkipErrors step(QStringLiteral("TMR_Minute"));
    step([] { UpdateCurrentEntry(); });
    step([] { SaveDayFile(); });
    ShowDay();
    step([] { ports.screens->unload(Screen::frmSTM); });
    Control().loaded = false;
    step([] { ports.screens->show(Screen::frmSTM); });
}

void EndDay() {
    const QDate today = ports.clock->today();
    const QList<DayEntry> putBy = EntriesPutBy(today);
    CloseDay();
    DayStopped = true;
    RemoveDayFile();
    if (!putBy.isEmpty()) {
        reopen(today, putBy);
    } else if (!DayTail().isEmpty()) {
        SaveDayFile();
    }
    RefreshTrayState();
}

void BeginDay(QDate date, const QList<DayEntry>& entries) {
    DayDate = date;
    DayEntries = entries;
    CurrentEntryIndex = qint64(DayEntries.size()) - 1;
    SkipErrors step(QStringLiteral("TMR_Minute"));
    step([] { SaveDayFile(); });
    step([] { AddDataToDayInfoDataBase(); });
    ShowDay();
}

QList<DayEntry> EntriesPutBy(QDate date) {
    SkipErrors step(QStringLiteral("EntriesPutBy"));
    std::optional<StoredDay> day;
    step([&] { day = ReadStoredDay(LastDayFilePath()); });
    if (!day || day->date != date || day->damage)
        return {};
    for (DayEntry& entry : day->entries)
        EndAsSaved(entry);
    return day->entries;
}

void BringDayBack() {
    if (DayDate.isValid())
        return;
    const QDate today = ports.clock->today();
    const QList<DayEntry> entries = EntriesPutBy(today);
    if (!entries.isEmpty())
        reopen(today, entries);
}

void ShowDay() {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    Control().smuiBreakDown.clear();
    step([] { FillBreakDownList(); });
    step([] { RearmRunningEntry(); });
    step([] { UpdateDailyChart(); });
    step([] { UpdateDayStatistics(); });
}

void ShowWeek() {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    step([] { SetLVWColumnHeaders(); });
    step([] { FillWeekView(); });
}

} // namespace kelvrane
