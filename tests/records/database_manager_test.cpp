#include "frame/error_report.h"
#include "records/database_manager.h"
#include "records/list_fill.h"
#include "records/record_fixture.h"
#include "records/select_item.h"

#include <QFile>

namespace kelvrane::testing {
namespace {

class DatabaseManagerTest : public RecordTest {
  protected:
    DatabaseManagerTest() {
        const auto sink = [this](const char* place) {
            const QString name = QString::fromLatin1(place);
            return SelectionSink{[this, name](const QString& project, const QString& number) {
                                     taken.append(name + u":" + project + u":" + number);
                                 },
                                 [this, name] { undone.append(name); }};
        };
        selectionSinks = {sink("day"), sink("modify"), sink("calendar")};
        screens.visible.insert(Screen::frmSTM);
        screens.loaded.insert(Screen::frmSTM);
    }

    QStringList Names() {
        QStringList names;
        for (int row = 1; row <= Manager().ListView1.count(); ++row)
            names.append(Manager().ListView1.text(row, 0));
        return names;
    }

    QStringList taken;
    QStringList undone;
};

TEST_F(DatabaseManagerTest, OpensOnTheFirstProjectReadOnlyWithItsCustomer) {
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    AddCustomer(QStringLiteral("Bold"), QStringLiteral("Reed"));
    AddProject(QStringLiteral("Alpha"), QStringLiteral("A-1"), 2, false);
    Open();
    EXPECT_EQ(Row("PROJECT_NAME"), "Alpha");
    EXPECT_EQ(Row("ENTRY_DATE"), "3/1/2026");
    EXPECT_EQ(Row("RATE"), "75");
    EXPECT_EQ(Row("CUSCOMPANY"), "Bold");
    EXPECT_EQ(RecordPanel().item(QStringLiteral("ACTIVE")).role, TextRole::Inactive);
    EXPECT_FALSE(RecordPanel().item(QStringLiteral("CUSTID_HIDE")).visible);
    for (const KeyedItem& item : RecordPanel().items())
        EXPECT_TRUE(item.kind == ItemKind::Text || item.kind == ItemKind::Heading);
    EXPECT_EQ(RecordPanel().items().first().caption, "\tProject Name:");
    EXPECT_EQ(FieldNames.mid(1, 2), QStringList({"Project_Name", "Project_Number"}));

    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    EXPECT_EQ(RecordPanel().item(QStringLiteral("PROJECT_NAME")).kind, ItemKind::Edit);
    EXPECT_EQ(RecordPanel().item(QStringLiteral("ACTIVE")).choices, QStringList({"True", "False"}));
    EXPECT_EQ(RecordPanel().item(QStringLiteral("CUSTID_SHOW")).kind, ItemKind::Browse);
    EXPECT_EQ(RecordPanel().item(QStringLiteral("CUSCOMPANY")).kind, ItemKind::Text);
}

TEST_F(DatabaseManagerTest, ADatabaseThatCantBeOpenedLeavesAnEmptyUsableScreen) {
    writeFile(QStringLiteral("projects.mdb"), QByteArray(4096, 'x'));
    dialogs.strict = false;
    Open();
    EXPECT_EQ(dialogs.shown.size(), 2); // a report for each table
    EXPECT_EQ(RecordPanel().items().first().caption, "Project database is empty");
    for (const char* key : {"LIST_VIEW", "SINGLE_VIEW", "FIND"})
        View(key);
    for (const char* tab : {"DB Manager", "OPTIONS"})
        Manager().smuiOptions.click(QString::fromLatin1(tab));
    for (const char* key : {"ADD_NEW", "UPDATE", "DELETE"})
        Edit(key);
    Step("CmdUp");
    Step("cmdFind");
    Manager().smuiToolBar.click(QStringLiteral("CLOSE"));
    EXPECT_EQ(screens.unloaded.value(0), Screen::frmDataBase);
    EXPECT_EQ(undone, QStringList("day"));
}

TEST_F(DatabaseManagerTest, SelectionGoesWhereTheFlagsSayAtThatMoment) {
    struct Case {
        bool calendar;
        bool modify;
        const char* taken;
    };
    AddProject(QStringLiteral("O'Neil"), QStringLiteral("7"));
    for (const Case& row : {Case{false, false, "day:O'Neil:7"},
                            {false, true, "modify:O'Neil:7"},
                            {true, false, "calendar:O'Neil:7"},
                            {true, true, "calendar:O'Neil:7"}}) {
        taken.clear();
        Open();
        DayCalendarOpen = row.calendar;
        ModifyOpen = row.modify;
        View("SELECT");
        EXPECT_EQ(taken, QStringList(QString::fromLatin1(row.taken)));
        EXPECT_FALSE(ProjectRecordsOpen);
    }
    EXPECT_TRUE(undone.isEmpty());
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(DatabaseManagerTest, AsksAboutARunningDuplicateThenAboutAnInactiveProject) {
    AddProject(QStringLiteral("Alpha"), QStringLiteral("A-1"), 0, false);
    DayEntries = {{"Alpha", "A-1", "9:00 AM", "", "", ""}};
    CurrentEntryIndex = 0;
    Open();
    dialogs.expect(QStringLiteral("The project is currently active.  Add project again?"),
                   BoxAnswer::No);
    View("SELECT");
    EXPECT_EQ(dialogs.shown.last().title, "Duplicate Project");
    EXPECT_FALSE(ItemSelected);

    dialogs.expect(QStringLiteral("Duplicate Project"), BoxAnswer::Yes);
    dialogs.expect(QStringLiteral("This is an inactive project, would you still like to continue?"),
                   BoxAnswer::No);
    View("SELECT");
    EXPECT_EQ(dialogs.shown.last().title, "Inactive Project");
    EXPECT_TRUE(taken.isEmpty());

    DayEntries[0].StopTime = QStringLiteral("10:00 AM"); // no longer running: no first question
    dialogs.expect(QStringLiteral("Inactive Project"), BoxAnswer::Yes);
    View("SELECT");
    EXPECT_EQ(taken, QStringList("day:Alpha:A-1"));

    DayEntries[0].StopTime.clear();
    DayCalendarOpen = true; // the calendar takes it unasked
    Open();
    View("SELECT");
    EXPECT_EQ(taken.last(), "calendar:Alpha:A-1");
}

TEST_F(DatabaseManagerTest, SelectsTheListRowThatWasClicked) {
    for (const char* name : {"beta", "Alpha", "Gamma"})
        AddProject(QString::fromLatin1(name));
    Open();
    View("LIST_VIEW");
    EXPECT_TRUE(Manager().state.listShown);
    dialogs.expect(QStringLiteral("Please select a record"));
    View("SELECT");
    EXPECT_EQ(dialogs.shown.last().title, "Kelvrane");

    ListClick(1);
    listview1_ColumnClick(0);
    EXPECT_EQ(Names(), QStringList({"Alpha", "beta", "Gamma"}));
    EXPECT_EQ(Manager().state.SelectedIndex, 2);
    listview1_ColumnClick(0);
    EXPECT_EQ(Names(), QStringList({"Gamma", "beta", "Alpha"}));
    View("SELECT");
    EXPECT_EQ(taken, QStringList("day:beta:N-1"));
}

TEST_F(DatabaseManagerTest, TheRowClickedIsTheRecordShownUpdatedDeletedAndSelected) {
    for (const char* name : {"beta", "Alpha", "Gamma", "Alpha"})
        AddProject(QString::fromLatin1(name));
    Open();
    View("LIST_VIEW");
    listview1_ColumnClick(0); // Alpha (2), Alpha (4), beta (1), Gamma (3)
    ListClick(2);
    View("SINGLE_VIEW");
    EXPECT_EQ(Row("PROJECT_NAME"), "Alpha");
    EXPECT_EQ(ProjectRecords().text(0), "4");

    View("LIST_VIEW");
    listview1_ColumnClick(0);
    ListClick(4);
    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    EXPECT_EQ(Row("PROJECT_NAME"), "Gamma");
    Type("PROJECT_NAME", QStringLiteral("Aardvark"));
    Edit("UPDATE");
    EXPECT_EQ(Stored("ProjectInfo", 3, "Project_Name"), "Aardvark");

    // Back in the list: what was changed is there, and the record that was shown is chosen.
    Manager().smuiOptions.click(QStringLiteral("OPTIONS"));
    EXPECT_EQ(Names(), QStringList({"Aardvark", "Alpha", "Alpha", "beta"}));
    EXPECT_EQ(Manager().state.SelectedIndex, 1);
    ListClick(4);
    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    dialogs.expect(QStringLiteral("Are you sure you want to delete this record"), BoxAnswer::Ok);
    Edit("DELETE");
    EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), "Alpha") << "beta is gone";
    Manager().smuiOptions.click(QStringLiteral("OPTIONS"));
    EXPECT_EQ(Names(), QStringList({"Aardvark", "Alpha", "Alpha"}));
    ListClick(1);
    View("SELECT");
    EXPECT_EQ(taken, QStringList("day:Aardvark:N-1"));
}

TEST_F(DatabaseManagerTest, WhatWasTypedIsAskedAboutOnEveryRoadAway) {
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    AddProject(QStringLiteral("A"), QStringLiteral("1"));
    const std::pair<const char*, std::function<void()>> roads[] = {
        {"other tab", [] { Manager().smuiOptions.click(QStringLiteral("OPTIONS")); }},
        {"other table", [] { ShowTable(Customers); }},
        {"new record", [] { Edit("ADD_NEW"); }},
        {"closing", [] { Manager().smuiToolBar.click(QStringLiteral("CLOSE")); }},
        {"closed by the program", [] { UnloadDataBase(); }},
    };
    int notes = 0;
    for (const auto& [road, go] : roads) {
        SCOPED_TRACE(road);
        for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
            OpenManager();
            Manager().smuiOptions.click(QStringLiteral("DB Manager")); // the tab that is up
            const QString typed = QStringLiteral("typed %1").arg(++notes);
            const QString before = Stored("ProjectInfo", 1, "Notes");
            Type("NOTES", typed);
            dialogs.expect(QStringLiteral("Save changes to the entry?"), answer);
            go();
            EXPECT_EQ(Stored("ProjectInfo", 1, "Notes"), answer == BoxAnswer::Yes ? typed : before);
            UnloadDataBase(); // asked once: there is no further box
        }
    }
    EXPECT_EQ(StoredCount("ProjectInfo"), 1);
}

