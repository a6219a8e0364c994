#include "calendar/calendar_fixture.h"
#include "history/roll_up.h"
#include "timekeeping/new_time.h"
#include "timevalues/day_file.h"

#include <QFile>

#include <algorithm>

namespace kelvrane::testing {
namespace {

class DayCalendarTest : public CalendarTest {
  protected:
    void load() { LoadDayInfo(); }
    static bool panelShown() { return Calendar().isPanelShown(); }
    static int shownDays() {
        return int(std::ranges::count(Calendar().grid().days, true, &GridDay::visible));
    }
    static QString markedDay() {
        for (const GridDay& day : Calendar().grid().days)
            if (day.isMarked)
                return day.caption;
        return {};
    }
    /// Writes an hour of work into the panel's first group and leaves for another day.
    static void giveGroupAnHour(const char* workKey) {
        set(workKey, QStringLiteral("1 Hours 0 Minutes"));
        clickDay(2);
    }
};

TEST_F(DayCalendarTest, OpensOnTodayWithNoDayOnThePanel) {
    addRow("3/2/2026", "Alpha", 60, 0);
    load();
    EXPECT_TRUE(DayCalendarOpen);
    EXPECT_EQ(title(), "March 2026");
    EXPECT_EQ(markedDay(), "  2");
    EXPECT_FALSE(panelShown());
    EXPECT_EQ(Calendar().DisplayedDate, "");
    const QStringList years = Calendar().controls.item("YearList").choices;
    EXPECT_EQ(years.size(), 203);
    EXPECT_EQ(years.first() + years.last(), "18992101");

    clickDay(2);
    EXPECT_FALSE(panelShown()) << "whatever the history holds of today";
    EXPECT_EQ(Calendar().DisplayedDate, "3/2/2026");
    UnloadDayInfo();
    EXPECT_FALSE(DayCalendarOpen);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|60|0"});
}

TEST_F(DayCalendarTest, TheMonthChangesByItsButtonsAndListsAndKeepsTheMark) {
    clock.set("2026-03-31 09:00");
    load();
    press("MonthDn");
    EXPECT_EQ(title(), "February 2026");
    EXPECT_EQ(shownDays(), 28);
    EXPECT_EQ(Calendar().DisplayDate, QDate(2026, 2, 28)) << "the month has no 31st";
    EXPECT_EQ(markedDay(), "");
    press("MonthDn");
    EXPECT_EQ(markedDay(), "31");
    press("MonthDn");
    EXPECT_EQ(title(), "December 2025");

    Calendar().controls.choose("YearList", 0);
    Calendar().controls.choose("MonthList", 0);
    EXPECT_EQ(title(), "January 1899");
    press("MonthDn");
    press("YearDn");
    EXPECT_EQ(title(), "January 1899");
    Calendar().controls.choose("YearList", 202);
    Calendar().controls.choose("MonthList", 11);
    press("Monthup");
    press("YearUp");
    EXPECT_EQ(title(), "December 2101");
    EXPECT_EQ(shownDays(), 31);
    DateLabelClick(0); // a hidden label
    EXPECT_EQ(Calendar().DisplayedDate, "");
}

TEST_F(DayCalendarTest, ADayIsShownChangedAndWrittenBackWithBreakAndWorkSummed) {
    addRow("3/1/2026", "Beta", 100, 10);
    addRow("3/1/2026", "Alpha", 60, 0);
    addRow("2/27/2026", "Alpha", 45, 5);
    load();
    clickDay(1);
    ASSERT_TRUE(panelShown());
    QStringList keys;
    for (const KeyedItem& item : Calendar().smuiDaysInfo.items())
        keys.append(item.key + item.caption);
    EXPECT_EQ(keys.mid(0, 6),
              (QStringList{"PROJECT1\tProject Name", "PN1\tProject Number", "BREAK1\tBreak Time",
                           "WORK1\tWork Time", "LINE1", "PROJECT2\tProject Name"}));
    EXPECT_EQ(keys.size(), 10);
    EXPECT_EQ(Calendar().smuiDaysInfo.item("PROJECT1").choices,
              (QStringList{"Alpha", "Beta", "More ... "}));
    EXPECT_EQ(row("PROJECT1") + row("PN1"), "BetaN-Beta");
    EXPECT_EQ(row("BREAK1"), "10 Minutes");
    EXPECT_EQ(row("WORK1"), "1 Hours 30 Minutes");

    press("MonthDn"); // the panel keeps its day
    set("BREAK1", "20 Minutes");
    set("WORK2", "2 Hours 0 Minutes");
    clickDay(27);
    EXPECT_EQ(row("WORK1"), "40 Minutes");
    EXPECT_EQ(Calendar().groupCount(), 1);
    EXPECT_EQ(history(), (QStringList{"Beta|3/1/2026|110|20", "Alpha|3/1/2026|120|0",
                                      "Alpha|2/27/2026|45|5"}));

    set("WORK1", "50 Minutes");
    UnloadDayInfo();
    EXPECT_EQ(history().last(), "Alpha|2/27/2026|55|5");
}

TEST_F(DayCalendarTest, SavingRollsTheRunningDayUp) {
    addRow("3/1/2026", "Beta", 100, 10);
    load();
    start("Alpha");
    clickDay(1); // leaves no day, so nothing is saved yet
    clock.advanceMinutes(10);
    EXPECT_EQ(history().last(), "Alpha|3/2/2026|0|0");
    clickDay(1);
    EXPECT_EQ(history().last(), "Alpha|3/2/2026|10|0");
}

TEST_F(DayCalendarTest, GroupsAddedToADayWithoutRowsAreStoredWithTheProjectsCustomer) {
    execute("kelvrane.mdb", "UPDATE ProjectInfo SET CustInfoDBID = 7 WHERE Project_Name = 'Beta'");
    load();
    EXPECT_TRUE(rightClickDay(1));
    AddDayRows();
    AddDayRows();
    AddDayRows();
    EXPECT_TRUE(panelShown());
    EXPECT_EQ(row("WORK2") + row("BREAK2") + row("PROJECT2"), "0 Minutes0 Minutes");
    choose("PROJECT1", 1);
    EXPECT_EQ(row("PN1"), "1002");
    set("BREAK1", "15 Minutes");
    set("WORK1", "1 Hours 0 Minutes");
    set("PROJECT2", "Deleted meanwhile");
    giveGroupAnHour("WORK2"); // the third one stays empty and is no row
    EXPECT_EQ(history(), (QStringList{"Beta|3/1/2026|75|15", "Deleted meanwhile|3/1/2026|60|0"}));
    Connection connection(path("DayInfo.mdb"));
    Recordset rows(connection, "DayInfo");
    EXPECT_EQ(rows.text("AssignTo") + rows.text("ProjectNumber"), "71002");
    rows.moveNext();
    EXPECT_EQ(rows.text("AssignTo"), "") << "a project that is gone has no customer";
}

TEST_F(DayCalendarTest, AGroupAddedToADayWithRowsIsLost) {
    addRow("3/1/2026", "Alpha", 60, 0);
    load();
    clickDay(1);
    AddDayRows();
    choose("PROJECT2", 1);
    giveGroupAnHour("WORK2");
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|60|0"});
    clickDay(1);
    choose("PROJECT1", 1); // not that day's project either
    giveGroupAnHour("WORK1");
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|60|0"});
}

TEST_F(DayCalendarTest, AProjectOfTheDayCannotBeGivenToAnotherGroup) {
    addRow("3/1/2026", "Alpha", 60, 0);
    addRow("3/1/2026", "Beta", 90, 10);
    const QStringList before = history();
    load();
    clickDay(1);
    dialogs.expect("'Beta'");
    choose("PROJECT1", 1);
    EXPECT_EQ(row("PROJECT1") + row("PN1"), "AlphaN-Alpha");
    choose("PROJECT1", 2);
    dialogs.expect("'Beta'");
    selectionSinks.calendar.select("Beta", "1002");
    selectionSinks.calendar.undo();
    EXPECT_EQ(row("PROJECT1") + row("PN1"), "AlphaN-Alpha");

    choose("PROJECT1", 2); // Alpha is on no group any more, but its row is there
    selectionSinks.calendar.select("Gamma", "G-3");
    dialogs.expect("'Alpha'");
    choose("PROJECT2", 0);
    EXPECT_EQ(row("PROJECT2"), "Beta");
    giveGroupAnHour("WORK1");
    EXPECT_EQ(history(), before);

    press("MonthDn");
    rightClickDay(1);
    AddDayRows();
    AddDayRows();
    choose("PROJECT1", 0);
    dialogs.expect("'Alpha'");
    choose("PROJECT2", 0);
    EXPECT_EQ(row("PROJECT2"), "");
    choose("PROJECT1", 0); // its own
    choose("PROJECT1", 1);
    choose("PROJECT2", 0); // free again
    EXPECT_EQ(row("PROJECT2"), "Alpha");
}

class RepeatedRows : public DayCalendarTest {
  protected:
    RepeatedRows() {
        addRow("3/1/2026", "Beta", 100, 10);
        addRow("3/1/2026", "Alpha", 60, 0);
        addRow("3/1/2026", "Beta", 50, 5);
        addRow("2/28/2026", "Beta", 30, 0);
        execute("DayInfo.mdb", "UPDATE DayInfo SET AssignTo = 7 WHERE TotalTime = 50");
        before = history();
        load();
    }
    QStringList before;
};

TEST_F(RepeatedRows, StayAsTheyAreUnlessTheyAreJoined) {
    dialogs.expect("'Beta'", BoxAnswer::No);
    clickDay(1);
    EXPECT_EQ(row("WORK1") + row("WORK3"), "1 Hours 30 Minutes45 Minutes");
    clickDay(3);
    clickDay(1); // not asked again
    clickDay(3);
    EXPECT_EQ(history(), before);

    clickDay(1);
    set("WORK3", "1 Hours 0 Minutes"); // each group is a row of its own
    clickDay(3);
    EXPECT_EQ(history(), (QStringList{before[0], before[1], "Beta|3/1/2026|65|5", before[3]}));
}

TEST_F(RepeatedRows, JoinedTheyAreOneRowWithTheSum) {
    dialogs.expect("'Beta'", BoxAnswer::Yes);
    clickDay(1);
    EXPECT_EQ(Calendar().groupCount(), 2);
    EXPECT_EQ(row("PROJECT1") + row("WORK1") + row("BREAK1"), "Beta2 Hours 15 Minutes15 Minutes");
    EXPECT_EQ(history(), (QStringList{"Beta|3/1/2026|150|15", before[1], before[3]}));
    Connection connection(path("DayInfo.mdb"));
    EXPECT_EQ(Recordset(connection, "DayInfo").text("AssignTo"), "7");
    Calendar().reset();
    load();
    clickDay(1); // nothing to ask
}

TEST_F(RepeatedRows, ASumThatIsTooLargeJoinsNothing) {
    addRow("3/1/2026", "Alpha", 5, 0); // could be joined, but it is all or nothing
    execute("DayInfo.mdb", "UPDATE DayInfo SET TotalTime = 32000 WHERE ProjectName = 'Beta'");
    before = history();
    dialogs.expect("'Beta', 'Alpha'", BoxAnswer::Yes);
    dialogs.expect("JoinRows");
    clickDay(1);
    EXPECT_EQ(history(), before);
    EXPECT_EQ(Calendar().groupCount(), 4);
}

TEST_F(DayCalendarTest, ADayThatNobodyEditedIsNotWritten) {
    addRow("3/1/2026", "Alpha", 60, 0);
    load();
    clickDay(1);
    execute("DayInfo.mdb", "UPDATE DayInfo SET TotalTime = 75"); // somebody else, meanwhile
    clickDay(3);
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|75|0"});
    clickDay(1);
    set("WORK1", "2 Hours 0 Minutes");
    execute("DayInfo.mdb", "DELETE FROM DayInfo");
    dialogs.expect("no longer in the history");
    clickDay(3);
    EXPECT_EQ(history(), QStringList());
}

TEST_F(DayCalendarTest, ATimeWithoutAProjectIsNotLeftWithoutAWord) {
    load();
    rightClickDay(1);
    AddDayRows();
    AddDayRows();
    choose("PROJECT1", 0);
    set("WORK1", "30 Minutes");
    set("WORK2", "1 Hours 0 Minutes");
    dialogs.expect("On 3/1/2026 a time has no project: work 1 Hours 0 Minutes, break 0 Minutes.");
    clickDay(2);
    EXPECT_EQ(Calendar().DisplayedDate, "3/1/2026");
    EXPECT_EQ(row("WORK2"), "1 Hours 0 Minutes");
    dialogs.expect("Close and lose it?", BoxAnswer::No);
    CloseDayInfo();
    EXPECT_TRUE(screens.unloaded.isEmpty());

    UnloadDayInfo(); // nobody can be asked
    EXPECT_EQ(tray.notices.size(), 1);
    EXPECT_TRUE(tray.notices.first().contains("work 1 Hours 0 Minutes"));
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|30|0"}) << "the rest is stored";

    load();
    press("MonthDn");
    rightClickDay(1);
    AddDayRows();
    set("BREAK1", "5 Minutes");
    dialogs.expect("Close and lose it?", BoxAnswer::Yes);
    CloseDayInfo();
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmDayInfo});
    EXPECT_EQ(tray.notices.size(), 1);
    EXPECT_EQ(history().size(), 1);
}

