// Databases, names and settings that are not what they should be, in the middle of a day: it is
// reported, the day file stays right, and once the cause is mended the history is whole.
#include "frame/globals.h"
#include "frame/settings.h"
#include "frame/tray_menus.h"
#include "platform/recordset.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "startup/main_program.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/control_views.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/working_day.h"
#include "tray/hidden_form.h"
#include "tray/minute_tick.h"

#include <QDir>
#include <QFile>

#include <functional>
#include <optional>
#include <unistd.h>

namespace kelvrane {
namespace {

class BrokenInput : public testing::WorkingDayTest {
  protected:
    struct Trouble {
        const char* name;
        std::function<void(const QString& database)> make;
        bool compacts = false; ///< a whole database, though not one of ours
        bool backsUp = false;  ///< can be read, so its backup is made anew
    };

    BrokenInput() {
        hearTicks();
        StopWorkTime = "11:00 PM"; // no end-of-day prompt in these tests
    }
    void hearTicks() {
        QObject::connect(counter.get(), &cTimer::Minute, [] { TMR_Minute(); });
    }

    /// Every way in which a database can fail. Mend() undoes the last one.
    QList<Trouble> troubles(const QString& table) {
        QList<Trouble> all{
            {"no database",
             [this](const QString& file) { writeFile(file, "this is not a database at all"); }},
            {"empty file", [this](const QString& file) { writeFile(file, {}); }, true, true},
            {"no such table",
             [this, table](const QString& file) {
                 Connection(path(file)).execute("DROP TABLE " + table);
             },
             true, true},
            {"cut off",
             [this](const QString& file) {
                 QFile whole(path(file));
                 ASSERT_TRUE(whole.resize(whole.size() / 2 + 100));
             }},
            {"locked",
             [this](const QString& file) {
                 m_other.emplace(path(file));
                 m_other->execute("BEGIN EXCLUSIVE");
             }},
        };
        if (geteuid() != 0) // to root everything is writable
            all.append({"read-only",
                        [this](const QString& file) {
                            QFile::setPermissions(path(file), QFile::ReadOwner);
                        },
                        false, true});
        return all;
    }
    void spoil(const Trouble& trouble, const QString& file) {
        m_spoilt = file;
        m_whole = fileBytes(file);
        trouble.make(file);
    }
    void mend() {
        if (m_other)
            m_other->execute("ROLLBACK");
        m_other.reset();
        QFile::setPermissions(path(m_spoilt), QFile::ReadOwner | QFile::WriteOwner);
        writeFile(m_spoilt, m_whole);
    }
    /// How many boxes came that hold this text, and only such.
    qsizetype reports(const QString& part) {
        const qsizetype count = dialogs.shown.size();
        for (const Box& box : std::as_const(dialogs.shown))
            EXPECT_TRUE(box.text.contains(part)) << box.text.toStdString();
        dialogs.shown.clear();
        return count;
    }
    /// "Name" of each line of an entry in the day file.
    QStringList savedNames() {
        QStringList names;
        const QList<QByteArray> lines = fileBytes("Fileinfo.dat").split('\n');
        for (qsizetype line = 3; line < lines.size() && !lines[line].isEmpty(); ++line)
            names.append(QString::fromUtf8(lines[line].split(';').first()));
        return names;
    }
    void addProject(const QString& name, const QString& number) {
        Connection connection(ProjectDatabase);
        Recordset rows(connection, "ProjectInfo", Recordset::Optimistic);
        rows.addNew();
        rows.setValue("Project_Name", name);
        rows.setValue("Project_Number", number);
        rows.setValue("Active", true);
        rows.update();
    }

