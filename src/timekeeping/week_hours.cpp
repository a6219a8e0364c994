#include "timekeeping/week_hours.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "history/day_history.h"
#include "platform/ports.h"
#include "platform/recordset.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/control_model.h"
#include "timevalues/time_values.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int daysInWeek = 7;
constexpr const char* dayNames[daysInWeek] = {"Sun", "Mon", "Tues", "Wed", "Thur", "Fri", "Sat"};

/// Sunday is 1.
int weekdayOf(QDate date) {
    return date.dayOfWeek() % daysInWeek + 1;
}

/// Work below the increment shows as a bound and not as nothing.
QString belowIncrement() {
    return QStringLiteral("< ") + DoubleText(ToMinutes(TimeIncrements) / 60.0);
}

WeekView::Row readRow(Connection& connection, const QString& name, QDate start) {
    WeekView::Row row;
    row.name = name;
    Recordset records(connection, ProjectPeriodQuery(name, start, start.addDays(daysInWeek - 1)));
    float sum = 0;
    for (; !records.atEnd(); records.moveNext()) {
        const int minutes = records.value(QStringLiteral("TotalTime")).toInt() -
                            records.value(QStringLiteral("BreakTime")).toInt();
        const double hours = RoundToIncrement(float(minutes), TimeIncrements);
        sum += float(hours);
        const qint64 day = start.daysTo(records.value(QStringLiteral("Date")).toDate());
        if (day >= 0 && day < daysInWeek)
            row.cells[day] = hours == 0 ? belowIncrement() : DoubleText(hours);
    }
    row.cells.last() = sum == 0 ? belowIncrement() : SingleText(sum);
    return row;
}

} // namespace

void CalcLVWStartDate() {
    WeekView& view = Control().lvwWeekView;
    const QDate today = ports.clock->today();
    const Int16 firstDay = ToInt16(StartOfWeek);
    for (int back = 0; back < daysInWeek; ++back)
        if (weekdayOf(today.addDays(-back)) == firstDay)
            view.WeekStartDate = today.addDays(-back);
    view.WeekEndDate = view.WeekStartDate.addDays(daysInWeek);
}

void SetLVWColumnHeaders() {
    CalcLVWStartDate();
    WeekView& view = Control().lvwWeekView;
    const int firstDay = ToInt16(StartOfWeek);
    QStringList names;
    QList<int> daysOfMonth;
    for (int day = 0; day < daysInWeek; ++day) {
        const int weekday = Modulo(day + firstDay - 1, daysInWeek);
        names.append(QString::fromLatin1(dayNames[std::max(weekday, 0)]));
        daysOfMonth.append(view.WeekStartDate.addDays(day).day());
    }
    view.setHeaders(names, daysOfMonth);
    emit Control().LayoutChanged();
}

void FillWeekView() {
    SkipErrors guard(QStringLiteral("FillWeekView"));
    guard([] {
        WeekView& view = Control().lvwWeekView;
        Connection connection(InAppPath(QString::fromLatin1(files::DayHistory)));
        if (Recordset(connection, QStringLiteral("DayInfo")).isEmpty())
            return;
        const QDate start = view.WeekStartDate;
        QStringList names;
        Recordset week(connection, PeriodQuery(start, start.addDays(daysInWeek - 1)));
        for (; !week.atEnd(); week.moveNext()) {
            const QString name = week.text(QStringLiteral("ProjectName"));
            if (names.isEmpty() || names.last() != name)
                names.append(name);
        }
        QList<WeekView::Row> rows;
        SkipErrors each(QStringLiteral("FillWeekView"));
        // Every name is listed; one that breaks its query ends the filling of cells there.
        each([&] {
            for (const QString& name : names)
                rows.append(readRow(connection, name, start));
        });
        for (const QString& name : names.mid(rows.size()))
            rows.append({.name = name});
        view.setRows(rows);
    });
}

} // namespace kelvrane