TEST_F(DayCalendarTest, TheRightButtonOffersAGroupOnlyOnPastDaysWithoutRows) {
    addRow("2/28/2026", "Alpha", 60, 0);
    load();
    EXPECT_TRUE(rightClickDay(1));
    EXPECT_EQ(Calendar().DisplayedDate, "3/1/2026");
    EXPECT_FALSE(rightClickDay(2)) << "today";
    EXPECT_FALSE(rightClickDay(3)) << "a day to come";
    press("MonthDn");
    EXPECT_FALSE(rightClickDay(28)) << "it has rows";
    EXPECT_TRUE(panelShown());
}

TEST_F(DayCalendarTest, TheDatabaseManagersSelectionGoesToTheRow) {
    load();
    rightClickDay(1);
    AddDayRows();
    choose("PROJECT1", 0);
    choose("PROJECT1", 2);
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmDataBase});
    EXPECT_EQ(CalendarRowKey, "1");
    EXPECT_EQ(CalendarRowValue, "Alpha");
    selectionSinks.calendar.undo();
    EXPECT_EQ(row("PROJECT1") + row("PN1"), "Alpha1001");

    choose("PROJECT1", 2);
    selectionSinks.calendar.select("Gamma", "G-3");
    selectionSinks.calendar.undo(); // the manager closes behind every selection
    EXPECT_EQ(row("PROJECT1") + row("PN1"), "GammaG-3");

    choose("PROJECT1", 2); // the day is left before the manager answers
    clickDay(2);
    EXPECT_EQ(history(), QStringList{"Gamma|3/1/2026|0|0"});
    EXPECT_EQ(RaisedError([] { selectionSinks.calendar.select("Beta", "2"); }),
              errors::BadArgument);
    selectionSinks.calendar.undo();
}