  private:
    QString m_spoilt;
    QByteArray m_whole;
    std::optional<Connection> m_other;
};

TEST_F(BrokenInput, AHistoryThatFailsIsReportedAndTheDayGoesOn) {
    const QString history = "DayInfo.mdb";
    const QByteArray fresh = fileBytes(history);
    for (const Trouble& trouble : troubles("DayInfo")) {
        SCOPED_TRACE(trouble.name);
        dialogs.strict = false;
        clock.set("2026-03-02 09:05");
        writeFile(history, fresh);
        QFile::remove(path("Fileinfo.dat"));
        QFile::remove(path("DayInfo_Backup.mdb"));
        restart();
        hearTicks();
        LoadControlScreen();
        start("Alpha");
        passMinutes(2);
        StopDay();
        const QByteArray backup = fileBytes("DayInfo_Backup.mdb");
        EXPECT_FALSE(backup.isEmpty());
        EXPECT_TRUE(dialogs.shown.isEmpty());

        spoil(trouble, history);
        const QByteArray spoilt = fileBytes(history);
        // A command by hand says so, unless the history is merely in use.
        const int said = QByteArray(trouble.name) == "locked" ? 0 : 1;
        start("Beta");
        EXPECT_EQ(reports("AddDataToDayInfoDataBase"), said);
        passMinutes(12); // over the quarter of the hour: nobody may be there
        EXPECT_EQ(reports("AddDataToDayInfoDataBase"), 0);
        ShowWeekView(true, true); // keeps what it showed
        UnloadControlScreen();
        LoadControlScreen();
        EXPECT_EQ(reports("AddDataToDayInfoDataBase"), said);
        StopDay();
        EXPECT_EQ(reports("was generated by "), said); // what isn't written isn't compacted
        EXPECT_TRUE(DayStopped);
        EXPECT_EQ(savedNames(), (QStringList{"Alpha", "Beta"}));
        if (!trouble.compacts)
            EXPECT_EQ(fileBytes(history), spoilt);
        if (!trouble.backsUp)
            EXPECT_EQ(fileBytes("DayInfo_Backup.mdb"), backup);
        EXPECT_FALSE(QFile::exists(path("temp.mdb")));

        mend();
        start("Gamma");
        EXPECT_TRUE(dialogs.shown.isEmpty());
        EXPECT_EQ(this->history(),
                  (QStringList{"Alpha|3/2/2026|2|0", "Beta|3/2/2026|12|0", "Gamma|3/2/2026|0|0"}));
        StopDay();
        EXPECT_TRUE(dialogs.shown.isEmpty());
    }
}

TEST_F(BrokenInput, AProjectDatabaseThatFailsLeavesTheRunningProject) {
    const QString projects = "kelvrane.mdb";
    const frmInfo form;
    TMR = counter.get();
    LoadControlScreen();
    start("Alpha");
    passMinutes(5);
    const QList<DayEntry> before = DayEntries;
    Menus().mnuRProjects.setCaption("MnuRecProj1", "Beta");
    Menus().mnuRProjects.setVisible("MnuRecProj1", true);
    for (const Trouble& trouble : troubles("ProjectInfo")) {
        if (QByteArray(trouble.name) == "read-only")
            continue; // enough for a start
        SCOPED_TRACE(trouble.name);
        dialogs.strict = false;
        spoil(trouble, projects);
        Menus().mnuRProjects.click("MnuRecProj1");
        EXPECT_EQ(reports("This error was generated by the MnuRecProj_Click function."), 1);
        EXPECT_EQ(DayEntries, before);
        EXPECT_TRUE(EntryRunning());
        EXPECT_FALSE(DayStopped);
        EXPECT_EQ(Control().smuiProjectStatus.value("PROJECT_NAME"), "Alpha");
        EXPECT_FALSE(ProjectTable);
        mend();
    }
    passMinutes(5);
    Menus().mnuRProjects.click("MnuRecProj1");
    EXPECT_EQ(savedNames(), (QStringList{"Alpha", "Beta"}));
    EXPECT_EQ(history(), (QStringList{"Alpha|3/2/2026|10|0", "Beta|3/2/2026|0|0"}));
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(BrokenInput, ADatabaseListThatCannotBeWrittenStopsNoStart) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("SSDBInfo.dat.temp")); // in the way of any write
    ASSERT_TRUE(QDir(folder.path()).mkdir("SSDBInfo.dat.tmp"));
    ASSERT_TRUE(QDir(folder.path()).mkdir("SSDBInfo.dat"));
    dialogs.strict = false;
    SaveRegText(ProjectDatabase, keys::Main, "ProjectDatabase");
    EXPECT_EQ(Main({}, false), StartResult::Running);
    EXPECT_TRUE(screens.isVisible(Screen::frmSTM));
    UnloadHiddenForm();
}

TEST_F(BrokenInput, AListLimitThatCannotBeReadLetsProjectsBeChosen) {
    SaveRegText("Alpha", keys::RecentInfo, "File1");
    ShowNumProjects = 0;
    NoRecentProjects = false;
    WireControlScreen();
    LoadControlScreen();
    OpenProjectTable("ReadOnly");
    selectionSinks.day.select("Beta", "1002");
    CloseProjectTable();
    EXPECT_EQ(savedNames(), QStringList{"Beta"});
    EXPECT_EQ(RecentProjects, QList<QString>{"Beta"});
}

TEST_F(BrokenInput, OddNamesAreWorkedOnAndComeBack) {
    const QString names[] = {
        QString(R"(say "hi" `now`)"),
        QString("Research & Reading"),
        QString("<b>bold</b> <img src=x>"),
        QString(10'000, 'x'),
        QString::fromUtf8("\xf0\x9f\x9a\x80 caf\xc3\xa9 \xe2\x82\xac"),
        QString("#3/2/2026#"),
        QString("%1 %s %n"),
        QString(" blanks "),
    };
    for (const QString& name : names) {
        SCOPED_TRACE(name.left(40).toStdString());
        QFile::remove(path("Fileinfo.dat"));
        clock.set("2026-03-02 09:05");
        restart();
        hearTicks();
        LoadControlScreen();
        addProject(name, "7");
        start(name);
        passMinutes(3);
        restart();
        LoadControlScreen();
        ASSERT_EQ(DayEntries.size(), 1);
        EXPECT_EQ(DayEntries[0].ProjectName, name);
        EXPECT_TRUE(EntryRunning());
        StopDay();
        EXPECT_EQ(history().last(), name + "|3/2/2026|3|0");
    }
}

TEST_F(BrokenInput, NamesThatBreakTheirQueryOrTheirLineHarmNoOther) {
    const QString names[] = {QString("O'Neil"), QString("semi;colon"), QString("';--"),
                             QString("nul") + QChar(QChar::Null) + "name", QString(8, ';')};
    dialogs.strict = false;
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        QFile::remove(path("Fileinfo.dat"));
        Connection(path("DayInfo.mdb")).execute("DELETE FROM DayInfo");
        clock.set("2026-03-02 09:05");
        restart();
        hearTicks();
        LoadControlScreen();
        addProject(name, "7");
        start("Alpha");
        passMinutes(3);
        try {
            start(name);
        } catch (const RuntimeError&) {
            EXPECT_EQ(DayEntries.size(), 1);
            EXPECT_TRUE(EntryRunning());
        }
        passMinutes(2);
        start("Beta");
        passMinutes(2);
        StopDay();
        EXPECT_EQ(DayEntries.last().ProjectName, "Beta");
        restart();
        LoadControlScreen();
        ASSERT_FALSE(DayEntries.isEmpty());
        EXPECT_EQ(DayEntries[0].ProjectName, "Alpha");
        EXPECT_TRUE(history().first().startsWith("Alpha|3/2/2026|"));
    }
}

} // namespace
} // namespace kelvrane
