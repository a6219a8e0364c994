// The real program with its real screens and boxes at moments that nobody plans: behind a box,
// while a list fills, at the end of the session, over midnight. Only clock and timers are scripted.
#include "app/program.h"
#include "frame/globals.h"
#include "frame/other_process.h"
#include "frame/program_folder.h"
#include "frame/status_text.h"
#include "frame/tray_menus.h"
#include "platform/instance_lock.h"
#include "platform/recordset.h"
#include "records/manager_model.h"
#include "records/record_tables.h"
#include "support/fakes.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/shut_down.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"
#include "tray/hidden_form.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace kelvrane {
namespace {

using testing::FakeClock;
using testing::FakeTimer;

class ScriptedTimers final : public Timers {
  public:
    IntervalTimer* create(QObject* parent) override {
        auto* timer = new FakeTimer;
        timer->setParent(parent);
        m_timers.append(timer);
        return timer;
    }
    void passMinute() {
        const QList<QPointer<FakeTimer>> timers = m_timers;
        for (const QPointer<FakeTimer>& timer : timers)
            for (int passed = 0; timer && passed < 60'000; passed += timer->interval())
                timer->fire();
    }

  private:
    QList<QPointer<FakeTimer>> m_timers;
};

/// Meets every box that comes up: with the next action, or by closing its frame.
class Boxes final : public QObject {
  public:
    using Action = std::function<void(QWidget*)>;
    Boxes() { poll(); }
    void next(Action action) { m_actions.append(std::move(action)); }
    int seen = 0;

  private:
    void poll() {
        QTimer::singleShot(5, this, [this] {
            poll(); // first, since an action may open a further box
            const QPointer<QWidget> box = QApplication::activeModalWidget();
            if (!box || box == m_met)
                return;
            m_met = box;
            ++seen;
            if (!m_actions.isEmpty())
                m_actions.takeFirst()(box);
            if (box)
                box->close();
        });
    }
    QPointer<QWidget> m_met;
    QList<Action> m_actions;
};

class OddMoments : public ::testing::Test {
  protected:
    OddMoments() {
        globals = {};
        SetAppPath(folder.path());
        Control().reset();
        Menus().reset();
        clock.set("2026-03-02 08:00");
    }
    ~OddMoments() override {
        program.reset();
        globals = {};
        Control().reset();
        Menus().reset();
    }