TEST_F(DayCalendarTest, FromTheTenthGroupOnOnlyTheLastDigitCounts) {
    for (int group = 1; group <= 12; ++group)
        addRow("3/1/2026", "P" + QString::number(group), 10 * group, 0);
    load();
    clickDay(1);
    EXPECT_EQ(Calendar().groupCount(), 12);
    choose("PROJECT12", 0);
    EXPECT_EQ(row("PROJECT12") + row("PN12") + row("PN2"), "AlphaN-P121001");
    choose("PROJECT12", 2);
    selectionSinks.calendar.select("Gamma", "G-3");
    EXPECT_EQ(row("PROJECT2") + row("PN2"), "GammaG-3");
    EXPECT_EQ(row("PROJECT12"), "Alpha") << "no row is left with the list's last entry";
    dialogs.expect("PN0");
    choose("PROJECT10", 1);
    giveGroupAnHour("WORK11");
    EXPECT_EQ(history()[10], "P11|3/1/2026|60|0");
    EXPECT_EQ(history()[9], "P10|3/1/2026|100|0");
}

TEST_F(DayCalendarTest, ThePickerWritesTheTimeRow) {
    addRow("3/1/2026", "Alpha", 100, 10);
    load();
    clickDay(1);
    Calendar().smuiDaysInfo.press("WORK1");
    EXPECT_EQ(CalendarRowKey, "WORK1");
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmSelNewTime});
    EXPECT_EQ(NewTimeControls().value("cboHours") + NewTimeControls().value("cboMinutes"), "130");
    NewTimeControls().choose("cboMinutes", 45);
    NewTimeControls().click("cmdOK");
    EXPECT_EQ(row("WORK1"), "1 Hours 45 Minutes");
    Calendar().smuiDaysInfo.press("BREAK1");
    NewTimeControls().click("cmdCancel");
    EXPECT_EQ(row("BREAK1"), "10 Minutes");

    Calendar().smuiDaysInfo.press("BREAK1"); // the panel goes meanwhile
    UnloadDayInfo();
    NewTimeControls().click("cmdOK");
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|115|10"});
}