TEST_F(DatabaseManagerTest, WhereNobodyMayBeThereNoBoxWaits) {
    AddProject(QStringLiteral("A"), QStringLiteral("1"));
    OpenManager();
    Type("NOTES", QStringLiteral("typed"));
    const QuietReports quiet;
    UnloadDataBase();
    EXPECT_EQ(tray.notices.size(), 1) << "no box, but a word";
    EXPECT_EQ(Stored("ProjectInfo", 1, "Notes"), "note");
}

TEST_F(DatabaseManagerTest, ASaveThatIsRefusedKeepsTheRecordUp) {
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    AddProject(QStringLiteral("A"), QStringLiteral("1"));
    OpenManager();
    Type("RATE", QStringLiteral("much"));
    const std::function<void()> roads[] = {
        [] { Manager().smuiOptions.click(QStringLiteral("OPTIONS")); },
        [] { ShowTable(Customers); },
        [] { RequestClose(); },
    };
    for (const auto& go : roads) {
        dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::Yes);
        dialogs.expect(QStringLiteral("Invalid Entry"));
        go();
        EXPECT_TRUE(Manager().state.InManager);
        EXPECT_EQ(Manager().smuiPanel1.value(QStringLiteral("TABLE")), "Projects");
        EXPECT_EQ(Row("RATE"), "much");
        EXPECT_TRUE(screens.unloaded.isEmpty());
    }
    Type("RATE", QStringLiteral("80"));
    dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::Yes);
    ShowTable(Customers);

    // A customer is asked about as well, and saved before the road is taken.
    Type("CUSCITY", QStringLiteral("Shelbyville"));
    dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::Yes);
    ShowTable(Projects);
    EXPECT_EQ(Stored("CustomerInfo", 1, "City"), "Shelbyville");
    EXPECT_EQ(Row("RATE"), "80");
}

