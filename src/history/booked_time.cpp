#include "history/booked_time.h"

#include "frame/program_folder.h"
#include "platform/connection.h"
#include "platform/error.h"
#include "platform/texts.h"

#include <QScopeGuard>
#include <QVariant>

#include <cmath>

namespace kelvrane {

namespace {

BookedTime readTime(const BookedProject& project) {
    Connection history(InAppPath(QString::fromLatin1(files::DayHistory)));
    QSqlQuery& query = history.prepared(
        QStringLiteral("SELECT count(*), sum(coalesce(TotalTime, 0) - coalesce(BreakTime, 0)) "
                       "FROM DayInfo WHERE ProjectName = ? COLLATE BINARY") +
        (project.number.isEmpty() ? QString() : QStringLiteral(" AND ProjectNumber = ?")));
    const auto done = qScopeGuard([&query] { query.finish(); });
    query.bindValue(0, project.name);
    if (!project.number.isEmpty())
        query.bindValue(1, project.number);
    if (!query.exec() || !query.next())
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
