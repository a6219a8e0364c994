#include "frame/globals.h"
#include "history/booked_time.h"
#include "history/period_query.h"
#include "history/rename_project.h"
#include "platform/recordset.h"
#include "startup/database_schema.h"
#include "support/fakes.h"
#include "support/raised_error.h"

#include <QFile>

namespace kelvrane::testing {
namespace {

class History : public ProgramTest {
  protected:
    History() { CreateDayInfoDatabase(path("DayInfo.mdb")); } // today: March 2, 2026

    void add(QDate date, const QString& name, const QString& number, int total, int pause = 0) {
        Connection connection(path("DayInfo.mdb"));
        Recordset rows(connection, "DayInfo", Recordset::Optimistic);
        rows.addNew();
        rows.setValue("Date", date);
        rows.setValue("ProjectName", name);
        rows.setValue("ProjectNumber", number);
        rows.setValue("TotalTime", total);
        rows.setValue("BreakTime", pause);
        rows.update();
    }
    /// "date|name|number|total|break" of each row of a query.
    QStringList rowsOf(const BoundQuery& query) {
        Connection connection(path("DayInfo.mdb"));
        Recordset rows(connection, query);
        QStringList lines;
        for (; !rows.atEnd(); rows.moveNext())
            lines.append(QStringList{rows.text("Date"), rows.text("ProjectName"),
                                     rows.text("ProjectNumber"), rows.text("TotalTime"),
                                     rows.text("BreakTime")}
                             .join('|'));
        return lines;
    }
    QStringList all() { return rowsOf({"SELECT * FROM DayInfo", {}}); }

    const QDate today{2026, 3, 2};
};

TEST_F(History, QueriesTakeAnyNameAsItIs) {
    const QString names[] = {"O'Neil's site",         "a\"b",        "C#3/2/2026#", "50%_?",
                             "x; DROP TABLE DayInfo", "' OR '1'='1", "2024",        ""};
    for (const QString& name : names)
        add(today, name, "1", 60);
    add(today, "o'neil's site", "1", 30); // another project
    for (const QString& name : names) {
        const QStringList line{"3/2/2026|" + name + "|1|60|0"};
        EXPECT_EQ(rowsOf(DayProjectRows(today, name)), line);
        EXPECT_EQ(rowsOf(ProjectPeriodRows(name, today, today)), line);
        if (!name.isEmpty())
            EXPECT_EQ(ReadBookedTime({name})->workMinutes, 60) << name.toStdString();
    }
    EXPECT_EQ(all().size(), 9);
    Connection(path("DayInfo.mdb"))
        .execute("UPDATE DayInfo SET ProjectName = NULL WHERE "
                 "ProjectName = ''");
    EXPECT_EQ(rowsOf(DayProjectRows(today, "")).size(), 1);
}

TEST_F(History, QueriesKeepTheirDatesAndOrder) {
    add(today.addDays(1), "b", "1", 1);
    add(today, "b", "1", 2);
    add(today, "A", "1", 3);
    add(today.addDays(2), "a", "1", 4);
    EXPECT_EQ(rowsOf(PeriodRows(today, today.addDays(1))),
              (QStringList{"3/2/2026|A|1|3|0", "3/3/2026|b|1|1|0", "3/2/2026|b|1|2|0"}));
    EXPECT_EQ(rowsOf(ProjectPeriodRows("b", today, today.addDays(5))),
              (QStringList{"3/2/2026|b|1|2|0", "3/3/2026|b|1|1|0"}));
    EXPECT_EQ(rowsOf(DayRows(today)), (QStringList{"3/2/2026|b|1|2|0", "3/2/2026|A|1|3|0"}));
    EXPECT_TRUE(rowsOf(DayRows(QDate())).isEmpty());
}

TEST_F(History, ARenameTakesEveryRowOfThatNameAlong) {
    add({2025, 1, 6}, "It's old", "1", 60, 10);
    add({2025, 1, 7}, "it's old", "1", 60);
    add({2025, 1, 8}, "It's old", "2", 61);
    RenameProjectInHistory("It's old", "New");
    EXPECT_EQ(all(), (QStringList{"1/6/2025|New|1|60|10", "1/7/2025|it's old|1|60|0",
                                  "1/8/2025|New|2|61|0"}));
    RenameProjectInHistory("New", "Other", "2");
    RenameProjectInHistory("New", "Other", "2"); // again: nothing is left to do
    EXPECT_EQ(all(), (QStringList{"1/6/2025|New|1|60|10", "1/7/2025|it's old|1|60|0",
                                  "1/8/2025|Other|2|61|0"}));
    EXPECT_EQ(ReadBookedTime({"New"})->workMinutes, 50);
}

TEST_F(History, ARenameToANameOfTheSameDayKeepsTheSum) {
    add({2025, 1, 6}, "Old", "1", 60, 10);
    add({2025, 1, 6}, "New", "1", 30, 5);
    add({2025, 1, 7}, "Old", "1", 60);
    add({2025, 1, 7}, "New", "2", 30); // another project of that name
    add({2025, 1, 8}, "Old", "1", 7);  // a day that held it twice still does
    add({2025, 1, 8}, "Old", "1", 8);
    add(today, "Old", "1", 60);
    add(today, "New", "2", 30); // the roll-up of today keeps one row a name
    DayDate = today;
    RenameProjectInHistory("Old", "New");
    EXPECT_EQ(all(),
              (QStringList{"1/6/2025|New|1|90|15", "1/7/2025|New|1|60|0", "1/7/2025|New|2|30|0",
                           "1/8/2025|New|1|7|0", "1/8/2025|New|1|8|0", "3/2/2026|New|2|90|0"}));
}

TEST_F(History, ARenameThatCantBeWrittenChangesNothing) {
    add({2025, 1, 6}, "Old", "1", 60);
    add({2025, 1, 7}, "Old", "1", 60);
    {
        Connection other(path("DayInfo.mdb"));
        other.begin();
        EXPECT_EQ(RaisedError([] { RenameProjectInHistory("Old", "New"); }),
                  errors::DatabaseLocked);
        other.rollback();
    }
    // Fails at the second row: the first is taken back.
    Connection(path("DayInfo.mdb"))
        .execute("CREATE TRIGGER Trap BEFORE UPDATE ON DayInfo WHEN new.ID = 2 BEGIN SELECT "
                 "RAISE(FAIL, 'no'); END");
    EXPECT_EQ(RaisedError([] { RenameProjectInHistory("Old", "New"); }), errors::Sql);
    EXPECT_EQ(all(), (QStringList{"1/6/2025|Old|1|60|0", "1/7/2025|Old|1|60|0"}));
    QFile::remove(path("DayInfo.mdb"));
    EXPECT_EQ(RaisedError([] { RenameProjectInHistory("Old", "New"); }), errors::DatabaseOpen);
    EXPECT_FALSE(ReadBookedTime({"Old"}).has_value());
    EXPECT_FALSE(QFile::exists(path("DayInfo.mdb")));
}

TEST_F(History, HoursReadAsText) {
    EXPECT_EQ(HoursText(0), "0 hours");
    EXPECT_EQ(HoursText(60), "1 hour");
    EXPECT_EQ(HoursText(735), "12.25 hours");
    EXPECT_EQ(HoursText(100), "1.67 hours");
}

} // namespace
} // namespace kelvrane::testing
