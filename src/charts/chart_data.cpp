#include "charts/chart_data.h"

#include "history/day_history.h"
#include "platform/connection.h"
#include "platform/error.h"
#include "platform/texts.h"

#include <QSqlError>
#include <QVariant>

#include <algorithm>
#include <functional>
#include <limits>

namespace kelvrane {

namespace {

using EachRow = std::function<void(const QSqlQuery& row)>;

void read(const QString& sql, const QVariantList& values, const EachRow& each) {
    Connection connection(DayHistoryPath());
    QSqlQuery query = connection.select(sql, values);
    while (query.next())
        each(query);
    if (query.lastError().isValid())
        RaiseSql(query);
}

qint32 minutes(const QVariant& stored) {
    const qint64 whole = stored.toLongLong();
    if (whole < std::numeric_limits<qint32>::min() || whole > std::numeric_limits<qint32>::max())
        Raise(errors::Overflow);
    return static_cast<qint32>(whole);
}

qint32 workMinutes(const QVariant& total, const QVariant& pause) {
    return minutes(qint64(minutes(total)) - minutes(pause));
}

bool byName(const DayProjectTotal& left, const DayProjectTotal& right) {
    const int folded = left.Name.compare(right.Name, Qt::CaseInsensitive);
    return folded != 0 ? folded < 0 : left.Name < right.Name;
}

/// A null name is an empty one.
void addTotal(QList<DayProjectTotal>& totals, const DayProjectTotal& total) {
    const auto same = std::ranges::find(totals, total.Name, &DayProjectTotal::Name);
    if (same == totals.end()) {
        totals.append(total);
        return;
    }
    same->WorkMinutes = minutes(qint64(same->WorkMinutes) + total.WorkMinutes);
    same->BreakMinutes = minutes(qint64(same->BreakMinutes) + total.BreakMinutes);
}

QList<HistoryRow> readRows(const QString& condition, const QVariantList& values) {
    QList<HistoryRow> rows;
    read(QStringLiteral("SELECT Date, ProjectName, ProjectNumber, BreakTime, TotalTime "
                        "FROM DayInfo WHERE ") +
             condition + QStringLiteral(" ORDER BY rowid"),
         values, [&](const QSqlQuery& row) {
             rows.append({.Date = row.value(0).toString(),
                          .ProjectName = row.value(1).toString(),
                          .ProjectNumber = row.value(2).toString(),
                          .BreakMinutes = minutes(row.value(3)),
                          .TotalMinutes = minutes(row.value(4))});
         });
    return rows;
}

} // namespace

QList<DayProjectTotal> ReadProjectTotals(QDate from, QDate to) {
    QList<DayProjectTotal> totals;
    // The number comes from the row of the lowest key: that is what min() promises here.
    read(QStringLiteral("SELECT ProjectName, ProjectNumber, sum(BreakTime), sum(TotalTime), "
                        "min(rowid) FROM DayInfo WHERE Date BETWEEN ? AND ? GROUP BY ProjectName"),
         {StoredDateText(from), StoredDateText(to)}, [&](const QSqlQuery& row) {
             addTotal(totals, {.Name = row.value(0).toString(),
                               .Number = row.value(1).toString(),
                               .BreakMinutes = minutes(row.value(2)),
                               .WorkMinutes = workMinutes(row.value(3), row.value(2))});
         });
    std::ranges::sort(totals, byName);
    return totals;
}

QStringList ReadDates(QDate from, QDate to) {
    QStringList dates;
    read(QStringLiteral("SELECT DISTINCT Date FROM DayInfo WHERE Date BETWEEN ? AND ? "
                        "ORDER BY Date"),
         {StoredDateText(from), StoredDateText(to)},
         [&](const QSqlQuery& row) { dates.append(row.value(0).toString()); });
    return dates;
}

QList<HistoryRow> ReadRowsOfProject(const QString& name, QDate from, QDate to) {
    const QString named = name.isEmpty() ? QStringLiteral("coalesce(ProjectName, '') = ?")
                                         : QStringLiteral("ProjectName = ?");
    return readRows(
        named + QStringLiteral(" AND Date BETWEEN ? AND ?"),
        {name.isEmpty() ? QStringLiteral("") : name, StoredDateText(from), StoredDateText(to)});
}

QList<HistoryRow> ReadRowsOfDate(const QString& date) {
    return readRows(QStringLiteral("Date = ?"), {date});
}

} // namespace kelvrane
