#include "platform/texts.h"
#include "records/project_record.h"
#include "records/record_fixture.h"

namespace kelvrane::testing {
namespace {

class ProjectRecordTest : public RecordTest {
  protected:
    void ExpectBox(const Box& box, const char* text, const char* title) {
        EXPECT_EQ(box.text, QString::fromLatin1(text));
        EXPECT_EQ(box.title, QString::fromLatin1(title));
    }
};

TEST_F(ProjectRecordTest, ARowThatIsRefusedStopsTheSaveThere) {
    struct Refusal {
        const char* row;
        const char* text;
        const char* message;
    };
    const Refusal refusals[] = {
        {"PROJECT_NAME", "", "Project name cannot be blank!"},
        {"PROJECT_NUM", "", "Project number cannot be blank!"},
        {"ENTRY_DATE", "", "Entry Date cannot be blank!"},
        {"RATE", "abc", "Rate must be a numeric value greater than 0!"},
        {"RATE", "", "Rate must be a numeric value greater than 0!"},
        {"RATE", "-1", "Rate must be a numeric value greater than or equal to 0!"},
    };
    AddProject(QStringLiteral("Alpha"));
    OpenManager();
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.message);
        RedrawProject(true);
        Type(refusal.row, QString::fromLatin1(refusal.text));
        dialogs.expect(QString::fromLatin1(refusal.message));
        EXPECT_EQ(SaveNewProject(), 103);
        ExpectBox(dialogs.shown.last(), refusal.message, "Invalid Entry");
        EXPECT_EQ(dialogs.shown.last().icon, BoxIcon::Exclamation);
        EXPECT_EQ(Row(refusal.row), refusal.text);
        ProjectRecords().cancelUpdate();
    }
    EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), "Alpha");
}

TEST_F(ProjectRecordTest, FieldsBeforeARefusalStayPendingUntilTheNextSave) {
    AddProject(QStringLiteral("Alpha"));
    OpenManager();
    Type("PROJECT_NAME", QStringLiteral("Renamed"));
    Type("RATE", QStringLiteral("-1"));
    dialogs.expect(QStringLiteral("greater than or equal to 0!"));
    Edit("UPDATE");
    EXPECT_EQ(ProjectRecords().text(project_column::Name), "Renamed");
    EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), "Alpha");
    for (const char* rate : {"0", "0.5"}) {
        Type("RATE", QString::fromLatin1(rate));
        Edit("UPDATE");
        EXPECT_EQ(Stored("ProjectInfo", 1, "Rate"), rate);
    }
    EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), "Renamed");
}

TEST_F(ProjectRecordTest, NewRecordIsEnteredAndSaved) {
    AddProject(QStringLiteral("Alpha"));
    OpenManager();
    Edit("ADD_NEW");
    EXPECT_EQ(Row("PROJECT_NAME"), "");
    EXPECT_EQ(Row("ENTRY_DATE"), "3/2/2026");
    EXPECT_EQ(Row("ACTIVE"), "True");
    EXPECT_EQ(Row("CUSTID_SHOW"), NotAssigned);
    EXPECT_TRUE(Manager().smuiPanel1.item(QStringLiteral("SAVE")).visible);
    for (const char* hidden : {"ADD_NEW", "TABLE", "DELETE", "UPDATE"})
        EXPECT_FALSE(Manager().smuiPanel1.item(QString::fromLatin1(hidden)).visible) << hidden;
    EXPECT_FALSE(Manager().buttons.item(QStringLiteral("CmdUp")).enabled);

    Type("PROJECT_NAME", QString::fromUtf8("O'Neil & \"Co\"; 🕰 "));
    dialogs.expect(QStringLiteral("Project number cannot be blank!"));
    Edit("SAVE");
    EXPECT_EQ(EntryStatus, 103);
    EXPECT_TRUE(Manager().smuiPanel1.item(QStringLiteral("SAVE")).visible);

    Type("PROJECT_NUM", QStringLiteral("7"));
    Type("RATE", QStringLiteral("80"));
    Edit("SAVE");
    EXPECT_EQ(EntryStatus, 0);
    EXPECT_EQ(Stored("ProjectInfo", 2, "Project_Name"),
              QString::fromUtf8("O'Neil & \"Co\"; 🕰 "));
    EXPECT_EQ(Stored("ProjectInfo", 2, "Notes"), "< Add Notes >");
    EXPECT_EQ(Stored("ProjectInfo", 2, "CustInfoDBID"), "");
    EXPECT_FALSE(Manager().smuiPanel1.item(QStringLiteral("SAVE")).visible);
    EXPECT_TRUE(Manager().smuiPanel1.item(QStringLiteral("ADD_NEW")).visible);
    EXPECT_EQ(CheckProjectChanged(), std::nullopt); // the notes on the panel are those stored
}

