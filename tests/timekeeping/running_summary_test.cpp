#include "frame/globals.h"
#include "support/fakes.h"
#include "timekeeping/control_model.h"
#include "timekeeping/running_summary.h"

using namespace kelvrane;
using namespace kelvrane::testing;

namespace {
class RunningSummaryTest : public ProgramTest {
  protected:
    RunningSummaryTest() {
        DayEntries = {{.ProjectName = "Alpha & Co",
                       .ProjectNumber = "1",
                       .StartTime = "9:05 AM",
                       .StopTime = {},
                       .BreakTime = "5 Minutes",
                       .TotalTime = "1 Hours 5 Minutes"}};
        DayEntries.prepend({.ProjectName = "Beta",
                            .ProjectNumber = "B",
                            .StartTime = "3:00 AM",
                            .StopTime = "9:00 AM",
                            .BreakTime = "0 Minutes",
                            .TotalTime = "6 Hours 0 Minutes"});
        CurrentEntryIndex = 1;
        KeyedItems& fields = Control().smuiProjectStatus;
        fields.setValue("PROJECT_NAME", "Alpha & Co");
        fields.setValue("START TIME", "9:05 AM");
        fields.setValue("TOTAL TIME", "1 Hours 5 Minutes");
    }
};
} // namespace

TEST_F(RunningSummaryTest, FollowsTheDay) {
    RunningSummary expected{DayState::Running, "Running", "Alpha & Co",
                            "1 h 05 min",      "9:05 AM", "7 h 00 min"};
    EXPECT_EQ(CurrentSummary(), expected);
    OnBreak = 1;
    expected.state = DayState::OnBreak;
    expected.word = "On Break";
    EXPECT_EQ(CurrentSummary(), expected);
    DayEntries[1].StopTime = "10:10 AM"; // a stop leaves OnBreak as it was
    EXPECT_EQ(CurrentSummary(),
              (RunningSummary{DayState::Stopped, "Stopped", {}, {}, {}, "7 h 00 min"}));
}

TEST_F(RunningSummaryTest, ShortensSpans) {
    struct {
        const char *span, *expected;
    } const rows[] = {
        {"0 Minutes", "0 min"},
        {"59 Minutes", "59 min"},
        {"1 Hours 0 Minutes", "1 h 00 min"},
        {"12 Hours 7 Minutes", "12 h 07 min"},
        {"-1 Hours -5 Minutes", "-1 h 05 min"},
        {"", ""},
        {"soon", "soon"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ShortSpanText(row.span), row.expected) << row.span;
}
