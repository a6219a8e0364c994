#include "history/rename_project.h"

#include "frame/globals.h"
#include "history/day_history.h"
#include "platform/connection.h"
#include "platform/texts.h"

#include <QList>
#include <QVariantList>

namespace kelvrane {

namespace {

struct BookedRow {
    QVariant id;
    QVariant date;
    QString number;
    QVariant pause;
    QVariant total;
    QVariant joins = {}; ///< id of the row that takes its time over; null: it gets the new name
};

QList<BookedRow> readRows(Connection& history, const QString& name, const QString& number) {
    QString sql = QStringLiteral("SELECT rowid, Date, coalesce(ProjectNumber, ''), "
                                 "coalesce(BreakTime, 0), coalesce(TotalTime, 0) FROM DayInfo "
                                 "WHERE ProjectName = ? COLLATE BINARY");
    QVariantList values{name};
    if (!number.isEmpty()) {
        sql += QStringLiteral(" AND ProjectNumber = ?");
        values.append(number);
    }
    QSqlQuery query = history.select(sql, values);
    QList<BookedRow> rows;
    while (query.next())
        rows.append({.id = query.value(0),
                     .date = query.value(1),
                     .number = query.value(2).toString(),
                     .pause = query.value(3),
                     .total = query.value(4)});
    return rows;
}

/// The row of that date that already has the new name, and the same number but on the date of the
/// open day.
QVariant rowToJoin(Connection& history, const BookedRow& row, const QString& to) {
    QString sql = QStringLiteral("SELECT rowid FROM DayInfo WHERE Date = ? AND "
                                 "ProjectName = ? COLLATE BINARY");
    QVariantList values{row.date, to};
    if (!DayDate.isValid() || row.date.toString() != StoredDateText(DayDate)) {
        sql += QStringLiteral(" AND coalesce(ProjectNumber, '') = ?");
        values.append(row.number.isNull() ? QStringLiteral("") : row.number);
    }
    QSqlQuery query = history.select(sql + QStringLiteral(" ORDER BY rowid LIMIT 1"), values);
    return query.next() ? query.value(0) : QVariant();
}

void renameRow(Connection& history, const BookedRow& row, const QString& to) {
    if (row.joins.isNull()) {
        history.run(QStringLiteral("UPDATE DayInfo SET ProjectName = ? WHERE rowid = ?"),
                    {to, row.id});
        return;
    }
    history.run(QStringLiteral("UPDATE DayInfo SET BreakTime = coalesce(BreakTime, 0) + ?, "
                               "TotalTime = coalesce(TotalTime, 0) + ? WHERE rowid = ?"),
                {row.pause, row.total, row.joins});
    history.run(QStringLiteral("DELETE FROM DayInfo WHERE rowid = ?"), {row.id});
}

} // namespace

void RenameProjectInHistory(const QString& from, const QString& to, const QString& number) {
    if (from == to)
        return;
    Connection history(DayHistoryPath(), LockWait::None);
    history.inTransaction([&] {
        // All are looked up before the first changes: rows that a day held twice stay two.
        QList<BookedRow> rows = readRows(history, from, number);
        for (BookedRow& row : rows)
            row.joins = rowToJoin(history, row, to);
        for (const BookedRow& row : rows)
            renameRow(history, row, to);
    });
}

} // namespace kelvrane
