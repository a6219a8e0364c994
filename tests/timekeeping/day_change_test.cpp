// The day under clocks that do odd things: midnight, sleep, set clocks, summer time, and starts on
// another date than the file's.
#include "frame/globals.h"
#include "frame/tray_menus.h"
#include "frame/waiting_questions.h"
#include "history/roll_up.h"
#include "platform/connection.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/day_change.h"
#include "timekeeping/shut_down.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"
#include "timevalues/clock_watch.h"
#include "tray/exit_prompt.h"
#include "tray/hidden_form.h"
#include "tray/minute_tick.h"

#include <QFile>

namespace kelvrane {
namespace {

class Clocks : public testing::WorkingDayTest {
  protected:
    Clocks() {
        wire();
        StopWorkTime = "11:59 PM";
        EndOfDayTimeInterval = 1000;
        LoadControlScreen();
        WireControlScreen();
    }
    void wire() {
        QObject::connect(counter.get(), &cTimer::Minute, [] { TMR_Minute(); });
        QObject::connect(&timer, &IntervalTimer::Timer, counter.get(), [] { ReadClocks(); });
    }
    /// The process ends without a word; the next one starts at that moment.
    void killUntil(const QString& moment) {
        clock.set(moment);
        restart();
        wire();
        LoadControlScreen();
    }
    void at(const QString& moment) { clock.set(moment); }
    QStringList entries() {
        QStringList lines;
        for (const DayEntry& entry : DayEntries)
            lines.append(QStringList{entry.ProjectName, entry.StartTime, entry.StopTime,
                                     entry.BreakTime, entry.TotalTime}
                             .join('|'));
        return lines;
    }
    void answer(const QString& caption) {
        Questions().answer(Questions().waiting().value(0), caption);
    }
};

TEST(ClockSteps, TellTimeSleepAndJumpsApart) {
    const auto reading = [](const char* wall, qint64 boot, qint64 awake) {
        return ClockReading{QDateTime::fromString(wall, "yyyy-MM-dd hh:mm:ss"), boot * 1000,
                            awake * 1000};
    };
    const ClockReading start = reading("2026-03-02 23:59:00", 100, 90);
    const ClockStep plain = StepBetween(start, reading("2026-03-03 00:00:30", 190, 180));
    EXPECT_EQ(plain.expected, (WallMoment{QDate(2026, 3, 3), 0}));
    EXPECT_FALSE(plain.slept || plain.jumped);
    EXPECT_TRUE(StepBetween(start, reading("2026-03-03 00:00:00", 160, 90)).slept);
    EXPECT_FALSE(StepBetween(start, reading("2026-03-02 23:59:59", 159, 90)).slept);
    EXPECT_FALSE(StepBetween(start, reading("2026-03-03 00:00:00", 100, 90)).jumped);
    const ClockStep jump = StepBetween(start, reading("2026-03-02 22:59:30", 130, 120));
    EXPECT_TRUE(jump.jumped);
    EXPECT_EQ(jump.expected, (WallMoment{QDate(2026, 3, 2), 23 * 60 + 59}));
    EXPECT_EQ(MinutesBetween(jump.expected, jump.now), -60);
    EXPECT_EQ(MinutesBetween({QDate(2026, 3, 2), 1439}, {QDate(2026, 3, 3), 1}), 2);
}

// Each command between 12:00 AM and the next tick finds the new date.
TEST_F(Clocks, ACommandRightAfterMidnightBooksNothingOfYesterdayOnToday) {
    const struct {
        const char* what;
        void (*command)();
        QStringList after;
    } rows[] = {
        {"stop", [] { TimeCtrlClick("STOP"); }, {"Alpha|12:00 AM|12:00 AM|0 Minutes|0 Minutes"}},
        {"tray stop",
         [] { TrayMenuClick("mnuSysTrayStop"); },
         {"Alpha|12:00 AM|12:00 AM|0 Minutes|0 Minutes"}},
        {"new project",
         [] { StartProjectByName("Beta"); },
         {"Alpha|12:00 AM|12:00 AM|0 Minutes|0 Minutes", "Beta|12:00 AM||0 Minutes|0 Minutes"}},
        {"exit", [] { ShutDownProgram(); }, {"Alpha|12:00 AM||0 Minutes|0 Minutes"}},
        {"break", [] { TimeCtrlClick("BREAK"); }, {"Alpha|12:00 AM||0 Minutes|0 Minutes"}},
    };
    int day = 2;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const QString date = QStringLiteral("2026-03-%1").arg(day, 2, 10, QLatin1Char('0'));
        at(date + " 22:00:05");
        LoadControlScreen();
        start("Alpha");
        passMinutes(119);
        clock.pass(60); // 12:00:05 AM, no tick yet
        row.command();
        EXPECT_EQ(entries(), row.after);
        EXPECT_TRUE(history().contains(QStringLiteral("Alpha|3/%1/2026|119|0").arg(day)))
            << history().join('\n').toStdString();
        EXPECT_FALSE(history().join('\n').contains('-'));
        day += 2;
        killUntil(QStringLiteral("2026-03-%1 09:00").arg(day, 2, 10, QLatin1Char('0')));
        ASSERT_TRUE(DayEntries.isEmpty());
    }
}

TEST_F(Clocks, APromptLeftAloneOverMidnightStopsTheDayOnItsDate) {
    at("2026-03-02 22:45");
    start("Alpha");
    passMinutes(60);
    auto prompt = std::make_unique<ExitPrompt>();
    testing::FakeTimer& countdown = *static_cast<testing::FakeTimer*>(timers.created.last());
    for (int minute = 0; minute < 15; ++minute) {
        clock.pass(60);
        countdown.fire(); // the counter's own ticks come later each time
    }
    EXPECT_EQ(entries(), QStringList{"Alpha|12:00 AM|12:00 AM|0 Minutes|0 Minutes"});
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|74|0", "Alpha|3/3/2026|0|0"}));
}

TEST_F(Clocks, AStandstillOverMidnightIsNoSleep) {
    at("2026-03-02 23:00");
    start("Alpha");
    passMinutes(55);
    clock.pass(10 * 60); // no tick from 11:55 PM to 12:05 AM
    passMinutes(1);
    EXPECT_EQ(entries(), QStringList{"Alpha|12:00 AM||0 Minutes|6 Minutes"});
    EXPECT_EQ(history().first(), "Alpha|3/2/2026|55|0");
    EXPECT_EQ(waitingQuestion(), "");
}

TEST_F(Clocks, WhatWasStoppedIsNeverBookedOnTheNextDay) {
    start("Alpha");
    passMinutes(480);
    TrayMenuClick("mnuSysTrayStop");
    clock.sleepUntil("2026-03-05 08:10"); // over days, the lid closed
    passMinutes(30);
    EXPECT_TRUE(DayEntries.isEmpty());
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|480|0"});
    EXPECT_EQ(waitingQuestion(), ""); // nothing ran
    start("Beta");
    passMinutes(5);
    TimeCtrlClick("STOP");
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|480|0", "Beta|3/5/2026|5|0"}));
}

TEST_F(Clocks, AnEntryThatRanWhenTheMachineFellAsleepEndsThere) {
    screens.show(Screen::frmExit);
    at("2026-03-02 17:00");
    start("Alpha");
    clock.pass(20); // within its first minute
    timer.fire();
    clock.sleepUntil("2026-03-03 08:10:00");
    clock.pass(10);
    timer.fire();
    EXPECT_TRUE(DayEntries.isEmpty());
    EXPECT_TRUE(DayStopped);
    EXPECT_FALSE(screens.isLoaded(Screen::frmExit));
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|0|0"});
    EXPECT_TRUE(waitingQuestion().contains("5:00 PM on 3/2/2026"));
    EXPECT_TRUE(waitingQuestion().endsWith("|Start it again now|Count the night|Leave it"));
    EXPECT_EQ(tray.notices.size(), 1);
    killUntil("2026-03-03 08:20"); // it waits over a restart
    EXPECT_TRUE(waitingQuestion().endsWith("|Start it again now|Count the night|Leave it"));
    start("Beta"); // once another entry began the night isn't offered
    EXPECT_TRUE(waitingQuestion().endsWith("|Start it again now|Leave it"));
    answer("Count the night"); // is no answer
    passMinutes(5);
    answer("Start it again now");
    EXPECT_EQ(waitingQuestion(), "");
    EXPECT_EQ(entries(), (QStringList{"Beta|8:20 AM|8:25 AM|0 Minutes|5 Minutes",
                                      "Alpha|8:25 AM||0 Minutes|0 Minutes"}));
    killUntil("2026-03-03 08:30");
    EXPECT_EQ(waitingQuestion(), "");
}

TEST_F(Clocks, TheNightIsCountedWhenSomebodySaysSo) {
    at("2026-03-02 22:00");
    start("Alpha");
    passMinutes(30);
    clock.sleepUntil("2026-03-04 06:00"); // a whole day between
    passMinutes(1);
    answer("Count the night");
    EXPECT_EQ(entries(), QStringList{"Alpha|12:00 AM||0 Minutes|6 Hours 1 Minutes"});
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|120|0", "Alpha|3/3/2026|1440|0",
                                      "Alpha|3/4/2026|361|0"}));
    EXPECT_TRUE(EntryRunning());
    EXPECT_EQ(waitingQuestion(), "");
}

