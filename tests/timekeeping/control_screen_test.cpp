#include "frame/globals.h"
#include "frame/recent_projects.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "frame/tray_menus.h"
#include "platform/recordset.h"
#include "records/project_changes.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/control_views.h"
#include "timekeeping/working_day.h"
#include "tray/hidden_form.h"

#include <QDir>
#include <QFile>

namespace kelvrane {
namespace {

class ControlScreen : public testing::WorkingDayTest {
  protected:
    void addHistory(const QString& name, QDate day, int total, int breaks) {
        Connection connection(path("DayInfo.mdb"));
        Recordset rows(connection, "DayInfo", Recordset::Optimistic);
        rows.addNew();
        rows.setValue("Date", day);
        rows.setValue("ProjectName", name);
        rows.setValue("ProjectNumber", "1");
        rows.setValue("TotalTime", total);
        rows.setValue("BreakTime", breaks);
        rows.update();
    }
    QString stored(const QString& key) { return settings->section("SingleTimerView", key, "none"); }
};

TEST_F(ControlScreen, FirstLoadHasTheDefaultsAndWritesAllTwelveValues) {
    LoadControlScreen();
    const ControlLayout& layout = Control().layout;
    EXPECT_TRUE(layout.BreakDownShowing);
    EXPECT_FALSE(layout.QuickViewShowing);
    EXPECT_TRUE(GraphShowing);
    EXPECT_FALSE(WeekViewShowing);
    EXPECT_EQ(layout.Width, 9795);
    EXPECT_EQ(layout.Height, 5895);
    EXPECT_TRUE(DayStopped); // no entry
    EXPECT_EQ(Control().dailyChart().emptyText, "No Data");
    UnloadControlScreen();
    const QPair<const char*, const char*> values[] = {
        {"bBreakDownShowing", "True"},    {"bQuickViewShowing", "False"},
        {"bGraphShowing", "True"},        {"bWeekVeiwShowing", "False"},
        {"bControlPanelShowing", "True"}, {"ChartType", "0"},
        {"iLastSplitter1Pos", "50"},      {"iLastSplitter2Pos", "50"},
        {"iLastMeWidth", "9795"},         {"iLastMeHeight", "5895"},
        {"SplitterTop", "5335"},          {"fLastSizePercent", "3000"},
    };
    for (const auto& [key, value] : values)
        EXPECT_EQ(stored(key), value) << key;
}

TEST_F(ControlScreen, GarbageInTheLayoutIsTheDefault) {
    for (const char* key : {"bGraphShowing", "iLastMeWidth", "SplitterTop", "iLastSplitter1Pos"})
        settings->setSection("SingleTimerView", key, "1e999");
    settings->setSection("SingleTimerView", "ChartType", "99");
    LoadControlScreen();
    EXPECT_TRUE(GraphShowing);
    EXPECT_EQ(Control().layout.Width, 9795);
    EXPECT_EQ(Control().layout.SplitterTop, 5335);
    EXPECT_EQ(ChartIndex, 18);
}

TEST_F(ControlScreen, BreakDownAndQuickViewExcludeEachOther) {
    LoadControlScreen();
    PanelClick("QUICKVIEW");
    EXPECT_TRUE(Control().layout.QuickViewShowing);
    EXPECT_FALSE(Control().layout.BreakDownShowing);
    EXPECT_FALSE(Control().smuiPanelLayout.item("BREAKDOWN").ticked);
    PanelClick("QUICKVIEW");
    EXPECT_FALSE(Control().layout.QuickViewShowing);
    EXPECT_FALSE(Control().layout.BreakDownShowing);
    PanelClick("BREAKDOWN");
    EXPECT_TRUE(Control().smuiPanelLayout.item("BREAKDOWN").ticked);
}

TEST_F(ControlScreen, TheControlPanelItemTurnsWithItsPanel) {
    LoadControlScreen();
    EXPECT_EQ(Control().smuiTimeCtrl.item("CONTROLPANEL").caption, "Control Panel       ");
    TimeCtrlClick("CONTROLPANEL");
    EXPECT_EQ(Control().smuiTimeCtrl.item("CONTROLPANEL").image, "right1");
    EXPECT_EQ(Control().smuiTimeCtrl.item("CONTROLPANEL").caption, "");
    EXPECT_FALSE(Control().layout.ControlPanelShowing);
}

TEST_F(ControlScreen, GraphTypesWrapAtBothEnds) {
    LoadControlScreen();
    PreviousGraphType();
    EXPECT_EQ(ChartIndex, 18);
    EXPECT_EQ(Control().dailyChart().type, chartspace::ChartType::PieExploded3D);
    NextGraphType();
    EXPECT_EQ(ChartIndex, 0);
}

TEST_F(ControlScreen, AnEmptyRecentListLeadsToTheDatabaseManager) {
    LoadControlScreen();
    EXPECT_EQ(Control().smuiProjectStatus.item("PROJECT_NAME").choices, QStringList{"More ... "});
    ChooseProject(0, "More ... ");
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmDataBase});
}

