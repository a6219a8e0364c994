#include "timevalues/entry_times.h"

#include "frame/day_tail.h"
#include "platform/escaped_fields.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timevalues/clock_watch.h"
#include "timevalues/time_values.h"

#include <algorithm>

namespace kelvrane {

namespace {

bool hasCurrent() {
    return CurrentEntryIndex >= 0 && CurrentEntryIndex < DayEntries.size();
}

bool isRunning() {
    return hasCurrent() && DayEntries[CurrentEntryIndex].StopTime.isEmpty();
}

Int16 minutesFrom(const QString& from, int minute) {
    return std::max(minute - ToMinutes(from), 0);
}

void update(DayEntry& entry, int minute) {
    const QString total = MinutesToText(minutesFrom(entry.StartTime, minute));
    if (entry.StopTime.isEmpty()) {
        const int open = BreakBegan.isEmpty() ? 0 : int(minutesFrom(BreakBegan, minute));
        BreakMinutes = BreakBegan.isEmpty() ? ToMinutes(entry.BreakTime) : Int16(BreakHeld + open);
        entry.BreakTime = MinutesToText(BreakMinutes);
    }
    entry.TotalTime = total;
}

/// Whether the clocks went on since the last reading as clocks do.
bool clocksAreFollowed() {
    if (!LastReading.wall.isValid())
        return true;
    const ClockStep step = StepBetween(LastReading, ports.clock->read());
    return !step.jumped && step.zoneShift == 0 && step.now.date == step.last.date;
}

} // namespace

QString ClockTextOf(int minute) {
    return ClockText(QTime::fromMSecsSinceStartOfDay(minute % MinutesOfDay * 60'000));
}

Int16 SpanBetween(const QString& from, const QString& to) {
    return minutesFrom(from, ToMinutes(to));
}

void UpdateCurrentEntry() {
    // Across dates now doesn't lie behind a start; only what runs was begun since.
    const bool sameDate = !DayDate.isValid() || DayDate == ports.clock->today();
    if (clocksAreFollowed() && (sameDate || isRunning()))
        UpdateCurrentEntryAt(MomentOf(ports.clock->now()).minute);
}

void UpdateCurrentEntryAt(int minute) {
    if (isRunning() || (!DayStopped && hasCurrent()))
        update(DayEntries[CurrentEntryIndex], minute);
}

void MoveRunningStart(int minutes) {
    DayEntry& entry = At(DayEntries, CurrentEntryIndex);
    entry.StartTime = ClockTextOf(ToMinutes(entry.StartTime) + minutes);
    if (!BreakBegan.isEmpty()) {
        BreakBegan = ClockTextOf(std::max(ToMinutes(BreakBegan) + minutes, 0));
        WriteBreakToTail();
    }
}

void EndAsSaved(DayEntry& entry) {
    if (!entry.StopTime.isEmpty())
        return;
    const int start = ToMinutes(entry.StartTime);
    const int end = std::min(start + ToMinutes(entry.TotalTime), MinutesOfDay - 1);
    entry.StopTime = ClockTextOf(std::max(end, start)); // a start may lie beyond the day itself
}

void FinishCurrentEntry(int minute) {
    DayEntry& entry = At(DayEntries, CurrentEntryIndex);
    update(entry, minute);
    entry.StopTime = ClockTextOf(minute);
    ForgetBreak();
}

void BeginBreak(const QString& now) {
    if (!isRunning())
        return;
    BreakHeld = ToMinutes(DayEntries[CurrentEntryIndex].BreakTime);
    BreakBegan = now;
    WriteBreakToTail();
}

void EndBreak() {
    if (isRunning() && !BreakBegan.isEmpty())
        UpdateCurrentEntry();
    ForgetBreak();
}

void ForgetBreak() {
    BreakBegan.clear();
    BreakHeld = 0;
    WriteBreakToTail();
}

void WriteBreakToTail() {
    SetTailValues(tail::Break,
                  BreakBegan.isEmpty()
                      ? QStringList()
                      : QStringList(JoinFields({BreakBegan, QString::number(BreakHeld)})));
}

void ReadBreakFromTail() {
    BreakBegan.clear();
    BreakHeld = 0;
    const QStringList values = TailValues(tail::Break);
    if (values.isEmpty())
        return;
    try {
        const QStringList fields = SplitFields(values.first());
        const Int16 held = ToInt16(At(fields, 1));
        ToMinutes(fields[0]);
        BreakBegan = fields[0];
        BreakHeld = std::max<int>(held, 0);
    } catch (const RuntimeError&) {
        WriteBreakToTail();
    }
}

} // namespace kelvrane
