// The queries on the history's table DayInfo by date and by project. Names and dates are bound, so
// a project may have any name; names compare byte for byte. A row without a name has the name "".
//
//     Recordset rows(history, ProjectPeriodRows("O'Neil's site", monday, monday.addDays(6)));
#pragma once

#include "platform/query_text.h"

#include <QDate>
#include <QString>

namespace kelvrane {

/// From both dates and all between, by name; the rows of one name in the order of their keys.
BoundQuery PeriodRows(QDate from, QDate to);
/// The same for one project, by date.
BoundQuery ProjectPeriodRows(const QString& name, QDate from, QDate to);
/// In the order of their keys.
BoundQuery DayRows(QDate date);
BoundQuery DayProjectRows(QDate date, const QString& name);

} // namespace kelvrane