TEST_F(ControlScreen, AChoiceStartsTheProjectAndMoreIsKnownByItsPlace) {
    AddRecentProject("Beta");
    AddRecentProject("Alpha");
    AddRecentProject("More ... "); // a project of that name is a project
    LoadControlScreen();
    EXPECT_EQ(Control().smuiProjectStatus.item("PROJECT_NAME").choices,
              (QStringList{"More ... ", "Alpha", "Beta", "More ... "}));
    ChooseProject(1, "Alpha");
    EXPECT_EQ(DayEntries.value(0).ProjectName, "Alpha");
    EXPECT_EQ(RecentProjects.first(), "More ... "); // choosing doesn't reorder
    ChooseProject(3, "More ... ");
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmDataBase});
}

TEST_F(ControlScreen, RecentListKeepsItsOrderRules) {
    ShowNumProjects = 5;
    for (const char* name : {"5", "4", "c", "2", "1"})
        AddRecentProject(name);
    const auto list = [] { return QStringList(RecentProjects).join(','); };
    EXPECT_EQ(list(), "1,2,c,4,5");
    AddRecentProject("c");
    EXPECT_EQ(list(), "c,1,2,4,5");
    AddRecentProject("new");
    EXPECT_EQ(list(), "new,c,1,2,4");
    ShowNumProjects = 3;
    AddRecentProject("4");
    EXPECT_EQ(list(), "4,new,c");
    EXPECT_EQ(RegQueryValue(keys::RecentInfo, "File2"), "new");
    // All digits aren't stripped of their terminator by a read; the list's names are.
    EXPECT_EQ(RegQueryValue(keys::RecentInfo, "File1"), QString("4") + QChar(u'\0'));
    // The load reads as far as the limit.
    RecentProjects.clear();
    EXPECT_EQ(LoadRecentProjects(2), 0);
    EXPECT_EQ(list(), "4,new");

    RemoveRecentProject("4");
    EXPECT_EQ(ProjectChoices(), (QStringList{"new", "c", "More ... "}));
    RemoveRecentProject("unknown");
    ShowNumProjects = 9;
    EXPECT_EQ(ProjectChoices(), (QStringList{"new", "c", "More ... "})) << "the list ends there";
    SetRecentProject(1, {"d", "7"});
    RecentProjects.clear();
    EXPECT_EQ(ProjectChoices(), (QStringList{"new", "d (7)", "More ... "}));
    // A list on screen may be older than this one.
    EXPECT_EQ(RecentProjectOf(0, "d (7)"), (RecentProject{"d", "7"}));
    EXPECT_EQ(RecentProjectOf(7, "d"), RecentProject{"d"});
    AddRecentProject("d");
    EXPECT_EQ(RecentNumbers.value(0), "") << "a name that is one project's again";
}

TEST_F(ControlScreen, ASelectionThatFailsLeavesTheRunningProjectOnTheFields) {
    start("Alpha");
    WireControlScreen();
    OpenProjectTable(QStringLiteral("Optimistic")); // as the Database Manager holds it
    dialogs.expect("There is no project \"O'Neil\"");
    selectionSinks.day.select("O'Neil", "7");
    Connection(ProjectDatabase).execute("DROP TABLE ProjectInfo");
    EXPECT_THROW(StartProjectByName("Beta"), RuntimeError);
    CloseProjectTable();
    EXPECT_EQ(DayEntries.size(), 1);
    EXPECT_EQ(Control().smuiProjectStatus.value("PROJECT_NAME"), "Alpha");
    EXPECT_EQ(Control().smuiProjectStatus.value("PROJECT_NUM"), "1001");
    EXPECT_EQ(Status().text(), "Alpha");
}

TEST_F(ControlScreen, DuringABreakTheLoadTurnsTheTraysItem) {
    LoadControlScreen();
    start("Alpha");
    ModifySysTrayStatusHeading("Break");
    UnloadControlScreen();
    LoadControlScreen();
    EXPECT_EQ(Status().text(), "Alpha - On Break"); // no recent list overwrote it
}

