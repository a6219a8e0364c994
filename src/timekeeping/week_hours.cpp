#include "timekeeping/week_hours.h"

#include "frame/globals.h"
#include "history/day_history.h"
#include "history/period_query.h"
#include "platform/ports.h"
#include "platform/recordset.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timekeeping/control_model.h"
#include "timevalues/time_values.h"

#include <QHash>

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

/// What the week holds of one project.
struct BookedWeek {
    struct Entry {
        qint64 day; ///< since the week's first
        int minutes;
    };
    QString project;
    QList<Entry> entries;
};

QList<BookedWeek> readWeek(Connection& history, QDate start) {
    QList<BookedWeek> booked;
    QHash<QString, qsizetype> places; // names in other capitals may lie between the rows of one
    Recordset rows(history, PeriodRows(start, start.addDays(daysInWeek - 1)));
    for (; !rows.atEnd(); rows.moveNext()) {
        const QString name = rows.text(QStringLiteral("ProjectName"));
        const qsizetype place = places.value(name, booked.size());
        if (place == booked.size()) {
            places.insert(name, place);
            booked.append({name, {}});
        }
        booked[place].entries.append({start.daysTo(rows.value(QStringLiteral("Date")).toDate()),
                                      rows.value(QStringLiteral("TotalTime")).toInt() -
                                          rows.value(QStringLiteral("BreakTime")).toInt()});
    }
    return booked;
}

WeekView::Row rowOf(const BookedWeek& week) {
    WeekView::Row row;
    row.name = week.project;
    float sum = 0;
    for (const auto& [day, minutes] : week.entries) {
        const double hours = RoundToIncrement(float(minutes), TimeIncrements);
        sum += float(hours);
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
        // The tick fills the view: a history that is locked leaves it as it is.
        Connection connection(DayHistoryPath(), LockWait::None);
        if (Recordset(connection, QStringLiteral("DayInfo")).isEmpty())
            return;
        QList<WeekView::Row> rows;
        SkipErrors each(QStringLiteral("FillWeekView"));
        // Every name is listed; times that can't be counted leave their row without cells.
        for (const BookedWeek& week : readWeek(connection, view.WeekStartDate))
            if (!each([&] { rows.append(rowOf(week)); }))
                rows.append({.name = week.project});
        view.setRows(rows);
    });
}

} // namespace kelvrane