class DayCalendarBrokenInput : public DayCalendarTest {};

TEST_F(DayCalendarBrokenInput, ADayThatCannotBeSavedStaysOnThePanel) {
    addRow("3/1/2026", "Alpha", 60, 0);
    load();
    clickDay(1);
    set("WORK1", "2 Hours 0 Minutes");
    const QString database = path("DayInfo.mdb");
    ASSERT_TRUE(QFile::rename(database, database + ".away"));
    dialogs.expect("SaveDayChanges");
    clickDay(2);
    EXPECT_EQ(row("WORK1"), "2 Hours 0 Minutes");
    EXPECT_EQ(Calendar().DisplayedDate, "3/1/2026");
    EXPECT_EQ(markedDay(), "  1");
    dialogs.expect("SaveDayChanges");
    dialogs.expect("could not be saved", BoxAnswer::No);
    CloseDayInfo();
    EXPECT_TRUE(screens.unloaded.isEmpty());

    ASSERT_TRUE(QFile::rename(database + ".away", database));
    CloseDayInfo();
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmDayInfo});
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|120|0"});
}

TEST_F(DayCalendarBrokenInput, ADayThatIsStillOwedIsNeitherShownNorChanged) {
    const QString database = path("DayInfo.mdb");
    ASSERT_TRUE(QFile::rename(database, database + ".away"));
    CloseStoredDay({QDate(2026, 3, 1),
                    {{"Alpha", "A-1", "9:00 AM", "10:00 AM", "0 Minutes", "1 Hours 0 Minutes"}},
                    {},
                    {}});
    load();
    dialogs.expect("The hours of 3/1/2026 are still to be written");
    EXPECT_FALSE(rightClickDay(1)) << "a group added now would meet the rows that come";
    EXPECT_FALSE(panelShown());

    ASSERT_TRUE(QFile::rename(database + ".away", database));
    clickDay(1); // tries again first
    EXPECT_EQ(row("WORK1"), "1 Hours 0 Minutes");
    giveGroupAnHour("BREAK1");
    RetryRollUp();
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|120|60"});
}

