#include "calendar/day_store.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "history/period_query.h"
#include "platform/texts.h"
#include "records/project_lookup.h"
#include "records/record_tables.h"
#include "timevalues/time_values.h"

#include <QHash>

#include <memory>
#include <utility>
#include <vector>

namespace kelvrane {

namespace {

const QString breakTime = QStringLiteral("BreakTime");
const QString totalTime = QStringLiteral("TotalTime");
const QString projectName = QStringLiteral("ProjectName");
const QString projectNumber = QStringLiteral("ProjectNumber");

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
            .workTime = MinutesToText(minutesOf(rows, totalTime) - pause)};
}

void setTimes(Recordset& row, const DayGroup& group) {
    const Int16 pause = ToMinutes(group.breakTime);
    const Int16 total = ToMinutes(group.workTime) + pause;
    row.setValue(breakTime, int(pause));
    row.setValue(totalTime, int(total));
}

using Change = std::unique_ptr<Recordset>; ///< a row with pending changes

Change changedRow(Connection& connection, const QString& date, const DayGroup& group) {
    auto row = std::make_unique<Recordset>(
        connection, DayProjectRows(DateFromText(date), group.project), Recordset::Optimistic);
    if (!row->isEmpty())
        setTimes(*row, group);
    return row;
}

/// What the first row of each project holds; rows that can't be read are left out.
QHash<QString, DayGroup> storedGroups(Recordset& rows) {
    SkipErrors unreadable(QStringLiteral("SaveDayChanges"));
    QHash<QString, DayGroup> stored;
    for (; !rows.atEnd(); rows.moveNext())
        unreadable([&] {
            const DayGroup group = groupOf(rows);
            if (!stored.contains(group.project))
                stored.insert(group.project, group);
        });
    return stored;
}

bool hasSameTimes(const DayGroup& group, const DayGroup& other) {
    return group.breakTime == other.breakTime && group.workTime == other.workTime;
}

/// Null for a project that is gone.
QVariant customerOf(Recordset& projects, const DayGroup& group) {
    return FindProject(projects, group.project, group.number) == ProjectFound::No
               ? QVariant()
               : projects.value(QStringLiteral("CustInfoDBID"));
}

Change newRow(Connection& connection, const QString& date, const DayGroup& group,
              Recordset& projects) {
    const QVariant customer = customerOf(projects, group);
    auto row =
        std::make_unique<Recordset>(connection, QStringLiteral("DayInfo"), Recordset::Optimistic);
    row->addNew();
    row->setValue(QStringLiteral("Date"), DateFromText(date));
    row->setValue(projectName, group.project);
    row->setValue(projectNumber, group.number);
    setTimes(*row, group);
    if (!customer.isNull())
        row->setValue(QStringLiteral("AssignTo"), customer);
    return row;
}

/// The write lock is taken only when there is something to write: days of a history that is
/// write-protected can be looked at one after the other.
void writeChanges(Connection& connection, std::vector<Change>& changes) {
    std::erase_if(changes, [](const Change& change) { return !change->hasPendingChanges(); });
    if (changes.empty())
        return;
    connection.begin();
    for (const Change& change : changes)
        change->update();
    connection.commit();
}

} // namespace

Connection& HistoryFile::connection() {
    if (!m_connection)
        m_connection.emplace(InAppPath(QString::fromLatin1(files::DayHistory)));
    return *m_connection;
}

QList<DayGroup> ReadDayGroups(HistoryFile& history, const QString& date, SkipErrors& step) {
    QList<DayGroup> groups;
    Recordset rows(history.connection(), DayRows(DateFromText(date)));
    for (; !rows.atEnd(); rows.moveNext())
        step([&] { groups.append(groupOf(rows)); });
    return groups;
}

void WriteDayGroups(HistoryFile& history, const QString& date, QList<DayGroup> groups,
                    SkipErrors& step) {
    Connection& connection = history.connection();
    std::vector<Change> changes;
    if (Recordset rows(connection, DayRows(DateFromText(date))); !rows.isEmpty()) {
        // Only what differs is looked up: leaving a day that was merely looked at costs one query.
        const QHash<QString, DayGroup> stored = storedGroups(rows);
        for (const DayGroup& group : std::as_const(groups))
            if (const auto found = stored.constFind(group.project);
                found == stored.constEnd() || !hasSameTimes(*found, group))
                step([&] { changes.push_back(changedRow(connection, date, group)); });
    } else if (groups.removeAll(DayGroup{}); !groups.isEmpty()) {
        OpenTable projects(ProjectDatabase, QStringLiteral("ProjectInfo"), Recordset::ReadOnly);
        for (const DayGroup& group : std::as_const(groups))
            step([&] { changes.push_back(newRow(connection, date, group, projects.rows)); });
    }
    writeChanges(connection, changes);
}

} // namespace kelvrane