    /// As in the program: below an event loop of its own, so that a box's loop is a nested one.
    void run(const std::function<void()>& body) {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            body();
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
        });
        loop.exec();
    }
    /// As a click on its frame does.
    static void activate(QWidget* window) {
        window->activateWindow();
        QApplication::processEvents();
        ASSERT_EQ(QApplication::activeWindow(), window);
    }
    StartResult begin(const QString& commandText = {}) {
        program.reset();
        globals = {};
        Control().reset();
        Menus().reset();
        program = std::make_unique<Program>(PortChoices{.clock = &clock, .timers = &timers});
        const StartResult result = program->start(commandText);
        StopWorkTime = "5:00 PM";
        EndOfDayTimeInterval = 15;
        AutoDayReminder = "Off";
        AutoStartDay = "Off";
        return result;
    }
    void beginWithProjects(int more = 0) {
        ASSERT_EQ(begin(), StartResult::Running);
        Connection(InAppPath("DayInfo.mdb")).execute("DELETE FROM DayInfo");
        Connection connection(ProjectDatabase);
        connection.execute("DELETE FROM ProjectInfo");
        connection.execute("INSERT INTO ProjectInfo (Project_Name, Project_Number, Active) VALUES "
                           "('Alpha', '1001', 1), ('Beta', '1002', 1), ('Idle', '1003', 0)");
        connection.execute(QString("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM "
                                   "n WHERE i < %1) INSERT INTO ProjectInfo (Project_Name, "
                                   "Project_Number, Active) SELECT 'Project ' || i, i, 1 FROM n "
                                   "WHERE %1 > 0")
                               .arg(more));
    }
    void passMinutes(int minutes) {
        for (int minute = 0; minute < minutes; ++minute) {
            clock.advanceMinutes(1);
            timers.passMinute();
        }
    }
    QWidget* screen(Screen name) { return program->screens().widget(name); }
    QStringList history() {
        Connection connection(InAppPath("DayInfo.mdb"));
        Recordset rows(connection, "DayInfo");
        QStringList lines;
        for (; !rows.atEnd(); rows.moveNext())
            lines.append(rows.text("ProjectName") + '|' + rows.text("Date") + '|' +
                         rows.text("TotalTime") + '|' + rows.text("BreakTime"));
        return lines;
    }
    QStringList savedEntries() {
        QFile file(InAppPath("Fileinfo.dat"));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
        return lines.mid(3, lines.indexOf(QString(), 3) - 3);
    }
    void write(const QString& name, const QByteArray& bytes) {
        QFile file(InAppPath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    FakeClock clock;
    ScriptedTimers timers;
    Boxes boxes;
    std::unique_ptr<Program> program;
};

TEST_F(OddMoments, StopMidnightAndAChoiceGiveOneEntry) {
    run([this] {
        beginWithProjects();
        StartProjectByName("Alpha");
        passMinutes(30);
        Control().smuiTimeCtrl.click("STOP");
        clock.set("2026-03-02 23:58");
        passMinutes(4);
        StartProjectByName("Beta");
        EXPECT_EQ(DayEntries.size(), 1);
        EXPECT_EQ(savedEntries(), QStringList{"Beta;1002;12:02 AM;;0 Minutes;0 Minutes"});
        EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|30|0", "Beta|3/3/2026|0|0"}));
        EXPECT_EQ(Control().smuiBreakDown.count(), 6);
    });
}

TEST_F(OddMoments, DebugBesideARunningProgramLeavesTheDayAlone) {
    run([this] {
        beginWithProjects();
        StartProjectByName("Alpha");
        passMinutes(30);
        program->saveForLogOut();
        program.reset();
        const QStringList entries = savedEntries();
        ASSERT_EQ(entries.size(), 1);
        InstanceLock other(InAppPath(QString::fromLatin1(files::Lock)));
        ASSERT_EQ(other.tryLock(), InstanceState::Free) << "the program that ended let it go";

        const int seen = boxes.seen;
        EXPECT_EQ(begin(), StartResult::Ended);
        EXPECT_EQ(boxes.seen, seen + 1) << "already running";
        ASSERT_EQ(begin("debug"), StartResult::Running);
        EXPECT_TRUE(DayEntries.isEmpty());
        EXPECT_TRUE(screen(Screen::frmDebugWindow)->windowTitle().endsWith(OtherProcessText));
        EXPECT_EQ(Status().text(), OtherProcessText);
        EXPECT_EQ(savedEntries(), entries);
        other.release();
        ASSERT_EQ(begin("debug"), StartResult::Running);
        EXPECT_EQ(DayEntries.size(), 1) << "alone it keeps the day like any other";
        EXPECT_EQ(begin(), StartResult::Running);
    });
}

TEST_F(OddMoments, AsleepOverMidnight) {
    run([this] {
        beginWithProjects();
        StopWorkTime = "11:59 PM";
        StartProjectByName("Alpha");
        passMinutes(30);
        clock.set("2026-03-03 07:59");
        passMinutes(1);
        EXPECT_EQ(savedEntries().size(), 1);
        EXPECT_TRUE(savedEntries().first().startsWith("Alpha;1001;12:00 AM;;"));
        EXPECT_EQ(history().first(), "Alpha|3/2/2026|30|0");
        EXPECT_TRUE(screen(Screen::frmSTM)->isVisible());
    });
}

TEST_F(OddMoments, ALogOutSavesWhatRunsAndTheNextStartGoesOn) {
    run([this] {
        beginWithProjects();
        StartProjectByName("Alpha");
        passMinutes(20);
        Control().smuiTimeCtrl.click("BREAK");
        passMinutes(7);
        program->saveForLogOut();
        EXPECT_EQ(savedEntries(), QStringList{"Alpha;1001;8:00 AM;;7 Minutes;27 Minutes"});
        EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|27|7"});
        passMinutes(3);
        begin();
        EXPECT_TRUE(EntryRunning());
        EXPECT_FALSE(DayStopped);
        EXPECT_EQ(DayEntries.value(0).TotalTime, "30 Minutes");
        EXPECT_EQ(DayEntries.value(0).BreakTime, "10 Minutes"); // it goes on
        passMinutes(1);
        Control().smuiTimeCtrl.click("STOP");
        program->saveForLogOut(); // a stopped day stays stopped
        EXPECT_EQ(savedEntries(), QStringList{"Alpha;1001;8:00 AM;8:31 AM;11 Minutes;31 Minutes"});
        EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|31|11"});
    });
}

TEST_F(OddMoments, ALogOutOfACollectionsViewerLeavesDayAndLayoutToTheirOwner) {
    const char stored[] = R"({"keys": {"Software\\brindlemoor-ware\\Kelvrane": {"Version": "99.0"}},
        "sections": {"SingleTimerView": {"bGraphShowing": "True", "iLastMeWidth": "12000"}}})";
    write("settings.json", stored);
    write("Fileinfo.dat.temp", "being written by another process");
    write("Sheets.col", "<xml>\r\n <o:File HRef=\"Acme.htm\"/>\r\n</xml>\r\n");
    bool loggedOut = false;
    run([&] {
        program = std::make_unique<Program>(PortChoices{.clock = &clock, .timers = &timers});
        QTimer::singleShot(50, program.get(), [&] {
            EXPECT_TRUE(program->screens().isVisible(Screen::frmCollectionViewer));
            program->saveForLogOut();
            loggedOut = true;
            ports.screens->unload(Screen::frmCollectionViewer);
        });
        EXPECT_EQ(program->start(InAppPath("Sheets.col")), StartResult::Ended);
        EXPECT_TRUE(loggedOut);
        EXPECT_EQ(ports.settings->section("SingleTimerView", "bGraphShowing", {}), "True");
        EXPECT_EQ(ports.settings->section("SingleTimerView", "iLastMeWidth", {}), "12000");
    });
    QFile temporary(InAppPath("Fileinfo.dat.temp"));
    ASSERT_TRUE(temporary.open(QIODevice::ReadOnly));
    EXPECT_EQ(temporary.readAll(), "being written by another process");
}

