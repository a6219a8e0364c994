#include "collections/viewer_model.h"
#include "frame/globals.h"
#include "frame/other_process.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "frame/trace.h"
#include "options/options_model.h"
#include "options/program_options.h"
#include "platform/connection.h"
#include "startup/command_line.h"
#include "startup/main_program.h"
#include "support/working_day_fixture.h"
#include "tray/hidden_form.h"

#include <QFile>

namespace kelvrane {
namespace {

class Start : public testing::WorkingDayTest {
  protected:
    Start() {
        for (const char* name : {"StopWorkTime", "StartWorkTime"})
            RegSetKeyValue(keys::Main, name, QString("8:15 AM"));
        RegSetKeyValue(keys::Main, "ShowNumProjects", 7);
        RegSetKeyValue(keys::Main, "ProjectDatabase", ProjectDatabase);
        RegSetKeyValue(keys::SpreadSheetInfo, "StartOfWeek", 2);
        const QString project = ProjectDatabase;
        globals = {};
        ProjectDatabase = project;
        // One row: no question about example data.
        Connection connection(path("DayInfo.mdb"));
        connection.execute("INSERT INTO DayInfo (Date, ProjectName) VALUES (#3/1/2026#, 'Alpha')");
    }
    ~Start() override { UnloadHiddenForm(); }
};

TEST_F(Start, ReadsTheSettingsAndShowsTheControlScreen) {
    EXPECT_EQ(Main({}, false), StartResult::Running);
    EXPECT_EQ(ShowNumProjects, 7);
    EXPECT_EQ(StartWorkTime, "8:15 AM");
    EXPECT_EQ(StartOfWeek, "2");
    EXPECT_EQ(EndOfDayTimeInterval, 0); // a missing number stays 0
    EXPECT_TRUE(NoRecentProjects);
    EXPECT_TRUE(tray.iconShown);
    EXPECT_EQ(screens.shown, (QList<Screen>{Screen::frmSTM, Screen::frmTip}));
    EXPECT_TRUE(internet.requests.isEmpty()) << "no host is set";
    EXPECT_EQ(fileBytes("SSDBInfo.dat"),
              ("Current User;" + path("DayInfo.mdb") + ";\r\n").toUtf8());
    ASSERT_NE(TMR, nullptr);
}

TEST_F(Start, WithAHostTheNetworkIsAskedQuietlyAndNotAwaited) {
    RegSetKeyValue(keys::Main, "UpdateWebHost", QString("updates.example"));
    EXPECT_EQ(Main({}, false), StartResult::Running); // nothing answered yet
    EXPECT_EQ(internet.addresses(),
              (QStringList{"http://updates.example/updateinfo/kelvrane/userlog.txt",
                           "http://updates.example/updateinfo/kelvrane/kelvrane_version.txt"}));
    for (const InternetRequest& request : internet.requests)
        EXPECT_TRUE(request.quiet);
    internet.deliver(); // the host can't be reached: no box
}

TEST_F(Start, ASecondInstanceSaysSoAndTouchesNothing) {
    dialogs.expect("Kelvrane is already open and running.");
    EXPECT_EQ(Main({}, true), StartResult::Ended);
    EXPECT_EQ(dialogs.shown.first().title, "Application already running");
    EXPECT_TRUE(screens.shown.isEmpty());
    EXPECT_FALSE(QFile::exists(path("SSDBInfo.dat")));
}

TEST_F(Start, DebugTracesEachStep) {
    EXPECT_EQ(Main("debug", true), StartResult::Running);
    EXPECT_TRUE(DebugMode);
    EXPECT_EQ(screens.shown.first(), Screen::frmDebugWindow);
}

TEST_F(Start, BesideTheProcessThatKeepsTheDayNothingOfItIsLoaded) {
    const QByteArray day = "Time: 8:30 AM\nDate: 3/2/2026\nDay Info:\n"
                           "Alpha;1001;8:00 AM;;0 Minutes;30 Minutes\n\n\n";
    writeFile("Fileinfo.dat", day);
    KeepsDay = false;
    EXPECT_EQ(Main("debug", false), StartResult::Running);
    EXPECT_TRUE(DayEntries.isEmpty());
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(fileBytes("Fileinfo.dat"), day);
    EXPECT_EQ(history(), QStringList{"Alpha|3/1/2026||"});
    EXPECT_EQ(Status().text(), OtherProcessText);
    EXPECT_TRUE(Trace().lines().contains(OtherProcessText));
}

TEST_F(Start, AMissingHistoryEndsTheStart) {
    QFile::remove(path("DayInfo.mdb"));
    dialogs.expect(
        "The Day Information database (DayInfo.mdb) is missing.\rThis file must be located "
        "in the '" +
        folder.path() + "' folder.\rPlease reinstall Kelvrane.");
    EXPECT_EQ(Main({}, false), StartResult::Ended);
    EXPECT_FALSE(tray.iconShown);
    EXPECT_EQ(TMR, nullptr);
}

/// The project database is gone; the options come up as they do on screen, and the user does one
/// step of the script each time the program waits.
class LostDatabase : public Start {
  protected:
    LostDatabase() {
        QFile::rename(ProjectDatabase, other);
        WireOptions();
        screens.onLoad = [](Screen screen) {
            if (screen == Screen::frmOptions)
                LoadOptions();
        };
        screens.onUnload = [](Screen screen) {
            if (screen == Screen::frmOptions)
                UnloadOptions();
        };
        events.onYield = [this] {
            if (!script.isEmpty())
                script.takeFirst()();
        };
        dialogs.expect("' does not exist.  Please select a valid Kelvrane database location.");
    }
    void choose(const std::optional<QString>& file) {
        dialogs.expectFile(file);
        Options().smuiDatabase.press("DATABASELOC");
    }

