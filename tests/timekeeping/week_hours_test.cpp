#include "frame/globals.h"
#include "platform/connection.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/week_hours.h"

namespace kelvrane::testing {
namespace {

using WeekHours = WorkingDayTest;

TEST_F(WeekHours, EachNameHasItsOwnRowAndSum) {
    Connection history(path("DayInfo.mdb"));
    const struct {
        const char *date, *name;
        int total, pause;
    } rows[] = {
        {"2026-03-01", "Alpha", 600, 0}, // the week before
        {"2026-03-02", "Alpha", 70, 10}, {"2026-03-02", "ALPHA", 30, 0},
        {"2026-03-03", "Alpha", 90, 0},  {"2026-03-03", "ALPHA", 15, 0},
        {"2026-03-08", "Beta", 5, 0},    {"2026-03-09", "Beta", 600, 0},
    };
    for (const auto& row : rows)
        history.run("INSERT INTO DayInfo (Date, ProjectName, TotalTime, BreakTime) "
                    "VALUES (?, ?, ?, ?)",
                    {row.date, row.name, row.total, row.pause});
    StartOfWeek = "2"; // Monday, March 2
    TimeIncrements = "15 Minutes";
    SetLVWColumnHeaders();
    FillWeekView();
    QStringList shown;
    for (const WeekView::Row& row : Control().lvwWeekView.rows())
        shown.append(row.name + ": " + row.cells[0] + '|' + row.cells[1] + '|' + row.cells[6] +
                     " = " + row.cells.last());
    shown.sort();
    EXPECT_EQ(shown, (QStringList{"ALPHA: 0.5|0.25| = 0.75", "Alpha: 1|1.5| = 2.5",
                                  "Beta: ||< 0.25 = < 0.25"}));
}

} // namespace
} // namespace kelvrane::testing