TEST_F(ControlScreen, WeekViewSumsByProjectAndDay) {
    addHistory("beta", QDate(2026, 3, 2), 10, 0);    // 0.17 rounds to 0.25
    addHistory("Alpha", QDate(2026, 3, 2), 100, 10); // 1.5
    addHistory("Alpha", QDate(2026, 3, 4), 60, 0);
    addHistory("Gone", QDate(2026, 3, 8), 7, 0); // below the increment
    addHistory("Before", QDate(2026, 3, 1), 60, 0);
    clock.set("2026-03-04 12:00");
    settings->setSection("SingleTimerView", "bWeekVeiwShowing", "True");
    LoadControlScreen();
    const WeekView& week = Control().lvwWeekView;
    EXPECT_EQ(week.WeekStartDate, QDate(2026, 3, 2));
    EXPECT_EQ(week.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "Mon");
    EXPECT_EQ(week.headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), "Tues");
    EXPECT_EQ(week.headerData(1, Qt::Horizontal, WeekView::DayOfMonthRole).toInt(), 2);
    ASSERT_EQ(week.rows().size(), 3);
    EXPECT_EQ(week.rows()[0].name, "Alpha");
    EXPECT_EQ(week.rows()[0].cells, (QStringList{"1.5", "", "1", "", "", "", "", "2.5"}));
    EXPECT_EQ(week.rows()[1].cells.first(), "0.25");
    EXPECT_EQ(week.rows()[2].cells, (QStringList{"", "", "", "", "", "", "< 0.25", "< 0.25"}));
}

TEST_F(ControlScreen, TheWeekHasAnyNameAndATimeThatCantBeReadCostsNoOtherRow) {
    for (const char* name : {"Alpha", "B's", "C#3/2/2026#", "Zeta"})
        addHistory(name, QDate(2026, 3, 2), 60, 0);
    addHistory("Bad", QDate(2026, 3, 2), 60, 0);
    Connection(path("DayInfo.mdb"))
        .execute("UPDATE DayInfo SET TotalTime = 99999999 WHERE ProjectName = 'Bad'");
    LoadControlScreen();
    QStringList sums;
    for (const WeekView::Row& row : Control().lvwWeekView.rows())
        sums.append(row.name + u'=' + row.cells.last());
    ASSERT_EQ(sums.size(), 5);
    sums.removeAt(2);
    EXPECT_EQ(sums, (QStringList{"Alpha=1", "B's=1", "C#3/2/2026#=1", "Zeta=1"}));
}

TEST_F(ControlScreen, AProjectThatIsGoneStartsNothingAndLeavesTheRecentList) {
    WireControlScreen();
    for (const char* name : {"Beta", "Renamed's", "Alpha"})
        AddRecentProject(name);
    LoadControlScreen();
    start("Alpha");
    clock.advanceMinutes(10);
    dialogs.expect("There is no project \"Renamed's\"");
    Control().smuiProjectStatus.choose("PROJECT_NAME", 1);
    ASSERT_EQ(DayEntries.size(), 1);
    EXPECT_EQ(DayEntries[0].StopTime, "") << "what runs goes on";
    EXPECT_EQ(Control().smuiProjectStatus.value("PROJECT_NAME"), "Alpha");
    EXPECT_EQ(Control().smuiProjectStatus.item("PROJECT_NAME").choices,
              (QStringList{"Alpha", "Beta", "More ... "}));
    restart();
    EXPECT_EQ(ProjectChoices(), (QStringList{"Alpha", "Beta", "More ... "}));

    Connection(ProjectDatabase).execute("DELETE FROM ProjectInfo");
    for (const char* name : {"Alpha", "Beta"}) {
        dialogs.expect("There is no project");
        StartProjectByName(name);
    }
    EXPECT_TRUE(NoRecentProjects);
    EXPECT_EQ(ProjectChoices(), QStringList{"More ... "});
}

TEST_F(ControlScreen, NamesOfDigitsAndWithQuotesStartAfterARestartToo) {
    WireControlScreen();
    Connection(ProjectDatabase)
        .execute("INSERT INTO ProjectInfo (Project_Name, Project_Number) VALUES ('2024', '7'), "
                 "('O''Neil''s site', '8')");
    AddRecentProject("O'Neil's site");
    AddRecentProject("2024");
    restart();
    LoadControlScreen();
    EXPECT_EQ(ProjectChoices(), (QStringList{"2024", "O'Neil's site", "More ... "}));
    Control().smuiProjectStatus.choose("PROJECT_NAME", 0);
    Control().smuiProjectStatus.choose("PROJECT_NAME", 1);
    ASSERT_EQ(DayEntries.size(), 2);
    EXPECT_EQ(DayEntries[0].ProjectName + u'|' + DayEntries[0].ProjectNumber, "2024|7");
    EXPECT_EQ(DayEntries[1].ProjectName + u'|' + DayEntries[1].ProjectNumber, "O'Neil's site|8");
}

