#include "history/roll_up.h"

#include "frame/day_tail.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "frame/waiting_questions.h"
#include "history/compaction.h"
#include "history/day_history.h"
#include "history/rename_project.h"
#include "platform/connection.h"
#include "platform/escaped_fields.h"
#include "platform/ports.h"
#include "timevalues/day_file.h"
#include "timevalues/entry_times.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace kelvrane {

namespace {

constexpr int firstDelay = 50; // milliseconds
constexpr int lastDelay = 5000;
constexpr int exitPause = 50;
constexpr int exitPauses = 100;
/// Errors of entries that can't be summed: trying again doesn't help.
constexpr int notOfTheHistory[] = {errors::TypeMismatch, errors::Overflow, errors::Subscript};
const QString question = QStringLiteral("history");
const QString tryNow = QStringLiteral("Try now");

/// What is owed to the history, beyond the day in memory.
class RollUp : public QObject {
  public:
    bool pending = false;
    bool compactionOwed = false;
    QList<StoredDay> closedDays; ///< oldest first; each has its file too

    void attempt();
    void succeeded();
    void failed(const RuntimeError& error, const QString& routine);
    void retry();
    bool mayRetry() const;

  private:
    void schedule();
    void stopTimer();

    IntervalTimer* m_timer = nullptr;
    int m_delay = 0; ///< 0: nothing failed yet
    bool m_retrying = false;
};

void registerQuestion();

std::unique_ptr<RollUp>& holder() {
    static std::unique_ptr<RollUp> rollUp;
    return rollUp;
}

RollUp& state() {
    if (!holder()) {
        holder() = std::make_unique<RollUp>();
        registerQuestion();
    }
    return *holder();
}

/// Empty where the entries can't be summed: such a day would stand in the way of all later ones.
QList<DayProjectSummary> closedSummaries(const QList<DayEntry>& entries) {
    QList<DayProjectSummary> summaries;
    SkipErrors unreadable(QStringLiteral("CloseDay"));
    unreadable([&] { summaries = SummariesOf(entries); });
    for (DayProjectSummary& summary : summaries)
        summary.AtLeast = std::ranges::any_of(entries, [&](const DayEntry& entry) {
            return entry.StopTime.isEmpty() && entry.ProjectName == summary.ProjectName;
        });
    return summaries;
}

void writeClosedDay(const StoredDay& day) {
    WriteDayRows(day.date, closedSummaries(day.entries), TailValues(day.tail, tail::Delete));
}

void renameRows() {
    QStringList owed = TailValues(tail::Rename);
    while (!owed.isEmpty()) {
        const QStringList names = SplitFields(owed.takeFirst());
        if (names.size() == 3)
            RenameProjectInHistory(names[0], names[1], names[2]);
        SetTailValues(tail::Rename, owed);
    }
}

/// Everything that is owed, oldest first. Raises what stands in the way.
void RollUp::attempt() {
    while (!closedDays.isEmpty()) {
        writeClosedDay(closedDays.first());
        ports.files->removeIfThere(ClosedDayFilePath(closedDays.first().date));
        closedDays.removeFirst();
    }
    renameRows();
    const QStringList gone = TailValues(tail::Delete);
    if (DayEntries.isEmpty() && gone.isEmpty())
        return;
    UpdateCurrentEntry();
    WriteDayRows(DayDate, SummariesOf(DayEntries), gone);
    SetTailValues(tail::Delete, {});
}

void RollUp::succeeded() {
    pending = false;
    m_delay = 0;
    stopTimer();
    Questions().withdraw(question);
}

void RollUp::failed(const RuntimeError& error, const QString& routine) {
    pending = true;
    if (error.number != errors::DatabaseLocked && !ReportsAreQuiet())
        ReportError(error, routine);
    if (m_delay < lastDelay) {
        m_delay = m_delay == 0 ? firstDelay : std::min(m_delay * 2, lastDelay);
        schedule();
        return;
    }
    stopTimer(); // from here on it is tried at each minute tick
    if (!Questions().isWaiting(question))
        Questions().ask(question, {error.description});
}

void RollUp::schedule() {
    if (!m_timer) {
        m_timer = ports.timers->create(this);
        connect(m_timer, &IntervalTimer::Timer, this, [this] {
            Guarded(QStringLiteral("AddDataToDayInfoDataBase"), [this] {
                if (mayRetry())
                    retry();
            });
        });
    }
    m_timer->setInterval(m_delay);
    m_timer->setEnabled(true);
}

void RollUp::stopTimer() {
    if (m_timer)
        m_timer->setEnabled(false);
}

/// Not while the file is being replaced or read, nor behind progress: those run events, and a retry
/// may be one of them.
bool RollUp::mayRetry() const {
    return pending && !m_retrying && !Connection::isOpenOn(DayHistoryPath()) &&
           !ports.progress->isShown();
}

void RollUp::retry() {
    const QScopedValueRollback<bool> guard(m_retrying, true);
    const QuietReports quiet;
    const QStringList tailBefore = DayTail();
    try {
        attempt();
    } catch (const RuntimeError& error) {
        failed(error, QStringLiteral("AddDataToDayInfoDataBase"));
        return;
    }
    succeeded();
    if (DayTail() != tailBefore)
        SaveDayFile();
    if (std::exchange(compactionOwed, false))
        CompactDatabaseFile(AppPath(), QStringLiteral("DayInfo"), true);
}

/// Without waiting for anything. Raises TypeMismatch, Overflow and Subscript of entries that can't
/// be summed.
void rollUpNow(const QString& routine) {
    if (!KeepsDay)
        return;
    try {
        state().attempt();
    } catch (const RuntimeError& error) {
        if (std::ranges::find(notOfTheHistory, error.number) != std::end(notOfTheHistory))
            throw;
        state().failed(error, routine);
        return;
    }
    state().succeeded();
}

void registerQuestion() {
    Questions().registerKind(
        question,
        {.text =
             [](const QStringList& details) {
                 return QStringLiteral("Today's hours could not be written to the history yet: %1. "
                                       "Nothing is lost; Kelvrane tries again each minute.")
                     .arg(details.value(0));
             },
         .answers = [](const QStringList&) { return QStringList{tryNow}; },
         .take =
             [](const QStringList&, const QString&) {
                 RetryRollUp();
                 return !RollUpPending();
             },
         .stored = false});
}

} // namespace