TEST_F(Clocks, ASleepOnOneDateCountsAndABreakSleptThroughIsABreak) {
    start("Alpha");
    passMinutes(10);
    TimeCtrlClick("BREAK");
    clock.sleep(4 * 3600);
    passMinutes(1);
    TimeCtrlClick("BREAK");
    EXPECT_EQ(entries(), QStringList{"Alpha|9:00 AM||4 Hours 1 Minutes|4 Hours 11 Minutes"});
    clock.sleep(3600);
    TimeCtrlClick("STOP");
    EXPECT_EQ(entries(), QStringList{"Alpha|9:00 AM|2:11 PM|4 Hours 1 Minutes|5 Hours 11 Minutes"});
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|311|241"});
    const QStringList before = entries();
    killUntil("2026-03-02 15:00");
    EXPECT_EQ(entries(), before); // a load says what the stop said
}

TEST_F(Clocks, ABreakOutlivesAKillARestartAndMidnight) {
    at("2026-03-02 22:00");
    start("Alpha");
    passMinutes(10);
    TimeCtrlClick("BREAK");
    passMinutes(5);
    killUntil("2026-03-02 22:20");
    EXPECT_EQ(CurrentDayState(), DayState::OnBreak);
    EXPECT_EQ(Menus().mnuSysTray.item(tray_items::Break).caption, "Off Break");
    EXPECT_EQ(entries(), QStringList{"Alpha|10:00 PM||10 Minutes|20 Minutes"});
    passMinutes(105); // 12:05 AM
    EXPECT_EQ(entries(), QStringList{"Alpha|12:00 AM||5 Minutes|5 Minutes"});
    EXPECT_EQ(history().first(), "Alpha|3/2/2026|119|109");
    TimeCtrlClick("BREAK");
    passMinutes(5);
    killUntil("2026-03-03 00:20");
    EXPECT_EQ(CurrentDayState(), DayState::Running);
    EXPECT_EQ(entries(), QStringList{"Alpha|12:00 AM||5 Minutes|20 Minutes"});
}