TEST_F(DatabaseManagerTest, ANewRecordIsAskedAboutOnceSomethingIsTyped) {
    AddProject(QStringLiteral("A"), QStringLiteral("1"));
    AddProject(QStringLiteral("B"), QStringLiteral("2"));
    OpenManager();
    Step("CmdUp");
    Edit("ADD_NEW");
    Manager().smuiOptions.click(QStringLiteral("OPTIONS")); // untouched: no question
    EXPECT_EQ(Row("PROJECT_NAME"), "B");
    EXPECT_TRUE(Manager().smuiPanel1.item(QStringLiteral("UPDATE")).visible);

    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    Edit("ADD_NEW");
    Type("PROJECT_NAME", QStringLiteral("New"));
    dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::No);
    RequestClose();
    EXPECT_EQ(StoredCount("ProjectInfo"), 2);

    OpenManager();
    Edit("ADD_NEW");
    Type("PROJECT_NAME", QStringLiteral("New"));
    Type("PROJECT_NUM", QStringLiteral("3"));
    Type("RATE", QStringLiteral("1"));
    dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::Yes);
    RequestClose();
    EXPECT_EQ(Stored("ProjectInfo", 3, "Project_Name"), "New");
    EXPECT_FALSE(ProjectTable);
}

TEST_F(DatabaseManagerTest, EmptyDatabaseHasNothingToSelect) {
    Open();
    dialogs.expect(QStringLiteral("Cannot select this record because Project Database is empty"));
    View("SELECT");
    EXPECT_EQ(dialogs.shown.last().title, "Database is Empty");
    View("LIST_VIEW");
    EXPECT_EQ(Manager().ListView1.count(), 0);
}

