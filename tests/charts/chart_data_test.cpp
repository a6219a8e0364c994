#include "charts/chart_data.h"
#include "charts/chart_fixture.h"
#include "support/raised_error.h"

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class ChartDataTest : public ChartTest {
  protected:
    /// "name|number|work|break"
    static QStringList totals(const QString& from, const QString& to) {
        QStringList lines;
        for (const DayProjectTotal& total : ReadProjectTotals(QDate::fromString(from, Qt::ISODate),
                                                              QDate::fromString(to, Qt::ISODate)))
            lines.append(QStringLiteral("%1|%2|%3|%4")
                             .arg(total.Name, total.Number)
                             .arg(total.WorkMinutes)
                             .arg(total.BreakMinutes));
        return lines;
    }
};

TEST_F(ChartDataTest, EachProjectOfThePeriodIsSummed) {
    addDays();
    EXPECT_EQ(totals("2026-03-01", "2026-03-02"),
              (QStringList{"Alpha|N-Alpha|120|30", "Beta|N-Beta|105|15"}));
    EXPECT_EQ(totals("2026-02-27", "2026-03-01"),
              (QStringList{"Alpha|N-Alpha|60|30", "Beta|N-Beta|135|15"}));
    EXPECT_EQ(totals("2026-02-28", "2026-02-28"), QStringList());
}

TEST_F(ChartDataTest, NamesAreWhatTheyAre) {
    const QString date = "2026-03-02";
    for (const char* name : {"zeta", "Alpha", "O'Neil", "alpha", "x' OR '1'='1", "C#3/1/2026#"})
        addRow(date, name, 10, 1);
    EXPECT_EQ(
        totals(date, date),
        (QStringList{"Alpha|N-Alpha|9|1", "alpha|N-alpha|9|1", "C#3/1/2026#|N-C#3/1/2026#|9|1",
                     "O'Neil|N-O'Neil|9|1", "x' OR '1'='1|N-x' OR '1'='1|9|1", "zeta|N-zeta|9|1"}));
    const auto rows = ReadRowsOfProject("O'Neil", QDate(2026, 3, 2), QDate(2026, 3, 2));
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].TotalMinutes, 10);
}

TEST_F(ChartDataTest, TheNumberIsThatOfTheFirstRow) {
    addRow("2026-03-02", "Alpha", "later day", "10", "0");
    addRow("2026-03-01", "Alpha", "earlier day", "10", "0");
    EXPECT_EQ(totals("2026-03-01", "2026-03-02"), QStringList{"Alpha|later day|20|0"});
    EXPECT_EQ(totals("2026-03-01", "2026-03-01"), QStringList{"Alpha|earlier day|10|0"});
}

TEST_F(ChartDataTest, DamagedRowsDoNoHarm) {
    addRow("2026-03-02", "Alpha", "1", "NULL", "NULL");
    addRow("2026-03-02", "Alpha", "1", "'some'", "5");
    addRow("2026-03-02", QString(), QString(), "20", "5");
    addRow("2026-03-02", QStringLiteral(""), "2", "10", "0");
    EXPECT_EQ(totals("2026-03-02", "2026-03-02"), (QStringList{"||25|5", "Alpha|1|-5|5"}));
    const QDate day(2026, 3, 2);
    EXPECT_EQ(ReadRowsOfProject({}, day, day).size(), 2) << "no name, and an empty one";

    addRow("2026-03-02", "Beta", "1", "3000000000", "0");
    EXPECT_EQ(RaisedError([&] { ReadProjectTotals(day, day); }), errors::Overflow);
    EXPECT_EQ(RaisedError([] { ReadRowsOfDate("2026-03-02"); }), errors::Overflow);
}

} // namespace
} // namespace kelvrane::testing