void AddDataToDayInfoDataBase() {
    if (KeepsDay && DayEntries.isEmpty() && DayTail().isEmpty() && state().closedDays.isEmpty())
        Raise(errors::Subscript);
    rollUpNow(QStringLiteral("AddDataToDayInfoDataBase"));
}

void DeleteSpecificProjectFromDB(const QString& Name) {
    QStringList gone = TailValues(tail::Delete);
    if (!gone.contains(Name))
        SetTailValues(tail::Delete, gone << Name);
    rollUpNow(QStringLiteral("DeleteSpecificProjectFromDB"));
}

void RenameHistoryRows(const QString& from, const QString& to, const QString& number) {
    SetTailValues(tail::Rename, TailValues(tail::Rename) << JoinFields({from, to, number}));
    SaveDayFile();
    SkipErrors step(QStringLiteral("RenameHistoryRows"));
    step([] { rollUpNow(QStringLiteral("RenameHistoryRows")); });
    SaveDayFile();
}

bool RollUpPending() {
    return state().pending;
}

bool RollUpOwes(QDate date) {
    RetryRollUp();
    return std::ranges::find(state().closedDays, date, &StoredDay::date) !=
           state().closedDays.end();
}

void RetryRollUp() {
    if (state().mayRetry())
        state().retry();
}

void FinishRollUp() {
    if (!RollUpPending())
        return;
    state().retry();
    if (!RollUpPending())
        return;
    ports.progress->show(QStringLiteral("Saving Data ... "));
    for (int pause = 1; pause <= exitPauses && RollUpPending(); ++pause) {
        ports.progress->setPercent(pause * 100 / exitPauses);
        ports.events->pause(exitPause);
        state().retry();
    }
    ports.progress->close();
}

void CompactAfterRollUp() {
    if (RollUpPending())
        state().compactionOwed = true;
    else
        CompactDatabaseFile(AppPath(), QStringLiteral("DayInfo"), true);
}

void CloseDay() {
    const StoredDay day{DayDate, DayEntries, TailLines(tail::Delete), {}};
    SkipErrors step(QStringLiteral("CloseDay"));
    step([&] { WriteStoredDay(LastDayFilePath(), day); });
    DayEntries.clear();
    CurrentEntryIndex = -1;
    ForgetBreak();
    SetTailValues(tail::Delete, {});
    CloseStoredDay(day);
    DayDate = {};
}

void CloseStoredDay(const StoredDay& day) {
    if (!KeepsDay || !day.date.isValid() || (day.entries.isEmpty() && day.tail.isEmpty()))
        return;
    ForgetClosedDay(day.date);
    RollUp& rollUp = state();
    rollUp.closedDays.append(day);
    const QuietReports quiet; // nobody may be there at midnight
    try {
        rollUp.attempt();
        rollUp.succeeded();
    } catch (const RuntimeError& error) {
        SkipErrors step(QStringLiteral("CloseDay"));
        step([&] { WriteStoredDay(ClosedDayFilePath(day.date), day); });
        rollUp.failed(error, QStringLiteral("AddDataToDayInfoDataBase"));
    }
}

void ForgetClosedDay(QDate date) {
    SkipErrors step(QStringLiteral("CloseDay"));
    if (state().closedDays.removeIf([&](const StoredDay& day) { return day.date == date; }) > 0)
        step([&] { ports.files->removeIfThere(ClosedDayFilePath(date)); });
}

void FindClosedDays() {
    RollUp& rollUp = state();
    if (!KeepsDay)
        return;
    SkipErrors step(QStringLiteral("FindClosedDays"));
    for (const QDate date : ClosedDayFiles())
        step([&] {
            if (std::ranges::find(rollUp.closedDays, date, &StoredDay::date) ==
                rollUp.closedDays.end())
                if (std::optional<StoredDay> day = ReadStoredDay(ClosedDayFilePath(date)))
                    rollUp.closedDays.append(*day);
        });
    if (!rollUp.closedDays.isEmpty())
        rollUp.pending = true;
}

void ResetRollUp() {
    holder().reset();
}

} // namespace kelvrane