TEST_F(Clocks, AClockThatIsSetMovesTheRunningStartAndNothingElse) {
    start("Alpha");
    passMinutes(30);
    start("Beta");
    passMinutes(30);
    TimeCtrlClick("BREAK");
    passMinutes(5);
    clock.jump(-30 * 60);
    passMinutes(1);
    EXPECT_EQ(entries(), (QStringList{"Alpha|9:00 AM|9:30 AM|0 Minutes|30 Minutes",
                                      "Beta|9:00 AM||6 Minutes|36 Minutes"}));
    clock.jump(90 * 60);
    passMinutes(1);
    EXPECT_EQ(entries().last(), "Beta|10:30 AM||7 Minutes|37 Minutes");
    killUntil("2026-03-02 11:10");
    EXPECT_EQ(entries().last(), "Beta|10:30 AM||10 Minutes|40 Minutes");
    // Set back while the program is away: never less than was saved.
    SaveForLogOut();
    clock.jump(-3600);
    restart();
    wire();
    LoadControlScreen();
    EXPECT_EQ(entries().last(), "Beta|9:30 AM||10 Minutes|40 Minutes");
    passMinutes(2);
    EXPECT_EQ(entries().last(), "Beta|9:30 AM||12 Minutes|42 Minutes");
}

TEST_F(Clocks, AStartThatWouldFallBeforeMidnightEndsTheEntry) {
    at("2026-03-02 00:20");
    start("Alpha");
    passMinutes(20);
    clock.jump(-30 * 60); // 12:10 AM
    passMinutes(1);
    EXPECT_EQ(entries(), (QStringList{"Alpha|12:20 AM|12:40 AM|0 Minutes|20 Minutes",
                                      "Alpha|12:10 AM||0 Minutes|1 Minutes"}));
}

