// The leaf of a month: six weeks of seven days, Sunday first. Pure calendar arithmetic, for any
// screen on which a day is picked.
//
//     MonthGrid grid = BuildMonthGrid({.month = 2, .year = 2000}, today);
//     MarkDay(grid, DayCaption(29));
#pragma once

#include <QDate>
#include <QString>

#include <array>

namespace kelvrane {

inline constexpr int DaysInWeek = 7;
inline constexpr int GridDayCount = 42;
inline constexpr int FirstCalendarYear = 1899;
inline constexpr int LastCalendarYear = 2101;

struct MonthOfYear {
    int month = 1; ///< 1 to 12
    int year = FirstCalendarYear;

    bool operator==(const MonthOfYear&) const = default;
};

struct GridDay {
    QString caption; ///< the day, see DayCaption; "" outside the month
    bool visible = false;
    bool isToday = false;
    bool isMarked = false;

    bool operator==(const GridDay&) const = default;
};

struct MonthGrid {
    int FirstWeekday = 1; ///< of the first of the month; Sunday is 1
    std::array<GridDay, GridDayCount> days;
};

int DaysInMonth(MonthOfYear month);
/// "15"; a day below 10 stands behind two blanks.
QString DayCaption(int day);
/// "March 2026".
QString MonthTitle(MonthOfYear month);

MonthGrid BuildMonthGrid(MonthOfYear shown, QDate today);
/// Marks the visible day of that caption and no other.
void MarkDay(MonthGrid& grid, const QString& caption);

/// One month or year on (1) or back (-1); the same where the calendar ends.
MonthOfYear StepMonth(MonthOfYear from, int step);
MonthOfYear StepYear(MonthOfYear from, int step);

} // namespace kelvrane