TEST_F(OddMoments, TheCountdownRunsOutBehindABox) {
    struct Case {
        const char* name;
        Screen below; ///< the active window that the box stands above
        std::function<void()> ask;
    };
    const Case cases[] = {
        {"message box over the control screen", Screen::frmSTM,
         [] { TrayMenuClick("mnuSysTrayExit"); }},
        {"message box over the prompt", Screen::frmExit, [] { TrayMenuClick("mnuSysTrayExit"); }},
        {"message box over none", Screen::frmTip, [] { TrayMenuClick("mnuSysTrayExit"); }},
        {"file dialog over the control screen", Screen::frmSTM,
         [] {
             EXPECT_EQ(ports.dialogs->openFile({.title = "Open",
                                                .folder = AppPath(),
                                                .filter = "Database Files ( *.mdb ) |*.mdb",
                                                .defaultExtension = ".mdb"}),
                       std::nullopt);
         }},
        {"delete question", Screen::frmSTM, [] { DeleteDayEntry(0); }},
    };
    for (const Case& odd : cases)
        run([&] {
            SCOPED_TRACE(odd.name);
            QFile::remove(InAppPath("Fileinfo.dat"));
            clock.set("2026-03-02 16:30");
            beginWithProjects();
            StartProjectByName("Alpha");
            passMinutes(30);
            ASSERT_TRUE(program->screens().isVisible(Screen::frmExit));
            activate(screen(odd.below));
            boxes.seen = 0;
            boxes.next([this](QWidget*) { passMinutes(18); });
            odd.ask();
            EXPECT_EQ(boxes.seen, 1);
            EXPECT_FALSE(program->hasEnded());
            EXPECT_TRUE(DayStopped);
            EXPECT_FALSE(program->screens().isLoaded(Screen::frmSTM));
            EXPECT_FALSE(program->screens().isLoaded(Screen::frmExit));
            EXPECT_EQ(savedEntries(),
                      QStringList{"Alpha;1001;4:30 PM;5:15 PM;0 Minutes;45 Minutes"});
            EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|45|0"});
            TrayMenuClick("mnuSystrayViewProjectInfo");
            EXPECT_TRUE(program->screens().isVisible(Screen::frmSTM));
            StartProjectByName("Beta");
            EXPECT_EQ(DayEntries.size(), 2);
        });
}

