#include "calendar/month_grid.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kelvrane;

TEST(MonthGrid, MonthsHaveTheirDaysAndBeginOnTheirWeekday) {
    const struct {
        MonthOfYear month;
        int days;
        int firstWeekday; ///< Sunday is 1
    } rows[] = {
        {{.month = 2, .year = 1900}, 28, 5}, {{.month = 2, .year = 2000}, 29, 3},
        {{.month = 2, .year = 2100}, 28, 2}, {{.month = 2, .year = 2024}, 29, 5},
        {{.month = 4, .year = 2026}, 30, 4}, {{.month = 3, .year = 2026}, 31, 1},
        {{.month = 8, .year = 2026}, 31, 7}, // reaches the sixth week
        {{.month = 1, .year = 1899}, 31, 1}, {{.month = 12, .year = 2101}, 31, 5},
    };
    for (const auto& row : rows) {
        const MonthGrid grid = BuildMonthGrid(row.month, {});
        const auto shown = std::ranges::count(grid.days, true, &GridDay::visible);
        EXPECT_EQ(shown, row.days) << MonthTitle(row.month).toStdString();
        EXPECT_EQ(grid.FirstWeekday, row.firstWeekday) << MonthTitle(row.month).toStdString();
        const int first = row.firstWeekday - 1;
        EXPECT_EQ(grid.days[first].caption, "  1");
        EXPECT_EQ(grid.days[first + 8].caption, "  9");
        EXPECT_EQ(grid.days[first + 9].caption, "10");
        EXPECT_EQ(grid.days[first + row.days - 1].caption, QString::number(row.days));
        if (first > 0) {
            EXPECT_FALSE(grid.days[first - 1].visible);
        }
    }
}

TEST(MonthGrid, TodayIsColouredInItsMonthOnlyAndOneDayIsMarked) {
    const QDate today(2026, 3, 2);
    MonthGrid grid = BuildMonthGrid({.month = 3, .year = 2026}, today);
    EXPECT_TRUE(grid.days[1].isToday); // the month begins on a Sunday
    EXPECT_EQ(std::ranges::count(grid.days, true, &GridDay::isToday), 1);
    for (const MonthOfYear other : {MonthOfYear{3, 2025}, MonthOfYear{4, 2026}})
        EXPECT_EQ(std::ranges::count(BuildMonthGrid(other, today).days, true, &GridDay::isToday),
                  0);

    MarkDay(grid, DayCaption(2));
    MarkDay(grid, DayCaption(31));
    EXPECT_TRUE(grid.days[30].isMarked);
    MarkDay(grid, {}); // hidden labels have no caption
    EXPECT_EQ(std::ranges::count(grid.days, true, &GridDay::isMarked), 0);
}

TEST(MonthGrid, StepsCrossTheYearAndStopAtTheEnds) {
    using Month = MonthOfYear;
    EXPECT_EQ(StepMonth({3, 2026}, -1), (Month{2, 2026}));
    EXPECT_EQ(StepMonth({1, 2026}, -1), (Month{12, 2025}));
    EXPECT_EQ(StepMonth({12, 2026}, 1), (Month{1, 2027}));
    EXPECT_EQ(StepMonth({1, 1899}, -1), (Month{1, 1899}));
    EXPECT_EQ(StepMonth({12, 2101}, 1), (Month{12, 2101}));
    EXPECT_EQ(StepYear({5, 1899}, -1), (Month{5, 1899}));
    EXPECT_EQ(StepYear({5, 2101}, 1), (Month{5, 2101}));
    EXPECT_EQ(StepYear({5, 2101}, -1), (Month{5, 2100}));
}
