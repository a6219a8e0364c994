#include "calendar/month_grid.h"

#include <QLocale>

namespace kelvrane {

namespace {
constexpr int monthsInYear = 12;
} // namespace

int DaysInMonth(MonthOfYear month) {
    return QDate(month.year, month.month, 1).daysInMonth();
}

QString DayCaption(int day) {
    const QString number = QString::number(day);
    return day < 10 ? QStringLiteral("  ") + number : number;
}

QString MonthTitle(MonthOfYear month) {
    return QLocale::c().monthName(month.month) + QLatin1Char(' ') + QString::number(month.year);
}

MonthGrid BuildMonthGrid(MonthOfYear shown, QDate today) {
    MonthGrid grid;
    grid.FirstWeekday = QDate(shown.year, shown.month, 1).dayOfWeek() % DaysInWeek + 1;
    const bool isThisMonth = today.year() == shown.year && today.month() == shown.month;
    const int last = DaysInMonth(shown);
    for (int day = 1; day <= last; ++day)
        grid.days[grid.FirstWeekday + day - 2] = {.caption = DayCaption(day),
                                                  .visible = true,
                                                  .isToday = isThisMonth && day == today.day()};
    return grid;
}

void MarkDay(MonthGrid& grid, const QString& caption) {
    for (GridDay& day : grid.days)
        day.isMarked = day.visible && day.caption == caption;
}

MonthOfYear StepMonth(MonthOfYear from, int step) {
    const int month = from.month + step;
    if (month >= 1 && month <= monthsInYear)
        return {.month = month, .year = from.year};
    const MonthOfYear stepped = StepYear(from, step);
    if (stepped == from)
        return from;
    return {.month = step < 0 ? monthsInYear : 1, .year = stepped.year};
}

MonthOfYear StepYear(MonthOfYear from, int step) {
    const int year = from.year + step;
    const bool beyond = step < 0 ? year < FirstCalendarYear : year > LastCalendarYear;
    return beyond ? from : MonthOfYear{.month = from.month, .year = year};
}

} // namespace kelvrane