TEST_F(ControlScreen, OfTwoProjectsOfANameTheOneChosenStarts) {
    WireControlScreen();
    Connection(ProjectDatabase)
        .execute("INSERT INTO ProjectInfo (Project_Name, Project_Number) VALUES ('Alpha', '2002')");
    AddRecentProject("Alpha"); // from the time when there was one
    LoadControlScreen();
    dialogs.expect("Several projects are named \"Alpha\"");
    Control().smuiProjectStatus.choose("PROJECT_NAME", 0);
    EXPECT_TRUE(DayEntries.isEmpty());

    OpenProjectTable(QStringLiteral("Optimistic")); // as the Database Manager holds it
    selectionSinks.day.select("Alpha", "2002");
    selectionSinks.day.select("Alpha", "1001");
    selectionSinks.day.select("Beta", "1002");
    CloseProjectTable();
    const QStringList choices{"Beta", "Alpha (1001)", "Alpha (2002)", "More ... "};
    EXPECT_EQ(Control().smuiProjectStatus.item("PROJECT_NAME").choices, choices);
    restart();
    LoadControlScreen();
    EXPECT_EQ(ProjectChoices(), choices);
    Control().smuiProjectStatus.choose("PROJECT_NAME", 2);
    EXPECT_EQ(DayEntries.last().ProjectName + u'|' + DayEntries.last().ProjectNumber, "Alpha|2002");
    EXPECT_EQ(Control().smuiProjectStatus.value("PROJECT_NAME"), "Alpha");
    EXPECT_EQ(Status().text(), "Alpha");

    RebuildRecentMenu();
    EXPECT_EQ(Menus().mnuRProjects.items().value(1).caption, "Alpha (1001)");
    RecentProjectClick("MnuRecProj2");
    EXPECT_EQ(DayEntries.last().ProjectName + u'|' + DayEntries.last().ProjectNumber, "Alpha|1001");
}

TEST_F(ControlScreen, ARenameTakesTodayAlongInMemoryOnScreenAndInTheFile) {
    WireControlScreen();
    LoadControlScreen();
    for (const char* name : {"Alpha", "Beta", "Alpha"}) {
        start(name);
        clock.advanceMinutes(30);
    }
    projectSinks.renameToday({.from = "Alpha", .to = "O;Neil's"});
    EXPECT_EQ(DayEntries[0].ProjectName + DayEntries[1].ProjectName + DayEntries[2].ProjectName,
              "O;Neil'sBetaO;Neil's");
    QStringList headings;
    for (const KeyedItem& item : Control().smuiBreakDown.items())
        if (item.kind == ItemKind::Heading)
            headings.append(item.caption);
    EXPECT_EQ(headings, (QStringList{"O;Neil's", "Beta", "O;Neil's"}));
    EXPECT_EQ(Status().text(), "O;Neil's");
    EXPECT_EQ(CurrentEntryIndex, 2);
    projectSinks.renameToday({.from = "O;Neil's", .to = "Plain", .number = "another's"});
    EXPECT_EQ(DayEntries[0].ProjectName, "O;Neil's");
    projectSinks.renameToday({.from = "O;Neil's", .to = "Plain", .number = "1001"});
    restart();
    LoadControlScreen();
    ASSERT_EQ(DayEntries.size(), 3);
    EXPECT_EQ(DayEntries[2].ProjectName, "Plain");

    const QList<DayEntry> day = DayEntries;
    QFile::remove(path("Fileinfo.dat"));
    ASSERT_TRUE(QDir(folder.path()).mkdir("Fileinfo.dat"));
    EXPECT_THROW(projectSinks.renameToday({.from = "Plain", .to = "Lost"}), RuntimeError);
    EXPECT_EQ(DayEntries, day) << "memory and file stay the same";
}

TEST_F(ControlScreen, DamagedDaysLoadAsFarAsTheyCanBeRead) {
    writeFile("Fileinfo.dat",
              "Time: x\nDate: 3/2/2026\nDay Info:\n"
              "Alpha;1001;8:00 AM;8:30 AM;0 Minutes;30 Minutes\nBeta;1002;8:3\n\n\n");
    LoadControlScreen();
    EXPECT_EQ(DayEntries.size(), 1);
    EXPECT_EQ(tray.notices.size(), 1);
    start("Beta");
    EXPECT_EQ(DayEntries.size(), 2);
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("Alpha"));
    EXPECT_TRUE(fileBytes("Fileinfo.dat.last").contains("Beta;1002;8:3"));
}

} // namespace
} // namespace kelvrane
