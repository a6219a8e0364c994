#include "history/day_history.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <QSqlError>
#include <QVariant>

#include <algorithm>

namespace kelvrane {

namespace {

DayProjectSummary summaryOf(const DayEntry& entry) {
    return {entry.ProjectName, entry.ProjectNumber, ToMinutes(entry.BreakTime),
            ToMinutes(entry.TotalTime)};
}

/// A row as it is in the history.
struct StoredRow {
    qint64 key = 0;
    QString project;
    int breakMinutes = 0;
    int totalMinutes = 0;
};

/// The rows of a day in the order of their keys.
QList<StoredRow> rowsOf(Connection& connection, QDate day) {
    QSqlQuery query = connection.select(QStringLiteral("SELECT rowid, ProjectName, BreakTime, "
                                                       "TotalTime FROM DayInfo WHERE Date = ? "
                                                       "ORDER BY rowid"),
                                        {StoredDateText(day)});
    QList<StoredRow> rows;
    while (query.next())
        rows.append({query.value(0).toLongLong(), query.value(1).toString(), query.value(2).toInt(),
                     query.value(3).toInt()});
    if (query.lastError().isValid())
        RaiseSql(query);
    return rows;
}

struct Statement {
    const char* sql;
    QVariantList values;
};

Statement insertion(QDate day, const DayProjectSummary& summary) {
    return {"INSERT INTO DayInfo (Date, ProjectName, ProjectNumber, BreakTime, TotalTime) "
            "VALUES (?, ?, ?, ?, ?)",
            {StoredDateText(day), summary.ProjectName, summary.ProjectNumber,
             int(summary.BreakMinutes), int(summary.TotalMinutes)}};
}

/// What has to be done to the rows, compared with what is there.
QList<Statement> differences(QDate day, QList<StoredRow> rows,
                             const QList<DayProjectSummary>& summaries, const QStringList& gone) {
    QList<Statement> statements;
    for (const StoredRow& row : rows)
        if (gone.contains(row.project))
            statements.append({"DELETE FROM DayInfo WHERE rowid = ?", {row.key}});
    rows.removeIf([&](const StoredRow& row) { return gone.contains(row.project); });
    for (const DayProjectSummary& summary : summaries) {
        const auto row = std::ranges::find(rows, summary.ProjectName, &StoredRow::project);
        if (row == rows.end())
            statements.append(insertion(day, summary));
        else if (summary.AtLeast && row->totalMinutes > summary.TotalMinutes)
            continue;
        else if (row->breakMinutes != summary.BreakMinutes ||
                 row->totalMinutes != summary.TotalMinutes)
            statements.append({"UPDATE DayInfo SET BreakTime = ?, TotalTime = ? WHERE rowid = ?",
                               {int(summary.BreakMinutes), int(summary.TotalMinutes), row->key}});
    }
    return statements;
}

} // namespace

QList<DayProjectSummary> SummariesOf(const QList<DayEntry>& entries) {
    QList<DayProjectSummary> summaries;
    for (const DayEntry& entry : entries) {
        const auto found =
            std::ranges::find(summaries, entry.ProjectName, &DayProjectSummary::ProjectName);
        if (found == summaries.end())
            summaries.append(summaryOf(entry));
        else
            found->TotalMinutes += ToMinutes(entry.TotalTime);
    }
    return summaries;
}

void WriteDayRows(QDate day, const QList<DayProjectSummary>& summaries, const QStringList& gone) {
    Connection connection(DayHistoryPath(), LockWait::None);
    const QList<Statement> statements = differences(day, rowsOf(connection, day), summaries, gone);
    if (statements.isEmpty())
        return;
    connection.inTransaction([&] {
        for (const Statement& statement : statements)
            connection.run(QLatin1String(statement.sql), statement.values);
    });
}

QString DayHistoryPath() {
    return InAppPath(QString::fromLatin1(files::DayHistory));
}

bool DayHistoryExists() {
    return ports.files->exists(DayHistoryPath());
}

void TellMissingDayHistory() {
    MsgBox(QStringLiteral("The Day Information database (DayInfo.mdb) is missing.\r"
                          "This file must be located in the '") +
               AppPath() + QStringLiteral("' folder.\rPlease reinstall Kelvrane."),
           QStringLiteral("Database Error"), BoxIcon::Stop);
}

int FindRecordByDate(Recordset& rows, QDate Date) {
    rows.moveFirst();
    rows.find(QStringLiteral("Date = '") + DateText(Date) + QLatin1Char('\''));
    return rows.position();
}

} // namespace kelvrane