TEST_F(ProjectRecordTest, TextsThatTheColumnsCantHoldAreReportedAndTheRestIsSaved) {
    AddProject(QStringLiteral("Alpha"));
    OpenManager();
    const QString longName(10'000, u'x');
    Type("PROJECT_NAME", longName);
    Type("ENTRY_DATE", QStringLiteral("some day"));
    Type("RATE", QStringLiteral("1e999"));
    dialogs.strict = false;
    EXPECT_EQ(SaveNewProject(), IsNumeric(QStringLiteral("1e999")) ? 0 : 103);
    for (const Box& box : std::as_const(dialogs.shown))
        EXPECT_TRUE(box.text.contains(u"SaveNewProject") || box.title == u"Invalid Entry");
    EXPECT_FALSE(dialogs.shown.isEmpty());
    ProjectRecords().update();
    EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), longName);
    EXPECT_EQ(Stored("ProjectInfo", 1, "Entry_Date"), "3/1/2026");
    EXPECT_EQ(Stored("ProjectInfo", 1, "Rate"), "75");
}

TEST_F(ProjectRecordTest, CustomerOfAProjectIsTakenFromThePanelOrClearedWhenItIsGone) {
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    AddProject(QStringLiteral("Alpha"), QStringLiteral("1"), 1);
    OpenManager();
    EXPECT_EQ(Row("CUSTID_SHOW"), "old - text");
    EXPECT_EQ(Row("CUSCOMPANY"), "Acme");
    EXPECT_EQ(SaveNewProject(), 0);
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustomerID"), "Acme - Stone");

    ShowTable(Customers);
    dialogs.expect(QStringLiteral("Are you sure"), BoxAnswer::Ok);
    Edit("DELETE");
    EXPECT_EQ(RecordPanel().items().first().caption, "Customer database is empty");
    ShowTable(Projects);
    EXPECT_EQ(Row("CUSTID_SHOW"), "Acme - Stone");
    EXPECT_EQ(Row("CUSCOMPANY"), "");
    dialogs.expect(
        QStringLiteral("Customer was deleted from the database.  Deassigning Customer ID"));
    EXPECT_EQ(SaveNewProject(), 0);
    ExpectBox(dialogs.shown.last(),
              "Customer was deleted from the database.  Deassigning Customer ID",
              "Customer Deleted");
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustomerID"), "");
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustInfoDBID"), "");
    EXPECT_EQ(Row("CUSTID_SHOW"), NotAssigned);
    EXPECT_EQ(SaveNewProject(), 0); // no second box
}

TEST_F(ProjectRecordTest, DeassigningOnThePanelLeavesTheReference) {
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    AddProject(QStringLiteral("Alpha"), QStringLiteral("1"), 1);
    OpenManager();
    RecordPanel().setValue(QStringLiteral("CUSTID_SHOW"), NotAssigned);
    EXPECT_EQ(SaveNewProject(), 0);
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustomerID"), "");
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustInfoDBID"), "1");
}

TEST_F(ProjectRecordTest, CancelGoesBackToTheRememberedRecord) {
    for (const char* name : {"A", "B", "C"})
        AddProject(QString::fromLatin1(name));
    OpenManager();
    Step("CmdUp");
    Edit("ADD_NEW");
    Edit("CANCEL");
    EXPECT_EQ(Row("PROJECT_NAME"), "B");
    EXPECT_EQ(StoredCount("ProjectInfo"), 3);

    Execute(QStringLiteral("DELETE FROM ProjectInfo"));
    UnloadDataBase();
    OpenManager();
    Edit("ADD_NEW");
    EXPECT_EQ(Row("ACTIVE"), "True");
    Edit("CANCEL");
    EXPECT_EQ(RecordPanel().items().first().caption, "Project database is empty");
}

TEST_F(ProjectRecordTest, DeleteMovesTheCursors) {
    struct Case {
        int rows;
        int position;
        const char* thenOn; ///< "": the panel says that the database is empty
    };
    for (const Case& row :
         {Case{1, 1, ""}, {2, 1, "P2"}, {2, 2, "P1"}, {3, 1, "P2"}, {3, 2, "P1"}, {3, 3, "P2"}}) {
        SCOPED_TRACE(::testing::Message() << row.position << " of " << row.rows);
        UnloadDataBase();
        Execute(QStringLiteral("DELETE FROM ProjectInfo"));
        for (int i = 1; i <= row.rows; ++i)
            AddProject(QStringLiteral("P%1").arg(i));
        OpenManager();
        ProjectRecords().setPosition(row.position);
        RedrawProject(true);
        dialogs.expect(QStringLiteral("Are you sure you want to delete this record"),
                       BoxAnswer::Ok);
        Edit("DELETE");
        EXPECT_EQ(StoredCount("ProjectInfo"), row.rows - 1);
        if (*row.thenOn)
            EXPECT_EQ(Row("PROJECT_NAME"), row.thenOn);
        else
            EXPECT_EQ(RecordPanel().items().first().key, "NORECORDS");
    }
}

