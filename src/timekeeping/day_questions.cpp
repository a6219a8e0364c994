#include "timekeeping/day_questions.h"

#include "frame/day_tail.h"
#include "frame/waiting_questions.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/day_change.h"
#include "timekeeping/day_steps.h"
#include "timekeeping/tray_state.h"
#include "timevalues/clock_watch.h"
#include "timevalues/day_file.h"
#include "timevalues/entry_times.h"
#include "timevalues/time_values.h"

#include <algorithm>
#include <optional>

namespace kelvrane {

namespace {

const QString sleepKind = QStringLiteral("asleep");
const QString clockKind = QStringLiteral("clock");
const QString startAgain = QStringLiteral("Start it again now");
const QString countNight = QStringLiteral("Count the night");
const QString leaveIt = QStringLiteral("Leave it");
const QString clockIsRight = QStringLiteral("The clock is right now");

/// The details of the question about a sleep.
struct Sleep {
    explicit Sleep(const QStringList& details)
        : date(DateFromText(details.value(0))), project(details.value(1)), number(details.value(2)),
          ended(details.value(3)), woke(DateFromText(details.value(4))) {}
    QDate date;
    QString project;
    QString number;
    QString ended; ///< clock text
    QDate woke;
};

/// The day on which it ended, as it was put by; std::nullopt once another day was.
std::optional<StoredDay> sleptDay(const Sleep& sleep) {
    std::optional<StoredDay> day = ReadStoredDay(LastDayFilePath());
    const bool same = day && day->date == sleep.date && !day->entries.isEmpty() &&
                      day->entries.last().ProjectName == sleep.project &&
                      day->entries.last().StopTime == sleep.ended;
    return same ? day : std::nullopt;
}

QString sleepText(const QStringList& details) {
    const Sleep sleep(details);
    return QStringLiteral("%1 was running when the machine fell asleep, at %2 on %3. It ended "
                          "there, and nothing runs since.")
        .arg(sleep.project, sleep.ended, DateText(sleep.date));
}

QStringList sleepAnswers(const QStringList& details) {
    const Sleep sleep(details);
    SkipErrors step(QStringLiteral("AskAboutSleep"));
    const bool night = DayEntries.isEmpty() && sleep.woke == ports.clock->today() &&
                       step.condition([&] { return sleptDay(sleep).has_value(); });
    QStringList answers{startAgain, leaveIt};
    if (night)
        answers.insert(1, countNight);
    return answers;
}

/// Each date gets its part: the day of the entry up to its midnight, whole days between, and today
/// an entry that runs on from 12:00 AM.
bool bookNight(const Sleep& sleep) {
    std::optional<StoredDay> day = sleptDay(sleep);
    if (!day || !DayEntries.isEmpty())
        return false;
    const DayEntry entry = day->entries.last();
    DayEntry& last = day->entries.last();
    last.StopTime = ClockTextOf(MinutesOfDay);
    last.TotalTime = MinutesToText(MinutesOfDay - ToMinutes(entry.StartTime));
    WriteStoredDay(LastDayFilePath(), *day);
    CloseStoredDay(*day);
    for (QDate date = sleep.date.addDays(1); date < sleep.woke; date = date.addDays(1)) {
        DayEntry whole = EntryFrom(entry, 0);
        whole.StopTime = ClockTextOf(MinutesOfDay);
        whole.TotalTime = MinutesToText(MinutesOfDay);
        CloseStoredDay({date, {whole}, {}, {}});
    }
    DayStopped = false;
    BeginDay(sleep.woke, {EntryFrom(entry, 0)});
    return true;
}

bool takeSleepAnswer(const QStringList& details, const QString& answer) {
    const Sleep sleep(details);
    FollowClock();
    if (answer == countNight)
        return bookNight(sleep);
    if (answer != startAgain)
        return true;
    const qsizetype before = DayEntries.size();
    StartProjectByName(sleep.project, sleep.number);
    return DayEntries.size() > before; // otherwise the project is gone, and the question stays
}

QString clockText(const QStringList&) {
    return QStringLiteral("The entries are dated %1, but the clock says %2. They stay under their "
                          "date, and nothing is lost.")
        .arg(DateText(DayDate), DateText(ports.clock->today()));
}

/// The projects that have entries in the second list alone.
QStringList projectsOnlyIn(const QList<DayEntry>& others, const QList<DayEntry>& entries) {
    QStringList names;
    for (const DayEntry& entry : entries)
        if (std::ranges::find(others, entry.ProjectName, &DayEntry::ProjectName) == others.end())
            names.append(entry.ProjectName);
    names.removeDuplicates();
    return names;
}

bool takeClockAnswer(const QStringList& details, const QString&) {
    FollowClock();
    const QDate today = ports.clock->today();
    if (!DayDate.isValid() || DayDate <= today)
        return true;
    const QList<DayEntry> putBy = EntriesPutBy(today);
    const qsizetype first =
        std::clamp<qsizetype>(details.value(0).toLongLong(), 0, DayEntries.size());
    const QList<DayEntry> since = DayEntries.mid(first);
    const bool runs = !since.isEmpty() && since.last().StopTime.isEmpty();
    const bool onBreak = runs && OnBreak == 1;
    const QString breakBegan = BreakBegan;
    const Int16 breakHeld = BreakHeld;
    DayEntries = DayEntries.first(first);
    SetTailValues(tail::Delete, TailValues(tail::Delete) + projectsOnlyIn(DayEntries, since));
    CloseDay();
    ForgetClosedDay(today);
    DayStopped = !runs;
    if (onBreak) {
        BreakBegan = breakBegan;
        BreakHeld = breakHeld;
        WriteBreakToTail();
    }
    BeginDay(today, putBy + since);
    return true;
}

} // namespace

void AskAboutSleep(const DayEntry& entry, const ClockStep& step) {
    Questions().ask(sleepKind, {DateText(DayDate), entry.ProjectName, entry.ProjectNumber,
                                ClockTextOf(step.last.minute), DateText(step.now.date)});
}

void AskAboutClock(qsizetype firstSince) {
    if (Questions().isWaiting(clockKind))
        return;
    Questions().ask(clockKind, {QString::number(firstSince)});
    SaveDayFile();
}

void WithdrawClockQuestion() {
    if (!Questions().isWaiting(clockKind))
        return;
    Questions().withdraw(clockKind);
    SaveDayFile();
}

void RegisterDayQuestions() {
    Questions().registerKind(sleepKind,
                             {.text = sleepText, .answers = sleepAnswers, .take = takeSleepAnswer});
    Questions().registerKind(
        clockKind, {.text = clockText,
                    .answers = [](const QStringList&) { return QStringList{clockIsRight}; },
                    .take = takeClockAnswer});
}

} // namespace kelvrane