TEST_F(OddMoments, ScreensGoBehindTheirOwnBoxes) {
    run([this] {
        beginWithProjects();
        StartProjectByName("Alpha");
        passMinutes(5);
        ports.screens->show(Screen::frmDataBase);
        activate(screen(Screen::frmDataBase));
        for (int step = 0; step < 2; ++step)
            Manager().buttons.click("CmdUp");
        const int before = boxes.seen;
        boxes.next([](QWidget*) { UnloadAllForms(); });
        Manager().smuiPanel0.click("SELECT"); // the inactive project: a question
        EXPECT_EQ(boxes.seen, before + 1);
        EXPECT_FALSE(program->screens().isLoaded(Screen::frmDataBase));
        EXPECT_FALSE(ProjectTable);
        EXPECT_EQ(DayEntries.size(), 1);

        TrayMenuClick("mnuSystrayViewProjectInfo");
        activate(screen(Screen::frmSTM));
        boxes.next([](QWidget*) { QuitAndSaveDay(); });
        DeleteDayEntry(0);
        EXPECT_TRUE(DayStopped);
        EXPECT_EQ(savedEntries().size(), 1);
        EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|5|0"});
    });
}

TEST_F(OddMoments, PicksAndUnloadsWhileTheListFills) {
    struct Case {
        const char* name;
        std::function<void()> meanwhile;
        bool stays;
    };
    const Case cases[] = {
        {"tray pick", [] { StartProjectByName("Beta"); }, true},
        {"tray pick and all screens go",
         [] {
             StartProjectByName("Beta");
             UnloadAllForms();
         },
         false},
        {"opened anew",
         [] {
             UnloadAllForms();
             ports.screens->show(Screen::frmDataBase);
             StartProjectByName("Beta");
         },
         true},
    };
    for (const Case& odd : cases)
        run([&] {
            SCOPED_TRACE(odd.name);
            QFile::remove(InAppPath("Fileinfo.dat"));
            clock.set("2026-03-02 09:00");
            beginWithProjects(3000);
            StartProjectByName("Alpha");
            passMinutes(10);
            ports.screens->show(Screen::frmDataBase);
            bool during = false;
            QTimer::singleShot(0, program.get(), [&] {
                during = Manager().state.Loading;
                odd.meanwhile();
            });
            Manager().smuiPanel0.click("LIST_VIEW");
            EXPECT_TRUE(during);
            EXPECT_FALSE(Manager().state.Loading);
            EXPECT_EQ(program->screens().isLoaded(Screen::frmDataBase), odd.stays);
            EXPECT_EQ(savedEntries(),
                      (QStringList{"Alpha;1001;9:00 AM;9:10 AM;0 Minutes;10 Minutes",
                                   "Beta;1002;9:10 AM;;0 Minutes;0 Minutes"}));
            EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|10|0", "Beta|3/2/2026|0|0"}));
            UnloadAllForms();
            EXPECT_FALSE(ProjectTable);
        });
}

TEST_F(OddMoments, AChoiceWhileTheStopIsSavedKeepsTheDayOpen) {
    constexpr int progressSteps = 7; // each of them lets events through
    std::function<void(int)> chooseAfter = [&](int steps) {
        QTimer::singleShot(0, program.get(), [&chooseAfter, steps] {
            steps > 0 ? chooseAfter(steps - 1) : StartProjectByName("Beta");
        });
    };
    for (int steps = 0; steps < progressSteps; ++steps)
        run([&] {
            SCOPED_TRACE(steps);
            QFile::remove(InAppPath("Fileinfo.dat"));
            clock.set("2026-03-02 08:00");
            beginWithProjects();
            StartProjectByName("Alpha");
            passMinutes(10);
            const int before = boxes.seen;
            chooseAfter(steps);
            Control().smuiTimeCtrl.click("STOP");
            while (DayEntries.size() < 2)
                QCoreApplication::processEvents();
            EXPECT_EQ(boxes.seen, before); // nothing was locked
            EXPECT_FALSE(DayStopped);
            EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|10|0", "Beta|3/2/2026|0|0"}));
            passMinutes(10);
            EXPECT_EQ(DayEntries.value(1).TotalTime, "10 Minutes");
            Control().smuiTimeCtrl.click("STOP");
            EXPECT_TRUE(DayStopped);
            EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|10|0", "Beta|3/2/2026|10|0"}));
        });
}

