#include "calendar/day_store.h"

#include "frame/globals.h"
#include "history/day_history.h"
#include "history/period_query.h"
#include "history/roll_up.h"
#include "platform/texts.h"
#include "records/project_lookup.h"
#include "records/record_tables.h"
#include "timevalues/time_values.h"

#include <memory>
#include <utility>
#include <vector>

namespace kelvrane {

namespace {

const QString breakTime = QStringLiteral("BreakTime");
const QString totalTime = QStringLiteral("TotalTime");
const QString projectName = QStringLiteral("ProjectName");
const QString projectNumber = QStringLiteral("ProjectNumber");
const QString customer = QStringLiteral("AssignTo");
const QString rowKey = QStringLiteral("ID");

/// A key alone may be another date's by now.
BoundQuery rowQuery(qint64 id, const QString& date) {
    return {QStringLiteral("SELECT * FROM DayInfo WHERE ID = ? AND Date = ?"),
            {id, StoredDateText(DateFromText(date))}};
}

Int16 minutesOf(Recordset& rows, const QString& field) {
    const QVariant value = rows.value(field);
    if (value.isNull())
        return 0;
    bool isNumber = false;
    const double minutes = value.toDouble(&isNumber);
    if (!isNumber)
        Raise(errors::TypeMismatch);
    return ToInt16(minutes);
}

DayGroup groupOf(Recordset& rows) {
    const Int16 pause = minutesOf(rows, breakTime);
    return {.project = rows.text(projectName),
            .number = rows.text(projectNumber),
            .breakTime = MinutesToText(pause),
            .workTime = MinutesToText(minutesOf(rows, totalTime) - pause),
            .id = rows.value(rowKey).toLongLong(),
            .storedProject = rows.text(projectName)};
}

void setTimes(Recordset& row, const DayGroup& group) {
    const Int16 pause = ToMinutes(group.breakTime);
    const Int16 total = ToMinutes(group.workTime) + pause;
    row.setValue(breakTime, int(pause));
    row.setValue(totalTime, int(total));
}

using Change = std::unique_ptr<Recordset>; ///< a row with pending changes

/// Without changes for a group that has another project than its row.
Change changedRow(Connection& connection, const QString& date, const DayGroup& group) {
    auto row =
        std::make_unique<Recordset>(connection, rowQuery(group.id, date), Recordset::Optimistic);
    if (row->isEmpty())
        Raise(errors::NoCurrentRecord,
              QStringLiteral("The row of '%1' is no longer in the history").arg(group.project));
    if (group.project == row->text(projectName) || group.project == group.storedProject)
        setTimes(*row, group);
    return row;
}

/// Null for a project that is gone.
QVariant customerOf(Recordset& projects, const DayGroup& group) {
    return FindProject(projects, group.project, group.number) == ProjectFound::No
               ? QVariant()
               : projects.value(QStringLiteral("CustInfoDBID"));
}

Change newRow(Connection& connection, const QString& date, const DayGroup& group,
              Recordset& projects) {
    const QVariant assigned = customerOf(projects, group);
    auto row =
        std::make_unique<Recordset>(connection, QStringLiteral("DayInfo"), Recordset::Optimistic);
    row->addNew();
    row->setValue(QStringLiteral("Date"), DateFromText(date));
    row->setValue(projectName, group.project);
    row->setValue(projectNumber, group.number);
    setTimes(*row, group);
    if (!assigned.isNull())
        row->setValue(customer, assigned);
    return row;
}

/// Rows that a roll-up still owes would be missing, or undo a change. To be called before the
/// history is opened: an owed roll-up is tried then.
void requireRolledUp(const QString& date) {
    if (RollUpOwes(DateFromText(date)))
        Raise(errors::DatabaseLocked,
              QStringLiteral("The hours of %1 are still to be written to the history. Try again "
                             "when they are")
                  .arg(date));
}

/// The write lock is taken only when there is something to write: days of a history that is
/// write-protected can be looked at one after the other.
void writeChanges(Connection& connection, std::vector<Change>& changes) {
    std::erase_if(changes, [](const Change& change) { return !change->hasPendingChanges(); });
    if (changes.empty())
        return;
    connection.inTransaction([&] {
        for (const Change& change : changes)
            change->update();
    });
}

/// The rows of one project on a date become one, in memory as long as the transaction is open.
void joinRowsOf(Connection& connection, const QString& date, const QString& project) {
    Recordset rows(connection, DayRows(DateFromText(date)), Recordset::Optimistic);
    std::optional<qint64> kept;
    Int16 pause;
    Int16 total;
    QVariant assigned;
    for (; !rows.atEnd(); rows.moveNext()) {
        if (rows.text(projectName) != project)
            continue;
        pause = pause + minutesOf(rows, breakTime);
        total = total + minutesOf(rows, totalTime);
        if (assigned.isNull())
            assigned = rows.value(customer);
        if (kept)
            rows.deleteRow();
        else
            kept = rows.value(rowKey).toLongLong();
    }
    if (!kept)
        return;
    Recordset row(connection, rowQuery(*kept, date), Recordset::Optimistic);
    row.setValue(breakTime, int(pause));
    row.setValue(totalTime, int(total));
    if (!assigned.isNull())
        row.setValue(customer, assigned);
    row.update();
}

} // namespace

Connection& HistoryFile::connection() {
    if (!m_connection)
        m_connection.emplace(DayHistoryPath());
    return *m_connection;
}

QList<DayGroup> ReadDayGroups(HistoryFile& history, const QString& date, SkipErrors& step) {
    requireRolledUp(date);
    QList<DayGroup> groups;
    Recordset rows(history.connection(), DayRows(DateFromText(date)));
    for (; !rows.atEnd(); rows.moveNext())
        step([&] { groups.append(groupOf(rows)); });
    return groups;
}

void WriteDayGroups(HistoryFile& history, const QString& date, QList<DayGroup> groups,
                    SkipErrors& step) {
    requireRolledUp(date);
    Connection& connection = history.connection();
    std::vector<Change> changes;
    if (Recordset rows(connection, DayRows(DateFromText(date))); !rows.isEmpty()) {
        for (const DayGroup& group : std::as_const(groups))
            if (group.id != 0)
                step([&] { changes.push_back(changedRow(connection, date, group)); });
    } else if (groups.removeAll(DayGroup{}); !groups.isEmpty()) {
        OpenTable projects(ProjectDatabase, QStringLiteral("ProjectInfo"), Recordset::ReadOnly);
        for (const DayGroup& group : std::as_const(groups))
            step([&] {
                changes.push_back(group.id == 0 ? newRow(connection, date, group, projects.rows)
                                                : changedRow(connection, date, group));
            });
    }
    writeChanges(connection, changes);
}

QStringList RepeatedProjects(const QList<DayGroup>& groups) {
    QStringList seen;
    QStringList repeated;
    for (const DayGroup& group : groups) {
        if (seen.contains(group.project) && !repeated.contains(group.project))
            repeated.append(group.project);
        seen.append(group.project);
    }
    return repeated;
}

void JoinRows(HistoryFile& history, const QString& date, const QStringList& projects) {
    requireRolledUp(date);
    Connection& connection = history.connection();
    connection.inTransaction([&] {
        for (const QString& project : projects)
            joinRowsOf(connection, date, project);
    });
}

} // namespace kelvrane
