#include "frame/globals.h"
#include "frame/program_folder.h"
#include "frame/trace.h"
#include "platform/recordset.h"
#include "startup/database_schema.h"
#include "startup/first_run_data.h"
#include "support/fakes.h"

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

using namespace Qt::StringLiterals;

class FirstRunData : public ProgramTest {
  protected:
    FirstRunData() {
        clock.set(u"2026-03-02 09:00"_s);
        CreateDayInfoDatabase(dayInfo);
        CreateProjectDatabase(projects);
        disk.createFolder(path(u"Starter Databases"_s));
        CreateStarterDayInfoDatabase(starterDays);
        CreateStarterProjectDatabase(path(u"Starter Databases/kelvrane.mdb"_s));
    }
    QStringList dates() {
        Connection connection(dayInfo);
        QStringList list;
        Recordset rows(connection, u"SELECT * FROM DayInfo ORDER BY Date"_s);
        for (; !rows.atEnd(); rows.moveNext())
            list.append(rows.text(u"Date"_s));
        return list;
    }
    void expectNothingChanged() {
        EXPECT_EQ(disk.read(dayInfo), emptyDays);
        EXPECT_EQ(disk.read(projects), emptyProjects);
    }
    void remember() {
        emptyDays = disk.read(dayInfo);
        emptyProjects = disk.read(projects);
    }

    const QString dayInfo = path(u"DayInfo.mdb"_s);
    const QString projects = path(u"kelvrane.mdb"_s);
    const QString starterDays = path(u"Starter Databases/dayinfo.mdb"_s);
    QByteArray emptyDays;
    QByteArray emptyProjects;
};

TEST_F(FirstRunData, OnYesTheStarterWeekBecomesTheLastSevenDays) {
    remember();
    DebugMode = true;
    dialogs.expect(u"Kelvrane can create example fictitious data to help get acquainted with "
                   "kelvrane.  Would you like to generate this data?"_s,
                   BoxAnswer::Yes);
    dialogs.expect(u"Data generated successfully.  Would you like more information on the data "
                   "which was generated?"_s,
                   BoxAnswer::Yes);
    InitializeDayInfo();
    EXPECT_EQ(dates(), (QStringList{u"2/23/2026"_s, u"2/24/2026"_s, u"2/25/2026"_s, u"2/26/2026"_s,
                                    u"2/27/2026"_s, u"2/28/2026"_s, u"3/1/2026"_s}));
    EXPECT_EQ(disk.read(dayInfo + u".orig"_s), emptyDays);
    EXPECT_EQ(disk.read(projects + u".orig"_s), emptyProjects);
    EXPECT_NE(disk.read(projects), emptyProjects);
    EXPECT_EQ(
        Trace().lines(),
        (QStringList{u"Setting DB Connection String"_s, u"Opening Database"_s, u"Database Opened"_s,
                     u"Opening Recordset"_s, u"Recordset Opened"_s, u"Recordcount = 0"_s}));
    ASSERT_EQ(dialogs.shown.size(), 2);
    EXPECT_EQ(dialogs.shown[0].title, "Generate initial data?");
    EXPECT_EQ(dialogs.shown[0].icon, BoxIcon::Question);
    EXPECT_EQ(dialogs.shown[1].title, "Need more information?");
    EXPECT_EQ(dialogs.shown[1].buttons, BoxButtons::YesNo);

    InitializeDayInfo(); // a history with rows: no question
    EXPECT_EQ(dialogs.shown.size(), 2);
}

TEST_F(FirstRunData, OnNoNothingChangesAndTheQuestionComesAgain) {
    remember();
    for (int start = 1; start <= 2; ++start) {
        dialogs.expect(u"example fictitious data"_s, BoxAnswer::No);
        InitializeDayInfo();
        EXPECT_EQ(dialogs.shown.size(), start);
    }
    expectNothingChanged();
}

TEST_F(FirstRunData, WhatIsInTheWayLeavesEverythingAsItIs) {
    remember();
    const QString missing[] = {starterDays, path(u"Starter Databases/kelvrane.mdb"_s)};
    for (const QString& name : missing) {
        disk.move(name, name + u".gone"_s);
        GenerateExampleData();
        disk.move(name + u".gone"_s, name);
        expectNothingChanged();
    }
    for (const QString& name : QStringList{dayInfo + u".orig"_s, projects + u".orig"_s}) {
        disk.create(name, "from before");
        GenerateExampleData();
        EXPECT_EQ(disk.read(name), "from before");
        disk.remove(name, false);
        expectNothingChanged();
        EXPECT_FALSE(disk.exists(dayInfo + u".orig"_s) || disk.exists(projects + u".orig"_s));
    }
    disk.create(dayInfo, "not a database");
    InitializeDayInfo();
    disk.remove(dayInfo, false);
    InitializeDayInfo();
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(FirstRunData, OnlyTheFirstRowOfADateMoves) {
    {
        Connection connection(starterDays);
        connection.execute(
            u"INSERT INTO DayInfo (Date, ProjectName) VALUES (#1/3/2000#, 'second')"_s);
    }
    dialogs.expect(u"successfully"_s, BoxAnswer::No);
    GenerateExampleData();
    EXPECT_EQ(dates().size(), 8);
    EXPECT_EQ(dates().first(), "1/3/2000");
}

} // namespace
} // namespace kelvrane::testing
