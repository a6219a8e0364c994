#include "frame/globals.h"
#include "frame/recent_projects.h"
#include "frame/settings.h"
#include "frame/tray_menus.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/control_views.h"
#include "timekeeping/working_day.h"
#include "tray/hidden_form.h"
#include "tray/minute_tick.h"
#include "tray/time_rules.h"

namespace kelvrane {
namespace {

class Tick : public testing::WorkingDayTest {
  protected:
    Tick() {
        QObject::connect(counter.get(), &cTimer::Minute, [] { TMR_Minute(); });
        RegSetKeyValue(keys::Main, "UpdateWebHost", QString("updates.example"));
        LoadControlScreen();
    }
    int shown(Screen screen) { return int(screens.shown.count(screen)); }
};

TEST_F(Tick, TheEndOfDayPromptComesAtTheStopTimeAndEveryInterval) {
    StopWorkTime = "9:30 AM";
    passMinutes(40);
    EXPECT_EQ(shown(Screen::frmExit), 0); // no entries today
    start("Alpha");
    passMinutes(35);                      // 9:40 to 10:15
    EXPECT_EQ(shown(Screen::frmExit), 3); // 9:45, 10:00, 10:15
    EndDayReminder = "Off";               // isn't asked
    passMinutes(15);
    EXPECT_EQ(shown(Screen::frmExit), 4);
    EndOfDayTimeInterval = 0; // the rule does nothing
    passMinutes(15);
    EndOfDayTimeInterval = 15;
    StopWorkTime = "late"; // can't be read: off
    passMinutes(15);
    StopWorkTime = "9:30 AM";
    StopDay();
    passMinutes(15);
    EXPECT_EQ(shown(Screen::frmExit), 4);
}

TEST_F(Tick, AutoStartShowsTheScreenOnWeekdays) {
    AutoStartDay = "On";
    StartWorkTime = "9:05 AM";
    passMinutes(10);
    EXPECT_EQ(shown(Screen::frmSTM), 1);
    passMinutes(1);
    clock.set("2026-03-03 09:00"); // visible already
    passMinutes(10);
    EXPECT_EQ(shown(Screen::frmSTM), 1);
    screens.unload(Screen::frmSTM);
    clock.set("2026-03-07 09:00"); // a Saturday
    passMinutes(10);
    EXPECT_EQ(shown(Screen::frmSTM), 1);
}

TEST_F(Tick, QuarterHoursRollUpWhileTheDayIsOpen) {
    start("Alpha");
    passMinutes(14);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|0|0"});
    const QByteArray file = fileBytes("Fileinfo.dat");
    passMinutes(1);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|15|0"});
    EXPECT_EQ(fileBytes("Fileinfo.dat"), file); // the tick never saves the file
    AutoSave = "on";                            // compared exactly
    passMinutes(15);
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|15|0"});
}

TEST_F(Tick, TheReminderGoesByTheClock) {
    AutoDayReminder = "On";
    AutoDayReminderValue = 30;
    DayStopped = false;
    passMinutes(61);
    EXPECT_EQ(shown(Screen::frmSTM), 2);
    EXPECT_TRUE(sound.played.isEmpty()); // no path
    writeFile("gong.wav", "RIFF");
    AutoDayReminderSoundFile = path("gong.wav");
    passMinutes(30);
    EXPECT_EQ(sound.played, QStringList{path("gong.wav")});
    AutoDayReminderSoundFile = path("gone.wav");
    passMinutes(30);
    EXPECT_EQ(sound.played.size(), 1);
    AutoDayReminderValue = 0;
    passMinutes(60);
    EXPECT_EQ(shown(Screen::frmSTM), 4);
}

TEST_F(Tick, ARunningEntryCrossesMidnightAsOneEntryOfTheNewDate) {
    screens.show(Screen::frmSTM);
    clock.set("2026-03-02 22:00");
    StopWorkTime = "11:59 PM";
    EndOfDayTimeInterval = 1000;
    start("Alpha");
    passMinutes(121); // 12:01 AM
    ASSERT_EQ(DayEntries.size(), 1);
    EXPECT_EQ(DayEntries[0], (DayEntry{"Alpha", "1001", "12:00 AM", "", "0 Minutes", "1 Minutes"}));
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("Date: 3/3/2026"));
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|119|0", "Alpha|3/3/2026|0|0"}));
    EXPECT_EQ(screens.unloaded, (QList<Screen>{Screen::frmModify, Screen::frmSTM}));
    EXPECT_TRUE(screens.isVisible(Screen::frmSTM));
    passMinutes(4);
    EXPECT_EQ(Control().smuiProjectStatus.value("TOTAL TIME"), "5 Minutes");
}

TEST_F(Tick, AStoppedDayIsDroppedAndTheNextEntryIsTheFirst) {
    start("Alpha");
    StopDay();
    clock.set("2026-03-02 23:58");
    passMinutes(3);
    EXPECT_TRUE(DayEntries.isEmpty());
    EXPECT_EQ(CurrentEntryIndex, -1);
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(Control().smuiBreakDown.count(), 6); // yesterday's rows stay on view
    EXPECT_TRUE(fileBytes("Fileinfo.dat").isEmpty());
    start("Beta");
    EXPECT_EQ(CurrentEntryIndex, 0);
    EXPECT_EQ(Control().smuiBreakDown.count(), 6);
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|0|0", "Beta|3/3/2026|0|0"}));
}

TEST_F(Tick, AProcessThatOnlyShowsACollectionSavesNeitherDayNorLayout) {
    settings->setSection("SingleTimerView", "ChartType", "7");
    Control().reset();
    ControlScreenLoaded = DayStopped = false;
    SaveForLogOut();
    SaveControlLayout();
    EXPECT_FALSE(disk.exists(path("Fileinfo.dat")));
    EXPECT_FALSE(disk.exists(path("Fileinfo.dat.temp")));
    EXPECT_EQ(settings->section("SingleTimerView", "ChartType", ""), "7");
}

TEST_F(Tick, AWakeIsNoticedAtTheNextTickOfTheTimer) {
    const frmInfo form;
    clock.set("2026-03-02 17:40");
    TMR_Minute();
    start("Alpha");
    clock.sleepUntil("2026-03-03 08:10");
    timers.created[0]->fire();
    EXPECT_TRUE(DayEntries.isEmpty());
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|0|0"});
    EXPECT_EQ(internet.requests.size(), 1); // the check for an update of the new date
}

TEST_F(Tick, BehindAnOpenBoxTheCounterGoesOn) {
    StopWorkTime = "9:05 AM";
    start("Alpha");
    dialogs.expect("Do you really want to exit Kelvrane?", BoxAnswer::Cancel);
    dialogs.whileOpen = [this](const Box&) {
        dialogs.whileOpen = {};
        passMinutes(20);
    };
    TrayMenuClick("mnuSysTrayExit");
    EXPECT_EQ(DayEntries[0].TotalTime, "20 Minutes");
}

TEST_F(Tick, NothingHappensBeforeTheDayIsLoaded) {
    restart();
    QObject::connect(counter.get(), &cTimer::Minute, [] { TMR_Minute(); });
    AutoDayReminder = "On";
    AutoDayReminderValue = 1;
    passMinutes(5);
    EXPECT_TRUE(screens.shown.isEmpty());
}

TEST_F(Tick, TheRecentMenuEndsInMore) {
    const auto captions = [] {
        QStringList list;
        for (const KeyedItem& item : Menus().mnuRProjects.items())
            if (item.visible)
                list.append(item.caption);
        return list.join(',');
    };
    RebuildRecentMenu();
    EXPECT_EQ(captions(), "More ... ");
    AddRecentProject("Alpha");
    RebuildRecentMenu();
    EXPECT_EQ(captions(), "Alpha,More ... ");
    RecentProjectClick("MnuRecProj1");
    EXPECT_EQ(DayEntries.value(0).ProjectName, "Alpha");
    RecentProjectClick("MnuRecProj2");
    EXPECT_EQ(screens.shown.last(), Screen::frmDataBase);
    ShowNumProjects = 12;
    for (int i = 0; i < 10; ++i)
        AddRecentProject(QStringLiteral("p%1").arg(i));
    RebuildRecentMenu();
    EXPECT_EQ(captions(), "p9,p8,p7,p6,p5,p4,p3,p2,p1,More ... ");
}

TEST_F(Tick, TrayCommandsAskAndAct) {
    const frmInfo form;
    ASSERT_EQ(timers.created.size(), 1);
    EXPECT_EQ(timers.created[0]->interval(), 10'000);
    EXPECT_TRUE(timers.created[0]->enabled);
    dialogs.expect("Are you connected to the internet?", BoxAnswer::Yes);
    dialogs.expect("No internet connection found"); // nobody answers there
    dialogs.expect("Kelvrane up to date.");
    Menus().mnuSysTray.click("mnuCheckForUpdate");
    dialogs.expect("Do you really want to exit Kelvrane?", BoxAnswer::Cancel);
    Menus().mnuSysTray.click("mnuSysTrayExit");
    EXPECT_FALSE(process.ended);
    start("Alpha");
    dialogs.expect("Do you really want to exit Kelvrane?", BoxAnswer::Ok);
    Menus().mnuSysTray.click("mnuSysTrayExit");
    EXPECT_TRUE(process.ended);
    EXPECT_EQ(screens.unloaded.size(), 20);
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("Alpha;1001;9:00 AM;;")); // goes on tomorrow
    TrayActivate();
    EXPECT_EQ(screens.forward.last(), Screen::frmSTM);
}

} // namespace
} // namespace kelvrane
