#include "history/booked_time.h"

#include "history/day_history.h"
#include "platform/connection.h"
#include "platform/error.h"
#include "platform/texts.h"

#include <QVariant>

#include <cmath>

namespace kelvrane {

namespace {

BookedTime readTime(const BookedProject& project) {
    Connection history(DayHistoryPath());
    QString sql = QStringLiteral("SELECT count(*), sum(coalesce(TotalTime, 0) - "
                                 "coalesce(BreakTime, 0)) FROM DayInfo WHERE ProjectName = ? "
                                 "COLLATE BINARY");
    QVariantList values{project.name};
    if (!project.number.isEmpty()) {
        sql += QStringLiteral(" AND ProjectNumber = ?");
        values.append(project.number);
    }
    QSqlQuery query = history.select(sql, values);
    if (!query.next())
        RaiseSql(query);
    return {query.value(0).toInt(), std::llround(query.value(1).toDouble())};
}

} // namespace

std::optional<BookedTime> ReadBookedTime(const BookedProject& project) {
    try {
        return readTime(project);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

QString HoursText(qint64 minutes) {
    const double hours = std::round(static_cast<double>(minutes) * 100 / 60) / 100;
    return DoubleText(hours) + (hours == 1 ? QStringLiteral(" hour") : QStringLiteral(" hours"));
}

} // namespace kelvrane