TEST_F(DatabaseManagerTest, ClosingWithoutASelectionUndoesTheChoiceThatOpenedIt) {
    struct Case {
        bool calendar;
        bool modify;
        bool controlVisible;
        QStringList undone;
    };
    const Case cases[] = {
        {false, false, true, {"day"}},
        {false, false, false, {}},
        {false, true, true, {"modify"}},
        {true, false, true, {"calendar", "day"}},
        {true, true, true, {"calendar", "modify"}},
    };
    for (const Case& row : cases) {
        undone.clear();
        screens.unloaded.clear();
        Open();
        DayCalendarOpen = row.calendar;
        ModifyOpen = row.modify;
        if (!row.controlVisible)
            screens.visible.remove(Screen::frmSTM);
        Manager().smuiToolBar.click(QStringLiteral("CLOSE"));
        EXPECT_EQ(undone, row.undone);
        EXPECT_EQ(screens.unloaded.contains(Screen::frmSTM), !row.controlVisible);
        EXPECT_FALSE(ProjectTable);
        EXPECT_FALSE(CustomerTable);
        screens.visible.insert(Screen::frmSTM);
        screens.loaded.insert(Screen::frmSTM);
    }
}

TEST_F(DatabaseManagerTest, WhileTheListFillsClicksAreIgnoredAndClosingIsRefused) {
    AddProject(QStringLiteral("Alpha"));
    Execute(QStringLiteral("INSERT INTO ProjectInfo (Project_Name) VALUES ('Bare')"));
    Open();
    bool ran = false;
    events.onYield = [&] {
        ran = true;
        EXPECT_TRUE(Manager().smuiProgress.items().first().visible);
        EXPECT_EQ(Manager().smuiProgress.items().first().caption, "Loading Data ...");
        View("SELECT");
        View("LIST_VIEW");
        ListClick(1);
        ListDoubleClick();
        Manager().smuiOptions.click(QStringLiteral("DB Manager"));
        dialogs.expect(QStringLiteral("Can't close while loading database"));
        RequestClose();
    };
    View("LIST_VIEW");
    EXPECT_TRUE(ran);
    EXPECT_EQ(dialogs.shown.last().title, "Can't Close screen");
    EXPECT_TRUE(taken.isEmpty());
    EXPECT_FALSE(Manager().state.Loading || Manager().state.Switching);
    EXPECT_FALSE(Manager().smuiProgress.items().first().visible);
    EXPECT_EQ(Names(), QStringList({"Alpha", "Bare"}));
    EXPECT_EQ(Manager().ListView1.text(2, 1), " "); // null
}