TEST_F(DayCalendarBrokenInput, ARowThatWasRenamedMeanwhileIsStillTheOne) {
    addRow("3/1/2026", "Alpha", 60, 0);
    load();
    clickDay(1);
    execute("DayInfo.mdb", "UPDATE DayInfo SET ProjectName = 'Beta'");
    set("WORK1", "2 Hours 0 Minutes");
    clickDay(2);
    EXPECT_EQ(history(), QStringList{"Beta|3/1/2026|120|0"});

    clickDay(1);
    execute("DayInfo.mdb", "UPDATE DayInfo SET Date = '2026-03-02'"); // the key is another day's
    set("WORK1", "3 Hours 0 Minutes");
    dialogs.expect("no longer in the history");
    clickDay(2);
    EXPECT_EQ(history(), QStringList{"Beta|3/2/2026|120|0"});
}

TEST_F(DayCalendarBrokenInput, WithoutADatabaseTheScreenStaysUsable) {
    load();
    QFile::remove(path("DayInfo.mdb"));
    dialogs.expect("ShowDay");
    clickDay(1);
    EXPECT_FALSE(panelShown());
    dialogs.expect("ShowDay");
    clickDay(3);
    writeFile("DayInfo.mdb", "not a database");
    dialogs.expect("ShowDay");
    clickDay(1);
    clickDay(2); // today asks nothing of it
    press("Monthup");
    EXPECT_EQ(title(), "April 2026");
    EXPECT_EQ(fileBytes("DayInfo.mdb"), "not a database");
    CloseDayInfo();
}