TEST_F(Clocks, ADayForwardAndBackLosesAndDoublesNothing) {
    start("Alpha");
    passMinutes(100);
    clock.jump(24 * 3600);
    passMinutes(16);
    EXPECT_EQ(entries(), QStringList{"Alpha|10:40 AM||0 Minutes|16 Minutes"});
    AddDataToDayInfoDataBase();
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|100|0", "Alpha|3/3/2026|16|0"}));
    clock.jump(-24 * 3600);
    passMinutes(40);
    EXPECT_TRUE(waitingQuestion().endsWith("|The clock is right now"));
    start("Beta");
    passMinutes(60);
    TimeCtrlClick("STOP");
    const QByteArray later = fileBytes("Fileinfo.dat");
    EXPECT_TRUE(later.contains("Date: 3/3/2026")) << later.toStdString();
    answer("The clock is right now");
    EXPECT_EQ(waitingQuestion(), "");
    EXPECT_EQ(entries(), (QStringList{"Alpha|9:00 AM|10:40 AM|0 Minutes|1 Hours 40 Minutes",
                                      "Alpha|10:56 AM|11:36 AM|0 Minutes|40 Minutes",
                                      "Beta|11:36 AM|12:36 PM|0 Minutes|1 Hours 0 Minutes"}));
    EXPECT_EQ(history(),
              (QStringList{"Alpha|3/2/2026|140|0", "Alpha|3/3/2026|16|0", "Beta|3/2/2026|60|0"}));
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("Date: 3/2/2026"));
    EXPECT_TRUE(fileBytes("Fileinfo.dat.last").contains("Date: 3/3/2026"));
}

TEST_F(Clocks, AStartBeforeTheFilesDateThrowsNothingAway) {
    at("2026-03-09 09:00");
    start("Alpha");
    passMinutes(30);
    SaveForLogOut();
    clock.set("2026-03-02 08:00");
    restart();
    wire();
    LoadControlScreen();
    EXPECT_EQ(entries(), (QStringList{"Alpha|9:00 AM|9:30 AM|0 Minutes|30 Minutes",
                                      "Alpha|8:00 AM||0 Minutes|0 Minutes"}));
    passMinutes(10);
    answer("The clock is right now");
    EXPECT_EQ(entries(), QStringList{"Alpha|8:00 AM||0 Minutes|10 Minutes"});
    EXPECT_EQ(history(), (QStringList{"Alpha|3/9/2026|30|0", "Alpha|3/2/2026|10|0"}));
    EXPECT_TRUE(EntryRunning());
}

TEST_F(Clocks, AnExitWithARunningEntryIsBookedAsItWasSaved) {
    AutoSave = "Off";
    start("Alpha");
    passMinutes(14);
    dialogs.expect("Do you really want to exit Kelvrane?", BoxAnswer::Ok);
    TrayMenuClick("mnuSysTrayExit");
    killUntil("2026-03-03 09:00");
    EXPECT_TRUE(DayEntries.isEmpty());
    EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|14|0"});
    EXPECT_FALSE(QFile::exists(path("Fileinfo.dat")));
    EXPECT_TRUE(fileBytes("Fileinfo.dat.last").contains("Alpha"));
}

TEST_F(Clocks, AKilledDayIsBookedAsItsRowKnowsIt) {
    start("Alpha");
    passMinutes(20);
    start("Beta");
    passMinutes(5);
    start("Alpha");
    passMinutes(25); // the row was written at 9:45, the file at 9:25
    killUntil("2026-03-03 09:00");
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|40|0", "Beta|3/2/2026|5|0"}));
    EXPECT_TRUE(DayStopped);
}

TEST_F(Clocks, WhoeverHearsOfTheNewDateMayWaitWhileTheClocksAreFollowed) {
    start("Alpha");
    at("2026-03-02 23:59");
    ReadClocks();
    QObject context;
    QObject::connect(&Control(), &ControlModel::DateChanged, &context, [&] {
        if (ports.clock->today() != QDate(2026, 3, 3))
            return;
        at("2026-03-03 23:59"); // a box stands open all day
        ReadClocks();
        at("2026-03-04 00:01");
        ReadClocks();
    });
    at("2026-03-03 00:01");
    ReadClocks();
    EXPECT_EQ(DayDate, QDate(2026, 3, 4));
}

