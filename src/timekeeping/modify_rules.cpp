#include "timekeeping/modify_rules.h"

#include "frame/globals.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timekeeping/modify_model.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

#include <array>
#include <utility>

namespace kelvrane {

namespace {

const QString invalidTime = QStringLiteral("Invalid Time");
const QString noBreak = QStringLiteral("0 Minutes");
constexpr qsizetype longestWithoutHours = 10; // "59 Minutes"

constexpr std::array pairMessages{
    "Can not set project's stop time before the start time.",
    "Stop time value exceeds next projects stop time or exceeds current time",
    "Start time value exceeds previous projects start time",
    "Stop time value exceeds next projects stop time",
    "Time(s) specified can not be after the current time",
    "Break time can not exceed total time",
};

QString nowText() {
    return ClockText(ports.clock->time());
}

QString orNow(const QString& stop) {
    return stop.isEmpty() ? nowText() : stop;
}

const DayEntry& entryOfDay() {
    return At(std::as_const(DayEntries), Modify().EntryIndex);
}

/// The edit goes with its row, so that nothing unseen is left for the next Update.
void putStartBack() {
    EditedEntry.StartTime = entryOfDay().StartTime;
    Modify().SmuiModify.setValue(modify_rows::Start, EditedEntry.StartTime);
    Modify().SmuiModify.setRole(modify_rows::Start, TextRole::Value);
}

void putStopBack() {
    EditedEntry.StopTime = entryOfDay().StopTime;
    Modify().SmuiModify.setValue(modify_rows::Stop, EditedEntry.StopTime);
    Modify().SmuiModify.setRole(modify_rows::Stop, TextRole::Value);
}

/// The singular "Hour" isn't taken.
bool breakFormIsBad(const QString& text) {
    return !text.contains(QLatin1String("Minutes"), Qt::CaseInsensitive) ||
           (text.size() > longestWithoutHours &&
            !text.contains(QLatin1String("Hours"), Qt::CaseInsensitive));
}

void markRow(const QString& row, bool bad) {
    Modify().SmuiModify.setRole(row, bad ? TextRole::Inactive : TextRole::Value);
}

/// The rules on the entry alone.
bool entryRefused(int index) {
    const DayEntry& edited = EditedEntry;
    if (breakFormIsBad(edited.BreakTime)) {
        MsgBox(QStringLiteral("Invalid Break time format.  Break time format is H hours and mm "
                              "minutes, where h hours is optional."),
               QStringLiteral("Invalid Break Time"), BoxIcon::Stop);
        putStopBack();
        return true;
    }
    if (edited.BreakTime != noBreak && CheckTimePair(edited.BreakTime, CalCurTotalTime(), 6))
        return true;
    if (index != DayEntries.size() - 1 && edited.StopTime.isEmpty()) {
        MsgBox(QStringLiteral("Only the last projects stop value can be empty"), invalidTime,
               BoxIcon::Stop);
        putStopBack();
        return true;
    }
    const QString now = nowText();
    return (!edited.StopTime.isEmpty() && CheckTimePair(edited.StartTime, edited.StopTime, 1)) ||
           CheckTimePair(edited.StartTime, now, 5) ||
           (!edited.StopTime.isEmpty() && CheckTimePair(edited.StopTime, now, 5));
}

/// The rules between the entry and its neighbours.
bool neighboursRefuse(int index) {
    const DayEntry& edited = EditedEntry;
    const bool stopped = !edited.StopTime.isEmpty();
    const DayEntry* next = index + 1 < DayEntries.size() ? &DayEntries[index + 1] : nullptr;
    if (index == 0)
        return next && stopped && CheckTimePair(edited.StopTime, orNow(next->StopTime), 2);
    if (CheckTimePair(At(DayEntries, index - 1).StartTime, edited.StartTime, 3))
        return true;
    return next && !next->StopTime.isEmpty() && stopped &&
           CheckTimePair(edited.StopTime, next->StopTime, 4);
}

} // namespace

QString CalCurTotalTime() {
    return CalOtherTotalTime(EditedEntry);
}

QString CalOtherTotalTime(const DayEntry& entry) {
    return MinutesToText(SpanBetween(entry.StartTime, orNow(entry.StopTime)));
}

bool VerifyAllTimes(bool showMessages) {
    const QString text =
        QStringLiteral("Format must be h:mm AM/PM\n\r Minimun value is 12:00 AM\n\r Maximum value "
                       "is 11:59 PM");
    const bool startBad = IsValidClockText(EditedEntry.StartTime);
    const bool stopBad = !EditedEntry.StopTime.isEmpty() && IsValidClockText(EditedEntry.StopTime);
    markRow(modify_rows::Start, startBad);
    markRow(modify_rows::Stop, stopBad);
    if (showMessages && startBad) {
        MsgBox(text, QStringLiteral("Invalid Start Time Format"));
        putStartBack();
    } else if (showMessages && stopBad) {
        MsgBox(text, QStringLiteral("Invalid Stop Time Format"));
    }
    return startBad || stopBad;
}

bool CheckTimePair(const QString& first, const QString& second, int message) {
    if (ToMinutes(first) <= ToMinutes(second))
        return false;
    MsgBox(QString::fromLatin1(At(pairMessages, message - 1)), invalidTime, BoxIcon::Stop);
    return true;
}

bool VerifyTimeOrder(int index) {
    return entryRefused(index) || neighboursRefuse(index);
}

} // namespace kelvrane
