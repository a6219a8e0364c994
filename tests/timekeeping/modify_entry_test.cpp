#include "frame/globals.h"
#include "platform/recordset.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/modify_entry.h"
#include "timekeeping/modify_model.h"
#include "timekeeping/modify_rules.h"
#include "timekeeping/working_day.h"
#include "timevalues/day_file.h"

using namespace kelvrane;
using namespace kelvrane::testing;

namespace {

const QString formatText = QStringLiteral(
    "Format must be h:mm AM/PM\n\r Minimun value is 12:00 AM\n\r Maximum value is 11:59 PM");

/// Alpha 9:00 to 10:00, Beta 10:00 to 11:00, Gamma running since 11:00; it is 12:00.
class ModifyEntryTest : public WorkingDayTest {
  protected:
    ModifyEntryTest() {
        screens.onUnload = [](Screen screen) {
            if (screen == Screen::frmModify)
                FrmModify_Unload();
        };
        QObject::connect(counter.get(), &cTimer::Minute, RefreshRunningEntry);
        for (const char* name : {"Alpha", "Beta", "Gamma"}) {
            start(QString::fromLatin1(name));
            passMinutes(60);
        }
        WireModify();
    }
    ~ModifyEntryTest() override { FrmModify_Unload(); }

    void open(int index) {
        FrmModify_Unload();
        SelectedEntryKey = QStringLiteral("START TIME") + QString::number(index);
        ModifyOpen = true;
        screens.loaded.insert(Screen::frmModify);
        FrmModify_Load();
    }
    void edit(const char* row, const char* text) {
        Modify().SmuiModify.edit(QString::fromLatin1(row), QString::fromLatin1(text));
    }
    QString row(const char* key) { return Modify().SmuiModify.value(QString::fromLatin1(key)); }
    void click(const char* button) { Modify().buttons.click(QString::fromLatin1(button)); }
    /// "start-stop total" of each entry.
    static QStringList times() {
        QStringList lines;
        for (const DayEntry& entry : DayEntries)
            lines.append(entry.StartTime + QLatin1Char('-') + entry.StopTime + QLatin1Char(' ') +
                         entry.TotalTime);
        return lines;
    }
};

TEST_F(ModifyEntryTest, OpensOnTheEntryOfTheRowChosen) {
    open(1);
    EXPECT_EQ(Modify().heading, "Beta");
    const char* rows[][2] = {{"PROJECT NAME", "Beta"},
                             {"PROJECT NUMBER", "1002"},
                             {"START TIME", "10:00 AM"},
                             {"STOP TIME", "11:00 AM"},
                             {"BREAK TIME", "0 Minutes"}};
    for (const auto& [key, value] : rows)
        EXPECT_EQ(row(key), value);
    click("cmdCancel"); // nothing was edited: no question
    EXPECT_EQ(screens.unloaded.last(), Screen::frmModify);
    EXPECT_FALSE(ModifyOpen);
}

TEST_F(ModifyEntryTest, AChangeMovesTheNeighbourThatTouches) {
    struct Case {
        const char* name;
        int index;
        const char* row;
        const char* text;
        QStringList expected;
    };
    const QString alpha = "9:00 AM-10:00 AM 1 Hours 0 Minutes";
    const QString beta = "10:00 AM-11:00 AM 1 Hours 0 Minutes";
    const QString gamma = "11:00 AM- 1 Hours 0 Minutes";
    const Case cases[] = {
        {"start back",
         1,
         "START TIME",
         "9:30 am",
         {"9:00 AM-9:30 AM 30 Minutes", "9:30 AM-11:00 AM 1 Hours 30 Minutes", gamma}},
        {"stop forward",
         0,
         "STOP TIME",
         " 10:20 am ",
         {"9:00 AM-10:20 AM 1 Hours 20 Minutes", "10:20 AM-11:00 AM 40 Minutes", gamma}},
        {"stop before the running entry",
         1,
         "STOP TIME",
         "11:40 AM",
         {alpha, "10:00 AM-11:40 AM 1 Hours 40 Minutes", "11:40 AM- 20 Minutes"}},
        {"running start",
         2,
         "START TIME",
         "10:30 AM",
         {alpha, "10:00 AM-10:30 AM 30 Minutes", "10:30 AM- 1 Hours 30 Minutes"}},
        {"stop equal to the start",
         1,
         "STOP TIME",
         "10:00 AM",
         {alpha, "10:00 AM-10:00 AM 0 Minutes", "10:00 AM- 2 Hours 0 Minutes"}},
    };
    const QList<DayEntry> day = DayEntries;
    for (const Case& test : cases) {
        DayEntries = day;
        open(test.index);
        edit(test.row, test.text);
        EXPECT_FALSE(VerifyUpdate()) << test.name;
        EXPECT_EQ(times(), test.expected) << test.name;
        EXPECT_TRUE(fileBytes("Fileinfo.dat").contains(DayEntries[test.index].StartTime.toUtf8()));
    }
}

TEST_F(ModifyEntryTest, EntriesThatDoNotTouchStay) {
    DayEntries[0].StopTime = "9:50 AM"; // a gap before Beta
    open(1);
    edit("START TIME", "10:10 AM");
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(DayEntries[0].StopTime, "9:50 AM");
    EXPECT_EQ(DayEntries[1].StartTime, "10:10 AM");

    DayEntries[1].StopTime =
        "10:45 AM"; // a gap before the running entry, which is moved all the same
    open(1);
    edit("STOP TIME", "10:50 AM");
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(DayEntries[2].StartTime, "10:50 AM");
}

TEST_F(ModifyEntryTest, ANeighbourMovesOnlyWhereItMust) {
    DayEntries[1].StopTime = "10:45 AM"; // a gap before the running entry
    open(1);
    edit("BREAK TIME", "5 Minutes");
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(DayEntries[2].StartTime, "11:00 AM"); // only the break was edited
    DayEntries[2].StopTime = "11:30 AM";
    open(1);
    edit("STOP TIME", "11:10 AM"); // over the gap and into the next entry
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(times().last(), "11:10 AM-11:30 AM 20 Minutes");
    DayEntries[0].StopTime = "9:50 AM"; // a gap in front
    open(1);
    edit("START TIME", "9:40 AM"); // into the entry in front
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(times().first(), "9:00 AM-9:40 AM 40 Minutes");
}

TEST_F(ModifyEntryTest, AnotherProjectTakesItsRowAlong) {
    start("Beta"); // a second entry of it, at 12:00
    passMinutes(30);
    WireModify();
    for (const auto& [index, kept] : {std::pair(1, 30), std::pair(0, 0)}) {
        open(index);
        selectionSinks.modify.select("Gamma", "Alpha");
        click("cmdUpdate");
        const QString former = index == 1 ? "Beta" : "Alpha";
        const QString row = QStringLiteral("%1|3/2/2026|%2|0").arg(former).arg(kept);
        EXPECT_EQ(history().contains(row), kept > 0) << history().join('\n').toStdString();
    }
    EXPECT_TRUE(history().contains("Gamma|3/2/2026|180|0"));
    EXPECT_EQ(history().size(), 2);
}

TEST_F(ModifyEntryTest, EachRefusalHasItsMessageAndChangesNothing) {
    struct Case {
        int index;
        const char *row, *text, *title, *message;
    };
    const QByteArray form = formatText.toLatin1();
    const Case cases[] = {
        {1, "START TIME", "9:30AM", "Invalid Start Time Format", form},
        {1, "START TIME", "25:99 XM", "Invalid Start Time Format", form},
        {1, "START TIME", "", "Invalid Start Time Format", form},
        {1, "STOP TIME", "10:60 AM", "Invalid Stop Time Format", form},
        {1, "BREAK TIME", "1 Hour 5 Minutes", "Invalid Break Time",
         "Invalid Break time format.  Break time format is H hours and mm minutes, where h hours "
         "is optional."},
        {1, "BREAK TIME", "abc", "Invalid Break Time", "Invalid Break time format."},
        {1, "BREAK TIME", "61 Minutes", "Invalid Time", "Break time can not exceed total time"},
        {1, "STOP TIME", "", "Invalid Time", "Only the last projects stop value can be empty"},
        {1, "STOP TIME", "9:59 AM", "Invalid Time",
         "Can not set project's stop time before the start time."},
        {2, "START TIME", "12:01 PM", "Invalid Time",
         "Time(s) specified can not be after the current time"},
        {2, "STOP TIME", "12:01 PM", "Invalid Time",
         "Time(s) specified can not be after the current time"},
        {1, "START TIME", "8:59 AM", "Invalid Time",
         "Start time value exceeds previous projects start time"},
        {0, "STOP TIME", "11:01 AM", "Invalid Time",
         "Stop time value exceeds next projects stop time or exceeds current time"},
        {2, "START TIME", "25:00 PM", "Invalid Time",
         "Time(s) specified can not be after the current time"},
    };
    const QList<DayEntry> day = DayEntries;
    const QByteArray file = fileBytes("Fileinfo.dat");
    for (const Case& test : cases) {
        open(test.index);
        dialogs.expect(QString::fromLatin1(test.message));
        edit(test.row, test.text);
        click("cmdUpdate");
        EXPECT_EQ(dialogs.shown.last().title, test.title) << test.text;
        EXPECT_EQ(DayEntries, day) << test.text;
        EXPECT_EQ(fileBytes("Fileinfo.dat"), file) << test.text;
        EXPECT_FALSE(screens.unloaded.contains(Screen::frmModify)) << test.text;
    }
    // Between two stopped entries the fourth message.
    DayEntries[2].StopTime = "11:30 AM";
    open(1);
    dialogs.expect(QStringLiteral("Stop time value exceeds next projects stop time"));
    edit("STOP TIME", "11:31 AM");
    EXPECT_TRUE(VerifyUpdate());
    EXPECT_EQ(dialogs.shown.last().text, "Stop time value exceeds next projects stop time");
}

TEST_F(ModifyEntryTest, SomeRefusalsPutARowBack) {
    dialogs.strict = false;
    open(1);
    edit("START TIME", "nonsense");
    EXPECT_EQ(Modify().SmuiModify.item("START TIME").role, TextRole::Inactive) << "marked, no box";
    EXPECT_TRUE(dialogs.shown.isEmpty());
    EXPECT_TRUE(VerifyUpdate());
    EXPECT_EQ(row("START TIME"), "10:00 AM");
    EXPECT_EQ(EditedEntry.StartTime, "10:00 AM");
    edit("STOP TIME", "nonsense");
    EXPECT_TRUE(VerifyUpdate());
    EXPECT_EQ(row("STOP TIME"), "nonsense") << "stays";
    edit("STOP TIME", "10:30 AM");
    edit("BREAK TIME", "1 Hour 5 Minutes");
    EXPECT_TRUE(VerifyUpdate());
    EXPECT_EQ(row("STOP TIME"), "11:00 AM");
    EXPECT_EQ(row("BREAK TIME"), "1 Hour 5 Minutes");
    edit("BREAK TIME", "");
    EXPECT_EQ(row("BREAK TIME"), "0 Minutes");
    edit("STOP TIME", "");
    EXPECT_TRUE(VerifyUpdate());
    EXPECT_EQ(row("STOP TIME"), "11:00 AM");
    EXPECT_FALSE(VerifyUpdate());
}

TEST_F(ModifyEntryTest, ABreakThatCannotBeReadIsReported) {
    open(1);
    for (const char* text : {"x Minutes", "1e5Minutes"}) {
        dialogs.expect(QStringLiteral("Error # "));
        edit("BREAK TIME", text);
        EXPECT_TRUE(VerifyUpdate()) << text;
    }
    dialogs.expect(QStringLiteral("Invalid Break time format."));
    edit("BREAK TIME", "1e999 Minutes");
    EXPECT_TRUE(VerifyUpdate());
    edit("BREAK TIME", "60 Minutes"); // all of the total passes
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(DayEntries[1].BreakTime, "60 Minutes");
    EXPECT_EQ(DayEntries[1].TotalTime, "1 Hours 0 Minutes");
}

TEST_F(ModifyEntryTest, StoppingAndRestartingByHandKeepsTheCountRight) {
    open(2);
    edit("STOP TIME", "11:45 AM");
    click("cmdUpdate");
    EXPECT_EQ(screens.unloaded.mid(screens.unloaded.size() - 2),
              (QList<Screen>{Screen::frmDataBase, Screen::frmModify}));
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(Control().smuiProjectStatus.value("PROJECT_NAME"), "");
    EXPECT_TRUE(history().contains("Gamma|3/2/2026|45|0")) << "rolled up when the screen closed";

    open(2);
    edit("STOP TIME", "");
    click("cmdUpdate");
    EXPECT_EQ(CurrentEntryIndex, 2);
    EXPECT_FALSE(DayStopped);
    EXPECT_EQ(StatusHeading, "Gamma");
    passMinutes(5);
    EXPECT_EQ(DayEntries[2].TotalTime, "1 Hours 5 Minutes");
}

TEST_F(ModifyEntryTest, TheQuestionAtClosingNeverSaves) {
    struct Case {
        BoxAnswer answer;
        bool closeBox, unloads, stillOpen;
    };
    const Case cases[] = {
        {BoxAnswer::Cancel, false, false, true}, {BoxAnswer::Cancel, true, false, true},
        {BoxAnswer::No, false, true, false},     {BoxAnswer::No, true, true, false},
        {BoxAnswer::Yes, false, false, false},   {BoxAnswer::Yes, true, true, false},
    };
    const QList<DayEntry> day = DayEntries;
    for (const Case& test : cases) {
        screens.unloaded.clear();
        open(1);
        edit("START TIME", "10:05 AM");
        dialogs.expect(QStringLiteral("Save current changes?"), test.answer);
        test.closeBox ? FrmModify_QueryUnload() : click("cmdCancel");
        EXPECT_EQ(dialogs.shown.last().title, "Save Changes?");
        EXPECT_EQ(dialogs.shown.last().buttons, BoxButtons::YesNoCancel);
        EXPECT_EQ(screens.unloaded.contains(Screen::frmModify), test.unloads);
        EXPECT_EQ(ModifyOpen, test.stillOpen);
        EXPECT_EQ(DayEntries, day);
    }
}

TEST_F(ModifyEntryTest, AProjectComesFromTheListOrTheDatabaseManager) {
    NoRecentProjects = false;
    settings->setValue("Software\\brindlemoor-ware\\Kelvrane\\RecentInfo", "File1",
                       QStringLiteral("Beta"));
    settings->setValue("Software\\brindlemoor-ware\\Kelvrane\\RecentInfo", "File2",
                       QStringLiteral("Gone"));
    OpenProjectTable(QStringLiteral("Optimistic")); // as the Database Manager holds it
    open(0);
    EXPECT_EQ(Modify().SmuiModify.item("PROJECT NAME").choices,
              (QStringList{"Beta", "Gone", "More ... "}));
    Modify().SmuiModify.choose("PROJECT NAME", 0);
    EXPECT_EQ(row("PROJECT NUMBER"), "1002");
    EXPECT_EQ(EditedEntry.ProjectName, "Beta");
    EXPECT_EQ(ProjectRecords().position(), 1) << "the manager's record on display";
    CloseProjectTable();

    dialogs.expect(QStringLiteral("There is no project \"Gone\""));
    Modify().SmuiModify.choose("PROJECT NAME", 1); // deleted since
    EXPECT_EQ(row("PROJECT NAME"), "Beta");
    EXPECT_EQ(Modify().SmuiModify.item("PROJECT NAME").choices, (QStringList{"Beta", "More ... "}));

    Modify().SmuiModify.choose("PROJECT NAME", 1);
    EXPECT_EQ(screens.shown.last(), Screen::frmDataBase);
    selectionSinks.modify.undo(); // closed without a choice
    EXPECT_EQ(row("PROJECT NAME"), "Beta");
    selectionSinks.modify.select("Gamma", "Alpha");
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(DayEntries[0].ProjectName, "Gamma");
    EXPECT_EQ(DayEntries[0].ProjectNumber, "Alpha");
}

TEST_F(ModifyEntryTest, EditsNeverLandOnAnotherEntry) {
    open(1);
    edit("STOP TIME", "10:50 AM");
    DayEntries.removeAt(0); // deleted from the list's menu meanwhile
    const QList<DayEntry> day = DayEntries;
    dialogs.expect(QStringLiteral("The entry is no longer in today's list"));
    EXPECT_TRUE(VerifyUpdate());
    EXPECT_EQ(DayEntries, day);

    for (const char* key : {"", "START TIME", "START TIME77", "START TIME99999999999"}) {
        SelectedEntryKey = QString::fromLatin1(key);
        dialogs.expect(QStringLiteral("Error # 9"));
        FrmModify_Unload();
        FrmModify_Load();
    }
}

TEST_F(ModifyEntryTest, LongTextAndAMissingDatabaseLeaveTheScreenUsable) {
    NoRecentProjects = false;
    settings->setValue("Software\\brindlemoor-ware\\Kelvrane\\RecentInfo", "File1",
                       QStringLiteral("Alpha"));
    const QString projects = ProjectDatabase;
    ProjectDatabase = path("nowhere.mdb");
    open(1);
    dialogs.expect(QStringLiteral("Error # -2147467259"));
    Modify().SmuiModify.choose("PROJECT NAME", 0);
    EXPECT_EQ(row("PROJECT NAME"), "Beta");
    dialogs.expect(QStringLiteral("Invalid Break Time"));
    Modify().SmuiModify.edit("BREAK TIME", QString(10'000, QLatin1Char('9')));
    EXPECT_TRUE(VerifyUpdate());
    edit("BREAK TIME", "10 Minutes");
    EXPECT_FALSE(VerifyUpdate());
    EXPECT_EQ(DayEntries[1].BreakTime, "10 Minutes");
    ProjectDatabase = projects;
}

} // namespace
