#include "history/period_query.h"

namespace kelvrane {

namespace {

/// An index on the name serves any name but the empty one, which a null stands for too.
QString hasName(const QString& name) {
    return name.isEmpty() ? QStringLiteral("coalesce(ProjectName, '') = ?")
                          : QStringLiteral("ProjectName = ? COLLATE BINARY");
}

} // namespace

BoundQuery PeriodRows(QDate from, QDate to) {
    return {QStringLiteral("SELECT * FROM DayInfo WHERE Date BETWEEN ? AND ? ORDER BY ProjectName"),
            {from, to}};
}

BoundQuery ProjectPeriodRows(const QString& name, QDate from, QDate to) {
    return {QStringLiteral("SELECT * FROM DayInfo WHERE ") + hasName(name) +
                QStringLiteral(" AND Date BETWEEN ? AND ? ORDER BY Date"),
            {name, from, to}};
}

BoundQuery DayRows(QDate date) {
    return {QStringLiteral("SELECT * FROM DayInfo WHERE Date = ?"), {date}};
}

BoundQuery DayProjectRows(QDate date, const QString& name) {
    return {QStringLiteral("SELECT * FROM DayInfo WHERE Date = ? AND ") + hasName(name),
            {date, name}};
}

} // namespace kelvrane