TEST_F(DatabaseManagerTest, AnotherOpenerDuringTheFillLeavesItsRowsAlone) {
    for (const char* name : {"A", "B", "C"})
        AddProject(QString::fromLatin1(name));
    Open();
    events.onYield = [] {
        OpenProjectTable(QStringLiteral("ReadOnly"));
        ProjectRecords().moveLast();
        CloseProjectTable();
    };
    View("LIST_VIEW");
    EXPECT_EQ(Names(), QStringList({"A", "B", "C"}));
}

TEST_F(DatabaseManagerTest, TheFillEndsWhenItsScreenGoesOrIsOpenedAnew) {
    for (const char* name : {"A", "B", "C"})
        AddProject(QString::fromLatin1(name));
    Open();
    events.onYield = [this] {
        events.onYield = nullptr;
        UnloadDataBase();
    };
    View("LIST_VIEW");
    EXPECT_FALSE(ProjectTable);
    EXPECT_FALSE(Manager().state.Loading);

    Open();
    events.onYield = [this] {
        events.onYield = nullptr;
        UnloadDataBase();
        OpenDataBase();
    };
    View("LIST_VIEW");
    EXPECT_TRUE(ProjectTable);
    EXPECT_EQ(Manager().state.ViewMode, "Single");
    EXPECT_EQ(Manager().ListView1.count(), 0);
    EXPECT_EQ(Row("PROJECT_NAME"), "A");
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(DatabaseManagerTest, ADatabaseThatDisappearsIsReportedAndTakesNoChange) {
    AddProject(QStringLiteral("Alpha"));
    AddProject(QStringLiteral("Beta"));
    OpenManager();
    const QString away = path(QStringLiteral("away.mdb"));
    ASSERT_TRUE(QFile::rename(ProjectDatabase, away));
    dialogs.expect(QStringLiteral("Error # "));
    Type("NOTES", QStringLiteral("typed into the void"));
    Edit("UPDATE");
    EXPECT_FALSE(dialogs.shown.isEmpty()) << "a save that went nowhere must not look like one";
    dialogs.strict = false; // each further command may report the same; none may crash
    for (const char* key : {"CmdUp", "cmdDown"})
        Step(key);
    for (const char* key : {"ADD_NEW", "SAVE", "CANCEL", "DELETE"})
        Edit(key);
    for (const char* key : {"LIST_VIEW", "SINGLE_VIEW"})
        View(key);
    UnloadDataBase();
    EXPECT_FALSE(QFile::exists(ProjectDatabase)) << "opening never creates";

    ASSERT_TRUE(QFile::rename(away, ProjectDatabase));
    EXPECT_EQ(StoredCount("ProjectInfo"), 2);
    EXPECT_EQ(Stored("ProjectInfo", 1, "Notes"), "note");
    OpenManager();
    EXPECT_EQ(Row("PROJECT_NAME"), "Alpha");
}

TEST_F(DatabaseManagerTest, TheScreenMayGoBehindAQuestion) {
    AddProject(QStringLiteral("A"), QStringLiteral("1"), 0, false);
    AddProject(QStringLiteral("B"));
    for (const char* command : {"SELECT", "DELETE", "CmdUp"}) {
        SCOPED_TRACE(command);
        OpenManager();
        Type("NOTES", QStringLiteral("changed"));
        dialogs.whileOpen = [](const Box&) { UnloadDataBase(); };
        dialogs.expect(QStringLiteral("?"), BoxAnswer::No);
        if (QLatin1String(command) == QLatin1String("CmdUp"))
            Step(command);
        else if (QLatin1String(command) == QLatin1String("DELETE"))
            Edit(command);
        else
            View(command);
        dialogs.whileOpen = nullptr;
        EXPECT_FALSE(ProjectTable);
    }
    EXPECT_TRUE(taken.isEmpty());
    EXPECT_EQ(StoredCount("ProjectInfo"), 2);
}

TEST_F(DatabaseManagerTest, TenThousandProjectsAreFilledAndSorted) {
    Execute(QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) INSERT "
        "INTO ProjectInfo (Project_Name, Project_Number, Entry_Date, Active, Notes, Rate) SELECT "
        "'Project ' || (i * 7919 % 10000), i, '2026-03-01', 1, 'note', i % 200 FROM n"));
    Open();
    View("LIST_VIEW");
    listview1_ColumnClick(0);
    EXPECT_EQ(Manager().ListView1.count(), 10'000);
    EXPECT_EQ(Manager().ListView1.text(1, 0), "Project 0");
    EXPECT_LT(events.yields, 2000) << "by time, not by row";
}

