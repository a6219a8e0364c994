#include "timekeeping/day_load.h"

#include "frame/day_tail.h"
#include "frame/globals.h"
#include "frame/waiting_questions.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "timekeeping/day_change.h"
#include "timekeeping/day_questions.h"
#include "timekeeping/day_steps.h"
#include "timekeeping/tray_state.h"
#include "timevalues/clock_watch.h"
#include "timevalues/day_file.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

#include <optional>
#include <utility>

namespace kelvrane {

namespace {

/// A date that was closed and is now again: its entries are the day.
void openPutBy(const QList<DayEntry>& entries) {
    if (DayDate.isValid() || entries.isEmpty())
        return;
    DayEntries = entries;
    DayDate = ports.clock->today();
    CurrentEntryIndex = -1;
    ForgetClosedDay(DayDate);
    SaveDayFile();
}

/// The file held a day that is over.
void closeLoadedDay() {
    const StoredDay day{DayDate, std::exchange(DayEntries, {}), TailLines(tail::Delete), {}};
    CurrentEntryIndex = -1;
    SetTailValues(tail::Delete, {});
    ForgetBreak();
    const QList<DayEntry> putBy = EntriesPutBy(ports.clock->today());
    CloseStoredDay(day);
    DayDate = {};
    PutDayFileBy();
    openPutBy(putBy);
    if (!DayTail().isEmpty())
        SaveDayFile();
}

/// Nobody knows how long ago a day of a later date was left: what ran ended as it was saved, and
/// its project goes on from now.
void openLaterDay(int now) {
    const qsizetype firstSince = DayEntries.size();
    if (EntryRunning()) {
        const DayEntry next = EntryFrom(DayEntries.last(), now);
        EndAsSaved(DayEntries.last());
        AppendRunning(next);
    }
    AskAboutClock(firstSince);
    SaveDayFile(); // the question may have waited before
}

/// A running entry never gets less than it was saved with. Where the clock was set back meanwhile
/// its start moves, or it ends and its project goes on from now.
void keepSavedTotal(int now) {
    DayEntry& entry = DayEntries.last();
    const int total = ToMinutes(entry.TotalTime);
    const int back = ToMinutes(entry.StartTime) - (now - total);
    if (back <= 0)
        return;
    if (now - total >= 0) {
        MoveRunningStart(-back);
    } else {
        const DayEntry next = EntryFrom(entry, now);
        EndAsSaved(entry);
        AppendRunning(next);
    }
    SaveDayFile();
}

void openLoadedDay() {
    const WallMoment now = MomentOf(ports.clock->now());
    CurrentEntryIndex = RunningIndex();
    ReadBreakFromTail();
    if (!EntryRunning())
        ForgetBreak();
    else if (!BreakBegan.isEmpty())
        OnBreak = 1;
    if (DayDate > now.date) {
        openLaterDay(now.minute);
        return;
    }
    if (EntryRunning())
        keepSavedTotal(now.minute);
    WithdrawClockQuestion();
}

/// The day file is in memory, as far as it could be read.
void takeLoadedDay() {
    Questions().readTail();
    if (DayEntries.isEmpty() && DayDate != ports.clock->today())
        DayDate = {}; // a file without entries keeps no date
    if (DayDate.isValid() && DayDate < ports.clock->today())
        closeLoadedDay();
    else if (DayDate.isValid())
        openLoadedDay();
}

void readFile() {
    std::optional<RuntimeError> damage;
    try {
        LoadDayFile(QStringLiteral("Single Timer Mode"), DayEntries);
    } catch (const RuntimeError& error) {
        damage = error;
    }
    takeLoadedDay();
    if (damage) // what was put by must not take the place of a file that can't be read
        throw RuntimeError(*damage);
    openPutBy(EntriesPutBy(ports.clock->today()));
}

} // namespace

void LoadDay() {
    RegisterDayQuestions();
    if (!KeepsDay)
        return;
    FollowClock();
    LastReading = ports.clock->read();
    if (DayDate.isValid() && !DayEntries.isEmpty()) {
        if (RecomputeTotals(DayEntries) || DayUnsaved)
            SaveDayFile();
        return;
    }
    FindClosedDays();
    readFile();
}

} // namespace kelvrane
