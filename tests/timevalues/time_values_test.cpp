#include "frame/globals.h"
#include "platform/texts.h"
#include "support/fakes.h"
#include "timevalues/counter.h"
#include "timevalues/time_values.h"

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

/// The error number that a call raises; 0 for none.
template <typename Call>
int raised(Call&& call) {
    try {
        call();
    } catch (const RuntimeError& error) {
        return error.number;
    }
    return 0;
}

TEST(ToMinutes, ReadsClockAndSpanTexts) {
    const struct {
        const char* text;
        int minutes;
    } rows[] = {
        {"12:00 AM", 0},    {"12:30 PM", 750},
        {"1:00 PM", 780},   {"11:59 PM", 1439},
        {"12:00 PM", 720},  {"9:05:30 AM", 545},
        {"13:05:30", 785},  {"9:0 AM", 540},
        {"0 Minutes", 0},   {"1 Hours 5 Minutes", 65},
        {"1 Hour", 60},     {"2 Hours", 120},
        {"-5 Minutes", -5}, {"-1 Hours -5 Minutes", -65},
        {"1.5 Hours", 90},  {"15 Minutes", 15},
        {"1:00 pm", 60},    {"0:0.5", 0},
        {"0:1.5", 2},       {"546 Hours 7 Minutes", 32767},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ToMinutes(QString::fromLatin1(row.text)), row.minutes) << row.text;
}

TEST(ToMinutes, RaisesForWhatIsNeither) {
    const struct {
        const char* text;
        int number;
    } rows[] = {
        {"", errors::Subscript},
        {"930", errors::Subscript},
        {"1 Minute", errors::TypeMismatch},
        {"nine:thirty", errors::TypeMismatch},
        {"546 Hours 8 Minutes", errors::Overflow},
        {"x Minutes", errors::TypeMismatch},
    };
    for (const auto& row : rows)
        EXPECT_EQ(raised([&] { ToMinutes(QString::fromLatin1(row.text)); }), row.number)
            << row.text;
}

TEST(MinutesToText, WritesWhatToMinutesReads) {
    EXPECT_EQ(MinutesToText(0), "0 Minutes");
    EXPECT_EQ(MinutesToText(59), "59 Minutes");
    EXPECT_EQ(MinutesToText(60), "1 Hours 0 Minutes");
    EXPECT_EQ(MinutesToText(-5), "-5 Minutes");
    EXPECT_EQ(MinutesToText(-65), "-1 Hours -5 Minutes");
    for (int minutes = -2000; minutes < 32767; minutes += 61)
        EXPECT_EQ(ToMinutes(MinutesToText(minutes)), minutes);
}

TEST(IsValidClockText, IsTrueForABadTime) {
    for (const char* good : {"9:05 AM", "12:00 pm", "99:59 AM"})
        EXPECT_FALSE(IsValidClockText(QString::fromLatin1(good))) << good;
    for (const char* bad :
         {"", "9:05", "9:5 AM", "9:60 AM", "x:05 AM", "9:xx AM", "9:05:30 AM", "9 AM", "AM", ":"})
        EXPECT_TRUE(IsValidClockText(QString::fromLatin1(bad))) << bad;
}

TEST(PathOfFile, CutsBehindTheLastSeparator) {
    const struct {
        const char* path;
        const char* folder;
    } rows[] = {
        {"C:\\data\\a.htm", "C:\\data\\"},
        {"C:\\a.htm", "C:\\"},
        {"/home/x/a.htm", "/home/x/"},
        {"/a.htm", "/"},
        {"a.htm", ""},
        {"/a/b.htm", "/a/"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PathOfFile(QString::fromLatin1(row.path)), row.folder) << row.path;
}

TEST(ReformatChartValueText, TurnsHoursIntoASpan) {
    globals = {};
    ChartIndex = 0;
    EXPECT_EQ(ReformatChartValueText("Work, Alpha Value: 1.5"),
              "Work, Alpha  Value: 1 Hours 30 Minutes");
    ChartIndex = 14;
    EXPECT_EQ(ReformatChartValueText("Alpha Value: 0.25 (12%)"), "Alpha Value: 15 Minutes (12%)");
    EXPECT_EQ(raised([] { ReformatChartValueText("Alpha (12%) Value: 1"); }), errors::BadArgument);
    for (const int percent : {2, 6, 9, 13}) {
        ChartIndex = percent;
        EXPECT_EQ(ReformatChartValueText("Work, Alpha Value: 1.5"), QString());
    }
    globals = {};
}

TEST(RoundToIncrement, KeepsItsBounds) {
    const struct {
        float minutes;
        const char* increment;
        double hours;
    } rows[] = {
        {15, "15 Minutes", 0.25},   {52, "15 Minutes", 1},    {50, "15 Minutes", 0.75},
        {7.5F, "15 Minutes", 0.25}, {7, "15 Minutes", 0},     {10, "15 Minutes", 0.25},
        {90, "1 Hour", 2},          {89, "1 Hour", 1},        {100, "30 Minutes", 1.5},
        {107, "30 Minutes", 2},     {100, "None", 1.67},      {-30, "15 Minutes", 1},
        {100, "10 Minutes", 0},     {1500, "15 Minutes", 25},
    };
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(RoundToIncrement(row.minutes, QString::fromLatin1(row.increment)),
                         row.hours)
            << row.minutes << " at " << row.increment;
}

TEST(StepDate, GoesOneDayByTheSign) {
    const QDate date(2026, 2, 28);
    EXPECT_EQ(StepDate(date, 5), "3/1/2026");
    EXPECT_EQ(StepDate(date, -1), "2/27/2026");
    EXPECT_EQ(StepDate(date, 0), "2/28/2026");
}

TEST(Counter, RaisesMinuteOnceASixthTickAndBeforeTheHour) {
    testing::FakeTimer timer;
    timer.setInterval(cTimer::designInterval);
    cTimer counter(&timer);
    int minutes = 0;
    int seenAtTheHour = 0;
    QObject::connect(&counter, &cTimer::Minute, [&] {
        ++minutes;
        seenAtTheHour = counter.TotalHours() * 60 + counter.TotalMinutes();
    });
    counter.StartCounting();
    for (int tick = 0; tick < 5; ++tick)
        timer.fire();
    counter.ResetTimer(); // the seconds stay: the first minute is short
    timer.fire();
    EXPECT_EQ(minutes, 1);
    counter.SetTimerMinuteOffset(59);
    for (int tick = 0; tick < 6; ++tick)
        timer.fire();
    EXPECT_EQ(seenAtTheHour, 60);
    EXPECT_EQ(counter.TotalHours(), 1);
    EXPECT_EQ(counter.TotalMinutes(), 0);
    counter.StopCounting();
    EXPECT_FALSE(timer.enabled);
}

} // namespace
} // namespace kelvrane