TEST_F(DayCalendarBrokenInput, AQuoteInANameIsAnyOtherCharacter) {
    addRow("3/1/2026", "O'Neil", 60, 0);
    addRow("3/1/2026", "Alpha", 60, 0);
    load();
    clickDay(1);
    EXPECT_EQ(row("PROJECT1"), "O'Neil");
    clickDay(1); // nothing changed, nothing to look up
    set("WORK1", "2 Hours 0 Minutes");
    set("WORK2", "2 Hours 0 Minutes");
    clickDay(2);
    EXPECT_EQ(history(), (QStringList{"O'Neil|3/1/2026|120|0", "Alpha|3/1/2026|120|0"}));

    press("MonthDn");
    rightClickDay(1);
    AddDayRows();
    AddDayRows();
    set("PROJECT1", "O'Neil");
    set("WORK1", "1 Hours 0 Minutes");
    set("PROJECT2", "Beta");
    giveGroupAnHour("WORK2");
    EXPECT_EQ(history().size(), 4);
    EXPECT_EQ(history()[2], "O'Neil|2/1/2026|60|0");
    EXPECT_EQ(history().last(), "Beta|2/1/2026|60|0");
}

TEST_F(DayCalendarBrokenInput, AProjectThatIsGoneIsReportedWhenChosen) {
    load();
    rightClickDay(1);
    AddDayRows();
    set("PN1", "typed");
    RecentProjects = {"Renamed"};
    AddDayRows();
    dialogs.expect("There is no project \"Renamed\"");
    choose("PROJECT2", 0);
    EXPECT_EQ(row("PN2"), "");
    EXPECT_EQ(row("PROJECT2"), "") << "the row goes back";
    QFile::remove(ProjectDatabase);
    dialogs.expect("smuiDaysInfo_Change");
    choose("PROJECT1", 0);
    EXPECT_EQ(row("PN1"), "typed");
    dialogs.expect("SaveDayChanges"); // no customers to look up: nothing is written by halves
    clickDay(2);
    EXPECT_EQ(Calendar().groupCount(), 2);
    EXPECT_EQ(history(), QStringList());
}

TEST_F(DayCalendarBrokenInput, TimesOutOfRangeAreLeftAlone) {
    addRow("3/1/2026", "Alpha", 60, 0);
    addRow("3/1/2026", "Beta", 60, 0);
    addRow("3/1/2026", "Gamma", 60, 0);
    execute("DayInfo.mdb", "UPDATE DayInfo SET TotalTime = 99999 WHERE ProjectName = 'Alpha'");
    execute("DayInfo.mdb", "UPDATE DayInfo SET BreakTime = NULL WHERE ProjectName = 'Gamma'");
    load();
    dialogs.expect("ShowDay");
    clickDay(1);
    EXPECT_EQ(Calendar().groupCount(), 2);
    EXPECT_EQ(row("PROJECT2") + row("BREAK2"), "Gamma0 Minutes");
    set("WORK1", "540 Hours 0 Minutes");
    set("BREAK1", "10 Hours 0 Minutes");
    set("WORK2", "soon");
    dialogs.expect("SaveDayChanges");
    dialogs.expect("SaveDayChanges");
    clickDay(2);
    EXPECT_EQ(history()[0], "Alpha|3/1/2026|99999|0");
    EXPECT_EQ(history()[1], "Beta|3/1/2026|60|0");
    EXPECT_EQ(history()[2], "Gamma|3/1/2026|60|");
}

TEST_F(DayCalendarBrokenInput, AWriteProtectedHistoryCanBeLookedThrough) {
    addRow("3/1/2026", "Alpha", 60, 0);
    load();
    Connection other(path("DayInfo.mdb"));
    other.begin(); // holds the write lock
    clickDay(1);
    clickDay(3);
    clickDay(1);
    EXPECT_EQ(row("WORK1"), "1 Hours 0 Minutes");
    set("WORK1", "2 Hours 0 Minutes");
    dialogs.expect("SaveDayChanges");
    clickDay(3);
    other.commit();
    clickDay(3);
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026|120|0"});
}

} // namespace
} // namespace kelvrane::testing