TEST_F(DatabaseManagerTest, ListSortsNumbersAndDatesByValue) {
    ProjectList list;
    list.setRows({"Name", "Rate", "Date"},
                 {{"b", "100", "10/2/2025"}, {"A", "75", "3/1/2026"}, {"c", " ", " "}});
    const auto names = [&] { return QString(list.text(1, 0) + list.text(2, 0) + list.text(3, 0)); };
    EXPECT_EQ(list.sortBy(1, false, 1), 3);
    EXPECT_EQ(names(), "cAb");
    list.sortBy(2, true);
    EXPECT_EQ(names(), "Abc");
    EXPECT_EQ(list.headerData(2, Qt::Horizontal, ProjectList::SortIconRole), 1);
    list.sortBy(0, false);
    EXPECT_EQ(names(), "Abc");
    EXPECT_EQ(list.headerData(0, Qt::Horizontal, ProjectList::SortIconRole), 2);
    EXPECT_EQ(list.headerData(2, Qt::Horizontal, ProjectList::SortIconRole), 0);
}

TEST_F(DatabaseManagerTest, HelpTopicsFollowTheScreen) {
    AddProject(QStringLiteral("A"));
    Open();
    const auto topic = [] { return Manager().state.HelpTopic; };
    EXPECT_EQ(topic(), 300);
    View("LIST_VIEW");
    EXPECT_EQ(topic(), 302);
    View("FIND");
    EXPECT_EQ(topic(), 303);
    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    EXPECT_EQ(topic(), 304);
    ShowTable(Customers);
    EXPECT_EQ(topic(), 305);
    Manager().smuiOptions.click(QStringLiteral("OPTIONS"));
    EXPECT_EQ(topic(), 300);
    EXPECT_TRUE(Manager().state.listShown);
    Manager().smuiToolBar.click(QStringLiteral("HELP"));
    EXPECT_EQ(help.pages.size(), 1);
}

TEST_F(DatabaseManagerTest, BrowsingNeedsCustomers) {
    AddProject(QStringLiteral("A"));
    OpenManager();
    dialogs.expect(QStringLiteral("Please add a customer to the customer database before "
                                  "assigning a customer ID"));
    RecordPanel().press(QStringLiteral("CUSTID_SHOW"));
    EXPECT_EQ(dialogs.shown.last().title, "Empty Database");
    UnloadDataBase();
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    OpenManager();
    RecordPanel().press(QStringLiteral("CUSTID_SHOW"));
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmBrowseForCust});
}

} // namespace
} // namespace kelvrane::testing
