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

void fellAsleep(const ClockStep& step) {
    const DayEntry entry = DayEntries[CurrentEntryIndex];
    FinishCurrentEntry(step.last.minute);
    ResetBreakState();
    AskAboutSleep(entry, step);
    closeEditors(Editors::ModifyAndPrompt);
    EndDay();
    ShowDay();
}

/// The clock went on over midnight.
void passMidnight(const ClockStep& step) {
    if (EntryRunning() && step.slept) {
        fellAsleep(step);
    } else if (DayDate >= step.expected.date) {
        if (EntryRunning()) // on a day of a later date, which isn't over
            SplitRunning(step.last.minute, 0);
    } else if (EntryRunning()) {
        closeEditors(Editors::Modify);
        CarryOver(step.last.minute, step.expected.date, 0);
    } else {
        closeStoppedDay(step);
    }
}

/// The running entry, and its open break, lie as far back as before. So does what the modify screen
/// holds of it.
void moveStart(int minutes) {
    DayEntry& entry = DayEntries[CurrentEntryIndex];
    const QString former = entry.StartTime;
    entry.StartTime = ClockTextOf(ToMinutes(former) + minutes);
    if (!BreakBegan.isEmpty()) {
        BreakBegan = ClockTextOf(std::max(ToMinutes(BreakBegan) + minutes, 0));
        WriteBreakToTail();
    }
    ModifyModel& modify = Modify();
    if (modify.EntryIndex == CurrentEntryIndex && modify.opened.StartTime == former) {
        modify.opened.StartTime = entry.StartTime;
        if (EditedEntry.StartTime == former)
            EditedEntry.StartTime = entry.StartTime;
    }
    SaveDayFile();
    ShowDay();
}

/// The clock jumped from where it was expected to where it is. Finished entries never move.
void takeJump(const ClockStep& step) {
    if (!EntryRunning())
        return;
    const qint64 minutes = MinutesBetween(step.expected, step.now);
    const qint64 start = ToMinutes(DayEntries[CurrentEntryIndex].StartTime) + minutes;
    if (step.now.date == step.expected.date && start >= 0 && start < MinutesOfDay) {
        moveStart(int(minutes));
        return;
    }
    const bool sameDate = step.last.date == step.expected.date;
    const int end = sameDate ? step.last.minute : step.expected.minute;
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

void follow(const ClockStep& step) {
    SkipErrors pass(QStringLiteral("TMR_Minute"));
    const QDate before = DayDate;
    if (step.expected.date > step.last.date && !DayEntries.isEmpty())
        pass([&] { passMidnight(step); });
    if (step.jumped)
        pass([&] { takeJump(step); });
    pass([&] { compareDates(step); });
    if (step.now.date == step.last.date && DayDate == before)
        return;
    ShowWeek();
    Questions().refresh(); // some answers belong to one date
    emit Control().DateChanged();
}

} // namespace

bool DayIsKnown() {
    return KeepsDay && (ControlScreenLoaded || Control().loaded || DayStopped);
}

void FollowClock() {
    static bool following = false;
    if (following || !DayIsKnown() || !LastReading.wall.isValid())
        return;
    const QScopedValueRollback<bool> guard(following, true);
    const ClockReading now = ports.clock->read();
    const ClockStep step = StepBetween(LastReading, now);
    LastReading = now;
    follow(step);
}

} // namespace kelvrane
