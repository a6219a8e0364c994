#include "frame/globals.h"
#include "frame/status_text.h"
#include "frame/tray_menus.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"
#include "tray/minute_tick.h"

#include <QFile>

namespace kelvrane {
namespace {

class Day : public testing::WorkingDayTest {
  protected:
    Day() {
        QObject::connect(counter.get(), &cTimer::Minute, [] { TMR_Minute(); });
        StopWorkTime = "11:00 PM"; // no end-of-day prompt in these tests
        LoadControlScreen();
    }
    QString field(const QString& key) { return Control().smuiProjectStatus.value(key); }
    QString row(const QString& key) { return Control().smuiBreakDown.value(key); }
    QString quick(const QString& key) { return Control().smuiQuickView.value(key); }
    QString breakItem() { return Menus().mnuSysTray.item(tray_items::Break).caption; }
};

TEST_F(Day, AChangeOfProjectLeavesNoGap) {
    start("Alpha");
    EXPECT_EQ(CurrentEntryIndex, 0);
    EXPECT_FALSE(DayStopped);
    EXPECT_EQ(field("PROJECT_NUM"), "1001");
    EXPECT_EQ(Status().text(), "Alpha");
    passMinutes(65);
    EXPECT_EQ(field("TOTAL TIME"), "1 Hours 5 Minutes");
    EXPECT_EQ(row("TOTAL TIME0"), "1 Hours 5 Minutes");
    start("Beta");
    EXPECT_EQ(DayEntries[0].StopTime, "10:05 AM");
    EXPECT_EQ(row("STOP TIME0"), "10:05 AM");
    EXPECT_EQ(DayEntries[1].StartTime, "10:05 AM");
    EXPECT_EQ(field("TOTAL TIME"), "0 Minutes");
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|65|0", "Beta|3/2/2026|0|0"}));
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("Beta;1002;10:05 AM;;0 Minutes;0 Minutes"));
    EXPECT_EQ(quick("NUMCHANGES"), "2");
    EXPECT_EQ(quick("NUMPROJECTS"), "2");
    EXPECT_EQ(quick("T_OVERALL_TIME"), "1 Hours 5 Minutes");
}

TEST_F(Day, ChoosingTheRunningProjectAgainAddsAnEntry) {
    start("Alpha");
    passMinutes(10);
    start("Alpha");
    ASSERT_EQ(DayEntries.size(), 2);
    EXPECT_EQ(DayEntries[0].StopTime, DayEntries[1].StartTime);
    EXPECT_EQ(quick("NUMPROJECTS"), "1");
}

TEST_F(Day, ABreakCountsInsideTheEntryAndOnlyTheFirstOneReachesTheHistory) {
    start("Alpha");
    ModifySysTrayStatusHeading("Break");
    EXPECT_EQ(Status().text(), "Alpha - On Break");
    EXPECT_EQ(breakItem(), "Off Break");
    EXPECT_EQ(CurrentDayState(), DayState::OnBreak);
    passMinutes(5);
    EXPECT_EQ(field("BREAK TIME"), "5 Minutes");
    EXPECT_EQ(field("TOTAL TIME"), "5 Minutes");
    ModifySysTrayStatusHeading("Break");
    EXPECT_EQ(Status().text(), "Alpha");
    passMinutes(55);
    start("Alpha");
    ModifySysTrayStatusHeading("Break");
    passMinutes(10);
    start("Beta"); // during the break: the state ends, the tray's item keeps its caption
    EXPECT_EQ(OnBreak, 0);
    EXPECT_EQ(breakItem(), "Off Break");
    EXPECT_EQ(Status().text(), "Beta");
    EXPECT_EQ(field("BREAK TIME"), "0 Minutes");
    ModifySysTrayStatusHeading("Break"); // only turns the item back
    EXPECT_EQ(breakItem(), "On Break");
    EXPECT_EQ(OnBreak, 0);
    EXPECT_EQ(history().first(), "Alpha|3/2/2026|70|5");
}

TEST_F(Day, StopSavesRollsUpAndCompacts) {
    start("Alpha");
    passMinutes(30);
    TimeCtrlClick("STOP");
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(DayEntries[0].StopTime, "9:30 AM");
    EXPECT_EQ(field("PROJECT_NAME"), "");
    EXPECT_EQ(Status().text(), "");
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|30|0"});
    EXPECT_TRUE(QFile::exists(path("DayInfo_Backup.mdb")));
    EXPECT_FALSE(QFile::exists(path("temp.mdb")));
    EXPECT_EQ(progress.captions, QStringList{"Saving Data ... "});
    EXPECT_FALSE(progress.open);
    const QByteArray stopped = fileBytes("Fileinfo.dat");
    passMinutes(10);
    TimeCtrlClick("STOP"); // a stopped day ignores it
    EXPECT_EQ(fileBytes("Fileinfo.dat"), stopped);
    start("Beta"); // a gap before the new entry
    EXPECT_EQ(DayEntries[0].StopTime, "9:30 AM");
    EXPECT_EQ(DayEntries[1].StartTime, "9:40 AM");
}

TEST_F(Day, TheTraysStopLeavesTheDayOpen) {
    StopCurrentEntry(); // no entry at all: nothing happens to the day
    EXPECT_TRUE(DayEntries.isEmpty());
    start("Alpha");
    passMinutes(10);
    StopCurrentEntry();
    EXPECT_FALSE(DayStopped);
    passMinutes(5); // the tick goes on raising the stopped entry's total
    EXPECT_EQ(DayEntries[0].TotalTime, "15 Minutes");
    StopCurrentEntry();
    EXPECT_EQ(DayEntries[0].StopTime, "9:15 AM");
}

TEST_F(Day, ARestartGoesOnAsIfItHadNotBeenAway) {
    start("Alpha");
    passMinutes(1);
    restart();
    clock.set("2026-03-02 11:30");
    LoadControlScreen();
    EXPECT_EQ(CurrentEntryIndex, 0);
    EXPECT_EQ(field("TOTAL TIME"), "2 Hours 30 Minutes");
    QObject::connect(counter.get(), &cTimer::Minute, [] { TMR_Minute(); });
    passMinutes(1);
    EXPECT_EQ(field("TOTAL TIME"), "2 Hours 31 Minutes");
    TimeCtrlClick("STOP");
    restart();
    LoadControlScreen();
    EXPECT_EQ(CurrentEntryIndex, -1);
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(Control().smuiBreakDown.count(), 6);
    EXPECT_EQ(quick("T_OVERALL_TIME"), "0 Minutes"); // up to the index, which is -1
}

TEST_F(Day, ANameThatIsAnEarlierNumberCutsTheListBack) {
    start("Gamma"); // its number is "Alpha"
    start("Beta");
    start("Alpha");
    EXPECT_EQ(CurrentEntryIndex, 0);
    ASSERT_EQ(DayEntries.size(), 1);
    EXPECT_EQ(DayEntries[0].ProjectName, "Alpha");
    EXPECT_EQ(Control().smuiBreakDown.count(), 6);
}

TEST_F(Day, DeleteTakesTheEntryOutOfFileAndHistory) {
    start("Alpha");
    passMinutes(20);
    start("Beta");
    passMinutes(10);
    start("Alpha");
    BreakDownSelect("STOP TIME1");
    EXPECT_EQ(Control().mnuSetData.item("mnuSetDataDeleteProject").caption, " ** Delete Beta **");
    dialogs.expect("Delete this project?", BoxAnswer::Cancel);
    SetDataClick("mnuSetDataDeleteProject");
    EXPECT_EQ(DayEntries.size(), 3);
    dialogs.expect("Delete this project?", BoxAnswer::Ok);
    SetDataClick("mnuSetDataDeleteProject");
    EXPECT_EQ(DayEntries.size(), 2);
    EXPECT_EQ(CurrentEntryIndex, 1);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|20|0"});
    EXPECT_FALSE(fileBytes("Fileinfo.dat").contains("Beta"));
    BreakDownSelect("STOP TIME0"); // not offered for the first entry
    EXPECT_FALSE(Control().mnuSetData.item("mnuSetDataDeleteProject").visible);
}

TEST_F(Day, DeletingTheRunningEntryLeavesNothingRunning) {
    start("Alpha");
    passMinutes(20);
    start("Beta");
    passMinutes(10);
    BreakDownSelect("STOP TIME1");
    dialogs.expect("Delete this project?", BoxAnswer::Ok);
    SetDataClick("mnuSetDataDeleteProject");
    EXPECT_EQ(CurrentEntryIndex, -1);
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(field("PROJECT_NAME"), "");
    EXPECT_EQ(Status().text(), "");
    passMinutes(5);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|20|0"});
}

TEST_F(Day, WhatCannotBeReadChangesNothing) {
    start("Alpha");
    passMinutes(5);
    const QList<DayEntry> before = DayEntries;
    QFile::remove(ProjectDatabase);
    EXPECT_THROW(start("Beta"), RuntimeError);
    EXPECT_EQ(DayEntries, before);
    EXPECT_EQ(field("PROJECT_NAME"), "Alpha");
    EXPECT_TRUE(EntryRunning());
}

TEST_F(Day, DeletingReadsNothingBackAndTheLastEntryStaysDeleted) {
    start("Alpha");
    passMinutes(20);
    start("Beta");
    BreakDownSelect("STOP TIME1");
    dialogs.expect("Delete this project?", BoxAnswer::Ok);
    writeFile("Fileinfo.dat", "what another program wrote\n");
    SetDataClick("mnuSetDataDeleteProject");
    ASSERT_EQ(DayEntries.size(), 1);
    dialogs.expect("Delete this project?", BoxAnswer::Ok);
    DeleteDayEntry(0);
    EXPECT_EQ(history(), QStringList());
    restart();
    LoadControlScreen();
    EXPECT_TRUE(DayEntries.isEmpty());
}

TEST_F(Day, QuitKeepsTheProcessAndTheNextStartFromTheTrayLosesNothing) {
    screens.show(Screen::frmSTM);
    start("Alpha");
    passMinutes(30);
    TimeCtrlClick("QUITANDSAVE");
    EXPECT_FALSE(screens.isLoaded(Screen::frmSTM));
    EXPECT_TRUE(DayStopped);
    EXPECT_FALSE(process.ended);
    passMinutes(15);
    start("Beta");
    ASSERT_EQ(DayEntries.size(), 2);
    EXPECT_EQ(DayEntries[0].StopTime, "9:30 AM");
    EXPECT_EQ(CurrentEntryIndex, 1);
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|30|0", "Beta|3/2/2026|0|0"}));
    EXPECT_EQ(Control().smuiBreakDown.count(), 12);
}

TEST_F(Day, AfterAPromptThatRanOutTheNextEntryCounts) {
    start("Alpha");
    passMinutes(10);
    StopCurrentEntry(); // as the prompt does, while no screen is loaded
    ControlScreenLoaded = false;
    DayStopped = true;
    start("Beta");
    passMinutes(7);
    EXPECT_EQ(row("TOTAL TIME1"), "7 Minutes");
    EXPECT_EQ(DayEntries.value(1).TotalTime, "7 Minutes");
}

} // namespace
} // namespace kelvrane