TEST_F(ProjectRecordTest, DeleteAsksFirstAndHasNothingToDoOnAnEmptyTable) {
    OpenManager();
    dialogs.expect(QStringLiteral("No records to delete"));
    Edit("DELETE");
    ExpectBox(dialogs.shown.last(), "No records to delete", "Database Empty");
    EXPECT_EQ(SaveNewProject(), 103);

    UnloadDataBase();
    AddProject(QStringLiteral("Alpha"));
    OpenManager();
    dialogs.expect(QStringLiteral("Delete this record?"), BoxAnswer::Cancel);
    Edit("DELETE");
    EXPECT_EQ(dialogs.shown.last().icon, BoxIcon::Question);
    EXPECT_EQ(StoredCount("ProjectInfo"), 1);
}

TEST_F(ProjectRecordTest, SteppingAsksToSaveWhatWasChanged) {
    AddProject(QStringLiteral("A"));
    AddProject(QStringLiteral("B"));
    OpenManager();
    Step("cmdDown"); // on the first record: not even the question
    Type("NOTES", QStringLiteral("changed"));
    Step("cmdDown");
    EXPECT_TRUE(dialogs.shown.isEmpty());

    dialogs.expect(QStringLiteral("Save changes to the entry?"), BoxAnswer::No);
    Step("CmdUp");
    EXPECT_EQ(Row("PROJECT_NAME"), "B");
    EXPECT_EQ(ProjectPosition, 3); // one beyond the record on display
    EXPECT_EQ(Stored("ProjectInfo", 1, "Notes"), "note");

    Type("RATE", QStringLiteral("x"));
    dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::Yes);
    dialogs.expect(QStringLiteral("Invalid Entry"));
    Step("cmdDown");
    EXPECT_EQ(Row("PROJECT_NAME"), "B");
    Type("RATE", QStringLiteral("90"));
    dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::Yes);
    Step("cmdDown");
    EXPECT_EQ(Row("PROJECT_NAME"), "A");
    EXPECT_EQ(Stored("ProjectInfo", 2, "Rate"), "90");
}

TEST_F(ProjectRecordTest, WhatARefusedSaveLeftIsAskedForBeforeAStep) {
    AddProject(QStringLiteral("Alpha"));
    AddProject(QStringLiteral("Beta"));
    OpenManager();
    Type("PROJECT_NAME", QStringLiteral("Typed"));
    Type("RATE", QStringLiteral("abc"));
    dialogs.expect(QStringLiteral("Invalid Entry"));
    Edit("UPDATE");
    Type("RATE", QStringLiteral("75"));
    dialogs.expect(QStringLiteral("Save changes to the entry?"), BoxAnswer::Yes);
    Step("CmdUp");
    EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), "Typed");
}

TEST_F(ProjectRecordTest, TheScreenMayGoBehindABoxOfTheSave) {
    AddProject(QStringLiteral("Alpha"));
    OpenManager();
    Type("RATE", QStringLiteral("abc"));
    dialogs.expect(QStringLiteral("Invalid Entry"));
    dialogs.whileOpen = [](const Box&) { UnloadDataBase(); };
    Edit("UPDATE"); // and no further box
    EXPECT_FALSE(ProjectTable);
    dialogs.expect(QStringLiteral("Are you sure you want to delete"), BoxAnswer::Ok);
    dialogs.whileOpen = nullptr;
    Open();
    dialogs.whileOpen = [](const Box&) { UnloadDataBase(); };
    DeleteProject();
    EXPECT_EQ(StoredCount("ProjectInfo"), 1);
}

TEST_F(ProjectRecordTest, ARowDeletedBySomebodyElseIsReported) {
    AddProject(QStringLiteral("Alpha"));
    OpenManager();
    Execute(QStringLiteral("DELETE FROM ProjectInfo"));
    Type("NOTES", QStringLiteral("late"));
    dialogs.expect(QStringLiteral("SaveNewProject"));
    Edit("UPDATE");
    EXPECT_EQ(StoredCount("ProjectInfo"), 0);
}

} // namespace
} // namespace kelvrane::testing
