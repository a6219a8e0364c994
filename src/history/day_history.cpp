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

QString dateLiteral(QDate date) {
    return QLatin1Char('#') + DateText(date) + QLatin1Char('#');
}

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
    QSqlQuery& query = connection.prepared(QStringLiteral(
        "SELECT rowid, ProjectName, BreakTime, TotalTime FROM DayInfo WHERE Date = ? "
        "ORDER BY rowid"));
    query.bindValue(0, StoredDateText(day));
    if (!query.exec())
        RaiseSql(query);
    QList<StoredRow> rows;
    while (query.next())
        rows.append({query.value(0).toLongLong(), query.value(1).toString(), query.value(2).toInt(),
                     query.value(3).toInt()});
    const bool failed = query.lastError().isValid();
    if (failed)
        RaiseSql(query);
    query.finish();
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

void run(Connection& connection, const Statement& statement) {
    QSqlQuery& query = connection.prepared(QLatin1String(statement.sql));
    for (int place = 0; place < statement.values.size(); ++place)
        query.bindValue(place, statement.values[place]);
    if (!query.exec())
        RaiseSql(query);
    query.finish();
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
    connection.begin();
    try {
        for (const Statement& statement : statements)
            run(connection, statement);
        connection.commit();
    } catch (const RuntimeError&) {
        connection.rollback();
        throw;
    }
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

QString PeriodQuery(QDate From, QDate To) {
    return QStringLiteral("SELECT * FROM DayInfo WHERE Date BETWEEN ") + dateLiteral(From) +
           QStringLiteral(" and ") + dateLiteral(To) + QStringLiteral(" ORDER BY ProjectName");
}

QString ProjectPeriodQuery(const QString& Name, QDate From, QDate To) {
    return QStringLiteral("SELECT * FROM DayInfo WHERE ( ProjectName = '") + Name +
           QStringLiteral("' ) AND ( Date BETWEEN ") + dateLiteral(From) + QStringLiteral(" and ") +
           dateLiteral(To) + QLatin1Char(')');
}

} // namespace kelvrane
