#include "timekeeping/control_layout.h"
#include "timekeeping/control_model.h"

#include <gtest/gtest.h>

using namespace kelvrane;

TEST(ControlLayout, TheBarKeepsItsDistances) {
    struct {
        double top, height, expected;
    } const rows[] = {
        {5335, 7230, 5335}, // the places after the first growth
        {5335, 5895, 4395}, {0, 5895, 400},   {399, 5895, 400},
        {9000, 5895, 4395}, {300, 1000, 400}, // too low a window: the upper bound holds
    };
    for (const auto& row : rows)
        EXPECT_EQ(ClampWeekViewBar(row.top, row.height), row.expected) << row.top;
}

TEST(ControlLayout, TheWindowGrowsForTheWeekViewAndGivesItBack) {
    ControlLayout layout;
    EXPECT_FALSE(GrowForWeekView(layout, false));
    EXPECT_TRUE(GrowForWeekView(layout, true));
    EXPECT_EQ(layout.Height, 5895 + 1335);
    EXPECT_FALSE(GrowForWeekView(layout, true)) << "grows once";
    layout.Height += 200; // the user sized it in between
    EXPECT_TRUE(GrowForWeekView(layout, false));
    EXPECT_EQ(layout.Height, 5895 + 200);
}

TEST(ControlLayout, AHighWindowStaysAsItIs) {
    ControlLayout layout;
    layout.Height = 7001;
    EXPECT_FALSE(GrowForWeekView(layout, true));
    EXPECT_FALSE(GrowForWeekView(layout, false));
    EXPECT_EQ(layout.Height, 7001);
    layout.Height = 7000;
    EXPECT_TRUE(GrowForWeekView(layout, true));
}

TEST(ControlLayout, RunsThatEndWithTheWeekViewShowingDontLetTheWindowCreepUp) {
    ControlLayout layout;
    for (int run = 0; run < 5; ++run) {
        const double height = layout.Height;
        layout = {};
        layout.Height = height;
        AssumeWeekViewGrown(layout, run > 0);
        if (run > 0)
            GrowForWeekView(layout, false);
        GrowForWeekView(layout, true);
    }
    EXPECT_EQ(layout.Height, 5895 + 1335);
    layout.Height = 20000;
    AssumeWeekViewGrown(layout, true);
    EXPECT_FALSE(layout.WeekViewGrown);
}

TEST(ControlLayout, SizingTheWindowKeepsTheWeekViewsHeight) {
    ControlLayout layout;
    GrowForWeekView(layout, true);
    MoveWeekViewBar(layout, 5000, layout.Height);
    EXPECT_EQ(layout.WeekViewSize, 2230);
    ResizeControlWindow(layout, 12000, 9230, true);
    EXPECT_EQ(layout.SplitterTop, 7000);
    ResizeControlWindow(layout, 12000, 8000, false);
    EXPECT_EQ(layout.SplitterTop, 7000) << "hidden, it keeps its place";
    EXPECT_EQ(layout.Height, 8000);
}

TEST(ControlLayout, AMaximizedWindowShowsTheWeekViewAtItsHeight) {
    ControlLayout layout;
    GrowForWeekView(layout, true); // 7230 high, the bar at 5335
    EXPECT_EQ(WeekViewBarTop(layout, 7230), 5335);
    EXPECT_EQ(WeekViewBarTop(layout, 15000), 15000 - (7230 - 5335));
    MoveWeekViewBar(layout, 12000, 15000);
    EXPECT_EQ(layout.WeekViewSize, 3000);
    EXPECT_EQ(layout.SplitterTop, 7230 - 3000) << "as it will stand in the window's own size";
    EXPECT_EQ(WeekViewBarTop(layout, 15000), 12000);
    MoveWeekViewBar(layout, 100, 15000);
    EXPECT_EQ(layout.SplitterTop, 400);
}

TEST(ControlLayout, PercentsAndPixels) {
    EXPECT_EQ(FirstOfTwo(50, 301), 151);
    EXPECT_EQ(FirstOfTwo(-20, 300), 0);
    EXPECT_EQ(FirstOfTwo(32767, 300), 300);
    EXPECT_EQ(PercentOfTwo(75, 300), 25);
    EXPECT_EQ(PercentOfTwo(100, 0), 0);
    for (int first = 0; first <= 641; ++first)
        EXPECT_EQ(FirstOfTwo(PercentOfTwo(first, 641), 641), first) << "a bar doesn't creep";
}