    const QString former = ProjectDatabase;
    const QString other = path("moved.mdb");
    QList<std::function<void()>> script;
};

TEST_F(LostDatabase, IsChosenOnTheOptionsPageAfterSeveralTries) {
    writeFile("garbage.mdb", "not a database");
    script = {
        [&] {
            EXPECT_EQ(Options().Page, "DATABASE");
            for (const KeyedItem& page : Options().SmartTabStrip.items())
                EXPECT_EQ(page.visible, page.key == "DATABASE") << page.key.toStdString();
            EXPECT_EQ(Options().smuiDatabase.value("DATABASELOC"), former);
            choose(std::nullopt);
        },
        [&] {
            EXPECT_EQ(ProjectDatabase, former) << "cancelled: all as it was";
            dialogs.expect("This error was generated by the");
            choose(path("garbage.mdb"));
        },
        [&] {
            EXPECT_EQ(RegQueryValue(keys::Main, "ProjectDatabase"), former);
            choose(other);
        },
    };
    EXPECT_EQ(Main({}, false), StartResult::Running);
    EXPECT_TRUE(script.isEmpty());
    EXPECT_EQ(ProjectDatabase, other);
    EXPECT_EQ(RegQueryValue(keys::Main, "ProjectDatabase"), other);
    EXPECT_EQ(screens.unloaded.last(), Screen::frmOptions);
    EXPECT_TRUE(screens.isVisible(Screen::frmSTM));
}

TEST_F(LostDatabase, ClosingTheOptionsEndsTheStart) {
    script = {[] { Options().smuiSelect.click("CLOSE"); }};
    EXPECT_EQ(Main({}, false), StartResult::Ended);
    EXPECT_FALSE(tray.iconShown);
    EXPECT_EQ(RegQueryValue(keys::Main, "ProjectDatabase"), former);
}

TEST_F(LostDatabase, AShutDownCountsAsClosing) {
    EXPECT_EQ(Main({}, false), StartResult::Ended); // the wait ends by itself
    EXPECT_FALSE(screens.isLoaded(Screen::frmOptions));
    EXPECT_FALSE(tray.iconShown);
}

TEST_F(Start, CommandLinesAreRead) {
    writeFile("a b.col", "");
    const struct {
        QString text;
        Command command;
        QString operand;
    } rows[] = {
        {"", Command::None, ""},
        {"debug", Command::Debug, ""},
        {"Debug", Command::Unknown, ""},
        {'"' + path("a b.col") + '"', Command::LoadViewer,
         QFileInfo(path("a b.col")).canonicalFilePath()},
        {"/nowhere/x.COL", Command::LoadViewer, ""},
        {"ForceUpdate next.txt", Command::ForceUpdate, "next.txt"},
        {"ForceUpdate ", Command::ForceUpdate, ""},
        {"ForceUpdate", Command::Broken, ""},
        {"forceupdate x", Command::Unknown, ""},
    };
    for (const auto& row : rows) {
        const CommandLine line = ParseCommandLine(row.text);
        EXPECT_EQ(line.command, row.command) << row.text.toStdString();
        EXPECT_EQ(line.operand, row.operand) << row.text.toStdString();
    }
    dialogs.expect("There is not an update available at this time.");
    EXPECT_EQ(Main("ForceUpdate next.txt", false), StartResult::Ended);
    EXPECT_TRUE(screens.shown.isEmpty());
    EXPECT_EQ(TMR, nullptr);
    EXPECT_EQ(Main("ForceUpdate", false), StartResult::Running);
}

TEST_F(Start, ACollectionIsShownUntilItsViewerCloses) {
    writeFile("a b.COL", "");
    bool waited = false;
    events.onYield = [&] {
        waited = true;
        EXPECT_TRUE(screens.isVisible(Screen::frmCollectionViewer));
        EXPECT_EQ(TMR, nullptr) << "no tick runs on this road";
        screens.unload(Screen::frmCollectionViewer);
    };
    EXPECT_EQ(Main('"' + path("a b.COL") + '"', true), StartResult::Ended);
    EXPECT_TRUE(waited);
    EXPECT_EQ(Viewer().ViewerName, "a b");
    EXPECT_EQ(Viewer().ViewerLoc, QFileInfo(path("a b.COL")).canonicalPath());
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmCollectionViewer});
    EXPECT_FALSE(QFile::exists(path("SSDBInfo.dat")));
    EXPECT_EQ(Main("/nowhere/x.col", true), StartResult::Ended);
    EXPECT_EQ(Viewer().ViewerLoc + Viewer().ViewerName, "");
    Viewer().LoadMode.clear();
}

} // namespace
} // namespace kelvrane
