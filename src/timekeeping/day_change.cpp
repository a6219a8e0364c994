#include "timekeeping/day_change.h"

#include "frame/globals.h"
#include "frame/waiting_questions.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "timekeeping/control_model.h"
#include "timekeeping/day_questions.h"
#include "timekeeping/day_steps.h"
#include "timekeeping/modify_model.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"
#include "timevalues/clock_watch.h"
#include "timevalues/day_file.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace kelvrane {

namespace {

enum class Editors { Modify, ModifyAndPrompt };

/// What is open on a day that is over. The end-of-day prompt goes only where nobody counted with
/// the time that passed: at an ordinary midnight it counts on.
void closeEditors(Editors editors) {
    SkipErrors step(QStringLiteral("TMR_Minute"));
    step([] { ports.screens->unload(Screen::frmModify); });
    if (editors == Editors::ModifyAndPrompt)
        step([] { ports.screens->unload(Screen::frmExit); });
}

/// Stopped entries of a date that is over. One that was stopped from the tray has its total as the
/// last reading left it.
void closeStoppedDay(const ClockStep& step) {
    closeEditors(Editors::Modify);
    UpdateCurrentEntryAt(step.last.minute);
    EndDay();
}

/// A day of a later date isn't over then; its entry ends all the same.
void fellAsleep(const ClockStep& step) {
    const DayEntry entry = DayEntries[CurrentEntryIndex];
    FinishCurrentEntry(step.last.minute);
    ResetBreakState();
    AskAboutSleep(entry, step);
    closeEditors(Editors::ModifyAndPrompt);
    DayStopped = true; // its total stands from here on
    if (DayDate < step.expected.date)
        EndDay();
    else
        SaveDayFile();
    ShowDay();
}

/// Where an entry that ran over midnight starts on the clock as it is now: what really passed of
/// its date lies behind it.
int startOfDate(const ClockStep& step) {
    const bool set = step.jumped && step.now.date == step.expected.date;
    const int minute = set ? step.now.minute : step.expected.minute;
    return std::max(minute - step.sinceMidnight, 0);
}

/// The clock went on over midnight.
void passMidnight(const ClockStep& step) {
    if (EntryRunning() && step.slept) {
        fellAsleep(step);
    } else if (DayDate >= step.expected.date) {
        if (EntryRunning()) // on a day of a later date, which isn't over
            SplitRunning(step.last.minute, startOfDate(step));
    } else if (EntryRunning()) {
        closeEditors(Editors::Modify);
        CarryOver(step.last.minute, step.expected.date, startOfDate(step));
    } else {
        closeStoppedDay(step);
    }
}

/// The running entry, and its open break, lie as far back as before. So does what the modify screen
/// holds of it.
void moveStart(int minutes) {
    const DayEntry& entry = DayEntries[CurrentEntryIndex];
    const QString former = entry.StartTime;
    MoveRunningStart(minutes);
    ModifyModel& modify = Modify();
    if (modify.EntryIndex == CurrentEntryIndex && modify.opened.StartTime == former) {
        modify.opened.StartTime = entry.StartTime;
        if (EditedEntry.StartTime == former)
            EditedEntry.StartTime = entry.StartTime;
    }
    SaveDayFile();
    ShowDay();
}

/// The clock went another way than the time that passed: summer time, or somebody set it. Finished
/// entries never move.
void takeShift(const ClockStep& step, bool overMidnight) {
    if (!EntryRunning())
        return;
    const bool sameDate = step.now.date == (overMidnight ? step.expected.date : step.last.date);
    if (overMidnight && sameDate)
        return; // the entry of the new date began where it has to
    const qint64 minutes =
        MinutesBetween(step.expected, step.now) + (overMidnight ? 0 : step.zoneShift);
    const qint64 start = ToMinutes(DayEntries[CurrentEntryIndex].StartTime) + minutes;
    if (sameDate && start >= 0 && start < MinutesOfDay) {
        moveStart(int(minutes));
        return;
    }
    const int end = overMidnight ? step.expected.minute : step.last.minute;
    if (step.now.date <= DayDate) {
        SplitRunning(end, step.now.minute);
        return;
    }
    closeEditors(Editors::ModifyAndPrompt);
    CarryOver(end, step.now.date, step.now.minute);
}

/// What the readings alone don't tell: the entries' date against the clock's.
void compareDates(const ClockStep& step) {
    if (!DayDate.isValid() || DayDate == step.now.date) {
        WithdrawClockQuestion();
    } else if (DayEntries.isEmpty()) {
        EndDay();
    } else if (DayDate > step.now.date) {
        const bool began = EntryRunning() && step.jumped;
        AskAboutClock(began ? qsizetype(CurrentEntryIndex) : DayEntries.size());
    } else if (EntryRunning()) {
        CarryOver(MinutesOfDay - 1, step.now.date, 0);
    } else {
        closeStoppedDay(step);
    }
}

/// True when the clock's date or that of the entries changed.
bool follow(const ClockStep& step) {
    SkipErrors pass(QStringLiteral("TMR_Minute"));
    const QDate before = DayDate;
    // A midnight that the jump takes back again wasn't one.
    const bool overMidnight = step.expected.date > step.last.date && step.now.date > step.last.date;
    if (overMidnight && !DayEntries.isEmpty())
        pass([&] { passMidnight(step); });
    if (step.jumped || step.zoneShift != 0)
        pass([&] { takeShift(step, overMidnight); });
    pass([&] { compareDates(step); });
    if (step.now.date != step.last.date)
        pass([] { BringDayBack(); });
    if (step.now.date == step.last.date && DayDate == before)
        return false;
    ShowWeek();
    Questions().refresh(); // some answers belong to one date
    return true;
}

bool following = false;

/// False while it runs already: what it does may ask for it again.
bool followOnce() {
    if (following)
        return false;
    const QScopedValueRollback<bool> guard(following, true);
    const ClockReading now = ports.clock->read();
    const ClockStep step = StepBetween(LastReading, now);
    LastReading = now;
    return follow(step);
}

} // namespace

bool DayIsKnown() {
    return KeepsDay && (ControlScreenLoaded || Control().loaded || DayStopped);
}

void FollowClock() {
    // Whoever hears of it may keep a box open all night, in which the clocks are followed too.
    if (DayIsKnown() && LastReading.wall.isValid() && followOnce())
        emit Control().DateChanged();
}

} // namespace kelvrane
