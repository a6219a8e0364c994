#include "records/project_changes.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/other_process.h"
#include "history/booked_time.h"
#include "history/day_history.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "records/record_tables.h"

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

Connection& projectDatabase() {
    if (!ProjectTable)
        Raise(errors::NoObject);
    return ProjectTable->connection;
}

/// The numbers of the stored projects of that name, in the order of the table.
QStringList numbersOf(const QString& name) {
    Recordset rows(projectDatabase(),
                   BoundQuery{QStringLiteral("SELECT * FROM ProjectInfo WHERE Project_Name = ? "
                                             "COLLATE BINARY"),
                              {name}});
    QStringList numbers;
    for (; !rows.atEnd(); rows.moveNext())
        numbers.append(rows.text(project_column::Number));
    return numbers;
}

/// Other projects of the name than the one that is stored as given.
QStringList othersOf(const QString& name, const RecentProject& stored) {
    QStringList numbers = numbersOf(name);
    if (stored.name == name)
        numbers.removeOne(stored.number);
    return numbers;
}

bool isAmongTodaysEntries(const RenamedProject& renamed) {
    return std::ranges::any_of(std::as_const(DayEntries), [&](const DayEntry& entry) {
        return entry.ProjectName == renamed.from &&
               (renamed.number.isEmpty() || entry.ProjectNumber == renamed.number);
    });
}

void setRecent(const RecentProject& from, const RecentProject& to) {
    for (qsizetype place = 0; place < RecentProjects.size(); ++place)
        if (RecentProjects[place] == from.name && RecentNumbers.value(place) == from.number)
            SetRecentProject(place, to);
}

/// One project of a name needs no number; of two, an entry without one is the other of the pair.
void numberRecent(const QString& name, const RecentProject& saved) {
    const QStringList numbers = numbersOf(name);
    if (numbers.size() == 1) {
        for (qsizetype place = 0; place < RecentProjects.size(); ++place)
            if (RecentProjects[place] == name)
                SetRecentProject(place, {name});
    } else if (const QStringList others = othersOf(name, saved); others.size() == 1) {
        setRecent({name}, {name, others.first()});
    }
}

} // namespace

RecentProject StoredProject() {
    Recordset& records = ProjectRecords();
    const QVariant key = records.value(0);
    if (key.isNull())
        return {};
    Recordset stored(projectDatabase(),
                     BoundQuery{QStringLiteral("SELECT * FROM ProjectInfo WHERE ") +
                                    QuotedName(records.fieldName(0)) + QStringLiteral(" = ?"),
                                {key}});
    return stored.isEmpty() ? RecentProject()
                            : RecentProject{stored.text(project_column::Name),
                                            stored.text(project_column::Number)};
}

bool MaySaveName(const RecentProject& before, const RecentProject& after) {
    if (after == before)
        return true;
    if (!KeepsDay && !before.name.isEmpty() && after.name != before.name) {
        MsgBox(OtherProcessText + QStringLiteral(". Rename \"") + before.name +
                   QStringLiteral("\" there, so that its time goes along."),
               QStringLiteral("Rename Project"), BoxIcon::Exclamation);
        return false;
    }
    const QStringList others = othersOf(after.name, before);
    // A pair of one name was agreed to; it is asked about again when the numbers become the same.
    if (others.isEmpty() || (after.name == before.name && !others.contains(after.number)))
        return true;
    const QString told =
        others.contains(after.number)
            ? QStringLiteral("It has the same number, too, so the two can't be told apart.")
            : QStringLiteral("Only their numbers will tell the two apart.");
    return Agrees(QStringLiteral("There is already a project named \"") + after.name +
                      QStringLiteral("\" (number ") + others.join(QStringLiteral(", ")) +
                      QStringLiteral(").  ") + told +
                      QStringLiteral("  Save this one all the same?"),
                  QStringLiteral("Project Name"));
}

std::optional<RenamedProject> AskBookedTime(const RecentProject& before,
                                            const RecentProject& after) {
    if (before.name.isEmpty() || after.name == before.name)
        return std::nullopt;
    RenamedProject renamed{before.name, after.name};
    if (!othersOf(before.name, before).isEmpty())
        renamed.number = before.number;
    const std::optional<BookedTime> booked = ReadBookedTime({renamed.from, renamed.number});
    // Hours that can't be read, or are still owed to the history, may be of this project.
    const bool mayBeBooked = booked ? booked->rows > 0 : DayHistoryExists();
    if (!mayBeBooked && !RollUpPending() && !isAmongTodaysEntries(renamed))
        return std::nullopt;
    const QString hours = booked ? QStringLiteral(": ") + HoursText(booked->workMinutes) +
                                       QStringLiteral(" in the history")
                                 : QString();
    const bool agreed =
        Agrees(QStringLiteral("Time is booked on \"") + renamed.from + u'"' + hours +
                   QStringLiteral(".  Shall it go along under the new name \"") + renamed.to +
                   QStringLiteral("\"?"),
               QStringLiteral("Rename Project"));
    return agreed ? std::optional(renamed) : std::nullopt;
}

void RenameBookedTime(const RenamedProject& renamed) {
    SkipErrors step = ReportingSteps(QStringLiteral("RenameBookedTime"));
    if (projectSinks.renameToday && !step([&] { projectSinks.renameToday(renamed); }))
        return; // the two never part: what today can't take, the history doesn't either
    step([&] { RenameHistoryRows(renamed.from, renamed.to, renamed.number); });
}

void FollowInRecentList(const RecentProject& before, const RecentProject& after) {
    LoadRecentProjects(ShowNumProjects);
    if (!before.name.isEmpty() && before != after) {
        // Without a number an entry means the project only where no other has the name.
        const RecentProject now{after.name,
                                othersOf(after.name, after).isEmpty() ? QString() : after.number};
        const bool alone = othersOf(before.name, after).isEmpty();
        for (qsizetype place = RecentProjects.size() - 1; place >= 0; --place) {
            const RecentProject held{RecentProjects[place], RecentNumbers.value(place)};
            if (held.name != before.name ||
                (held.number.isEmpty() ? !alone : held.number != before.number))
                continue;
            if (after.name.isEmpty())
                RemoveRecentProject(held.name, held.number);
            else
                SetRecentProject(place, now);
        }
    }
    for (const QString& name : {before.name, after.name})
        if (!name.isEmpty())
            numberRecent(name, after);
}

QString BookedTimeSentence() {
    const RecentProject stored = StoredProject();
    const bool shared = !othersOf(stored.name, stored).isEmpty();
    const auto booked = ReadBookedTime({stored.name, shared ? stored.number : QString()});
    if (!booked)
        return {};
    return booked->rows == 0
               ? QStringLiteral("No time in the history is booked on this project.")
               : HoursText(booked->workMinutes) +
                     QStringLiteral(" in the history are booked on this project; they "
                                    "stay there under its name.");
}

QString CustomerUseSentence() {
    Recordset projects(
        projectDatabase(),
        BoundQuery{QStringLiteral("SELECT * FROM ProjectInfo WHERE CustInfoDBID = ?"),
                   {CustomerRecords().value(QStringLiteral("ID"))}});
    const int count = projects.count();
    if (count == 0)
        return QStringLiteral("No project refers to this customer.");
    return count == 1
               ? QStringLiteral("1 project refers to this customer.")
               : QString::number(count) + QStringLiteral(" projects refer to this customer.");
}

} // namespace kelvrane