TEST_F(OddMoments, AHistoryThatIsLockedOverMidnightOpensNoBoxAndLosesNothing) {
    run([this] {
        beginWithProjects();
        StopWorkTime = "11:59 PM";
        AutoSave = "On";
        clock.set("2026-03-02 23:34");
        StartProjectByName("Alpha");
        passMinutes(10);
        auto other = std::make_unique<Connection>(InAppPath("DayInfo.mdb"));
        other->execute("BEGIN EXCLUSIVE");
        const int before = boxes.seen;
        passMinutes(21); // 11:44 PM to 12:05 AM
        EXPECT_EQ(DayEntries.value(0).StartTime, "12:00 AM");
        EXPECT_EQ(boxes.seen, before);
        other.reset();
        passMinutes(1);
        EXPECT_EQ(savedEntries().size(), 1);
        EXPECT_TRUE(savedEntries().value(0).startsWith("Alpha;1001;12:00 AM;;"));
        EXPECT_EQ(DayEntries.value(0).TotalTime, "6 Minutes");
        Control().smuiTimeCtrl.click("STOP");
        EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|25|0", "Alpha|3/3/2026|6|0"}));
    });
}

TEST_F(OddMoments, SettingsOfAnyKindStartTheProgram) {
    run([this] { begin(); }); // the install step
    program.reset();
    QFile stored(InAppPath("settings.json"));
    ASSERT_TRUE(stored.open(QIODevice::ReadOnly));
    const QByteArray sound = stored.readAll();
    const auto spoilt = [&sound](const QByteArray& values) {
        QByteArray bytes = sound; // every value of every key but the database's place
        const qsizetype at = bytes.indexOf("\"AutoSave\"");
        return bytes.insert(at, values);
    };
    const QByteArray layout =
        R"({"keys": {}, "sections": {"SingleTimerView": {"iLastMeWidth": "999999",
            "iLastMeHeight": "999999", "iLastSplitter1Pos": "-1e308", "iLastSplitter2Pos": "nan",
            "SplitterTop": "inf", "fLastSizePercent": "x", "ChartType": "999", "bGraphShowing": 7,
            "bWeekVeiwShowing": "True"}}})";
    const QByteArray contents[] = {
        QByteArray(1000, '\0'),
        QByteArray("\xff\xfe\x00{\x01", 5),
        "[1, 2, 3]",
        "{\"keys\": [], \"sections\": 5}",
        QByteArray(100'000, '['),
        "{\"keys\": {\"x\": \"" + QByteArray(17'000'000, 'x') + "\"}}",
        layout,
        spoilt(R"("ShowNumProjects": "many", "EndOfDayTimeInterval": 1e9, "AutoDayReminderValue":
                  -5, "StopWorkTime": 17, "StartWorkTime": [], "AutoStartDay": {}, "x": null,)"),
    };
    for (const QByteArray& bytes : contents) {
        SCOPED_TRACE(bytes.left(60).toStdString());
        write("settings.json", bytes);
        run([&] {
            const StartResult result = begin();
            if (result == StartResult::Ended)
                return; // without its project database, when nobody chooses another
            EXPECT_TRUE(program->screens().isVisible(Screen::frmSTM));
            passMinutes(16);
        });
        run([&] {
            write("settings.json", sound);
            beginWithProjects();
            StartProjectByName("Alpha");
            EXPECT_TRUE(EntryRunning());
        });
    }
}

TEST_F(OddMoments, ADatabaseThatIsNoneIsReportedAtTheStart) {
    run([this] {
        beginWithProjects();
        StartProjectByName("Alpha");
        passMinutes(5);
        for (const char* name : {"DayInfo.mdb", "kelvrane.mdb"}) {
            SCOPED_TRACE(name);
            program.reset();
            QFile file(InAppPath(name));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            const QByteArray whole = file.readAll();
            file.close();
            write(name, "no database");
            EXPECT_EQ(begin(), StartResult::Running);
            EXPECT_TRUE(program->screens().isVisible(Screen::frmSTM));
            EXPECT_TRUE(EntryRunning());
            ports.screens->show(Screen::frmDataBase);
            Manager().smuiPanel0.click("LIST_VIEW");
            Manager().smuiPanel0.click("SELECT");
            ports.screens->unload(Screen::frmDataBase);
            passMinutes(1);
            write(name, whole);
            passMinutes(15);
        }
        Control().smuiTimeCtrl.click("STOP");
        EXPECT_EQ(savedEntries(), QStringList{"Alpha;1001;8:00 AM;8:37 AM;0 Minutes;37 Minutes"});
        EXPECT_EQ(history(), QStringList{"Alpha|3/2/2026|37|0"});
    });
}

} // namespace
} // namespace kelvrane