TEST_F(Clocks, ADayFileThatIsOnlyPartlyReadableIsTakenAsFarAsItIs) {
    const QString readable = "Alpha;A-1;9:00 AM;10:00 AM;0 Minutes;1 Hours 0 Minutes\n";
    const struct {
        const char* date;
        QString body;
        QStringList entries;
        QStringList history;
    } cases[] = {
        // A day that is over, with a line that ends early: it is booked and put by.
        {"3/1/2026", readable + "Beta;B-1;1:00", {}, {"Alpha|3/1/2026|60|0"}},
        {"3/1/2026", "Alpha;A-1;9:00 AM;;0 Minutes;-40 Minutes\n", {}, {"Alpha|3/1/2026|0|0"}},
        {"3/1/2026", "Alpha;A-1;99:99 ?;;0 Minutes;5 Minutes\n", {}, {}},
        {"3/9/2026",
         "Alpha;A-1;30 Hours 0 Minutes;;0 Minutes;5 Minutes\n",
         {"Alpha|30 Hours 0 Minutes|6:00 AM|0 Minutes|5 Minutes",
          "Alpha|9:00 AM||0 Minutes|0 Minutes"},
         {"Alpha|3/9/2026|5|0"}},
        {"3/2/2026",
         readable + "Beta\n",
         {"Alpha|9:00 AM|10:00 AM|0 Minutes|1 Hours 0 Minutes"},
         {"Alpha|3/2/2026|60|0"}},
        // Nobody works longer than a day on a day.
        {"3/2/2026",
         "Alpha;A-1;9:00 AM;;0 Minutes;500 Hours 0 Minutes\n\n\nbreak=x;y\nquestion=\n",
         {"Alpha|9:00 AM||0 Minutes|0 Minutes"},
         {"Alpha|3/2/2026|0|0"}},
        {"3/9/2026",
         "Alpha;A-1;9:00 AM;;0 Minutes;-40 Minutes\n",
         {"Alpha|9:00 AM|9:00 AM|0 Minutes|0 Minutes", "Alpha|9:00 AM||0 Minutes|0 Minutes"},
         {"Alpha|3/9/2026|0|0"}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.body.toStdString());
        for (const char* file : {"Fileinfo.dat", "Fileinfo.dat.last"})
            QFile::remove(path(file));
        Connection(path("DayInfo.mdb")).execute("DELETE FROM DayInfo");
        writeFile("Fileinfo.dat", QString("Time: 9:00 AM\nDate: %1\nDay Info:\n%2\n\n")
                                      .arg(each.date, each.body)
                                      .toUtf8());
        killUntil("2026-03-02 09:00");
        EXPECT_EQ(entries(), each.entries);
        EXPECT_EQ(history(), each.history);
    }
}

class Zones : public Clocks {
  protected:
    ~Zones() override {
        m_zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", m_zone);
        tzset();
    }
    void zone(const char* name) {
        qputenv("TZ", name);
        tzset();
    }

  private:
    QByteArray m_zone = qgetenv("TZ");
};

// On dates gone by: what a zone will do may still be decided otherwise.

// Summer time begins at midnight there: 11:59 PM is followed by 1:00 AM.
TEST_F(Zones, AMidnightThatIsSkippedLosesNothing) {
    zone("America/Havana");
    killUntil("2024-03-09 22:00");
    start("Alpha");
    passMinutes(125);
    EXPECT_EQ(ports.clock->time(), QTime(1, 5));
    EXPECT_EQ(entries(), QStringList{"Alpha|1:00 AM||0 Minutes|5 Minutes"});
    EXPECT_EQ(history().first(), "Alpha|3/9/2024|119|0");
}

// And ends at 1:00 AM, which is then 12:00 AM again, on the same date.
TEST_F(Zones, AMidnightThatComesTwiceDoublesNothing) {
    const struct {
        const char* name;
        const char* evening;
        const char* date;
    } rows[] = {{"America/Havana", "2023-11-04 23:30", "11/5/2023"},
                {"Atlantic/Azores", "2024-10-26 23:30", "10/27/2024"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        zone(row.name);
        killUntil(row.evening);
        start("Alpha");
        passMinutes(30 + 60 + 20);
        TimeCtrlClick("STOP");
        EXPECT_EQ(DayEntries.last().StopTime, "12:20 AM");
        const QStringList rolledUp = history().last(2);
        EXPECT_EQ(rolledUp.first().section('|', 2, 2), "29");
        EXPECT_EQ(rolledUp.last(), QStringLiteral("Alpha|%1|79|0").arg(row.date));
    }
}

} // namespace
} // namespace kelvrane
