#include "records/record_fixture.h"
#include "records/record_search.h"

namespace kelvrane::testing {
namespace {

class RecordSearchTest : public RecordTest {
  protected:
    void OpenWith(std::initializer_list<const char*> names) {
        for (const char* name : names)
            AddProject(QString::fromLatin1(name));
        Open();
        View("FIND");
    }
    static void Look(const QString& text) { Manager().smuiFind.edit(QStringLiteral("FIND"), text); }
    void ExpectNothing(const char* text) {
        dialogs.expect(QString::fromLatin1(text));
        Step("cmdFind");
        EXPECT_EQ(dialogs.shown.last().text, QString::fromLatin1(text));
    }
    QString FindCaption() { return Manager().buttons.item(QStringLiteral("cmdFind")).caption; }
};

TEST_F(RecordSearchTest, RecordsAreSearchedForwardFieldByField) {
    OpenWith({"Alpha", "beta", "ALPHABET"});
    ExpectNothing("Please select something to find");
    EXPECT_EQ(dialogs.shown.last().title, "Nothing to Find");
    Look(QStringLiteral("alpha"));
    Step("cmdFind");
    EXPECT_EQ(Row("PROJECT_NAME"), "Alpha");
    EXPECT_EQ(FindCaption(), "Find Next");
    Step("cmdFind");
    EXPECT_EQ(Row("PROJECT_NAME"), "ALPHABET");
    EXPECT_EQ(ProjectRecords().position(), 3);

    Manager().smuiFind.toggle(QStringLiteral("CASE SENSITIVE"));
    Look(QStringLiteral("alphabet"));
    ExpectNothing("No records found");
    EXPECT_EQ(dialogs.shown.last().title, " No records");
    EXPECT_EQ(FindCaption(), "Find");
    EXPECT_EQ(ProjectRecords().position(), 3);
}

TEST_F(RecordSearchTest, TheRecordOnDisplayStaysTheCurrentOne) {
    OpenWith({"A", "B"});
    Step("CmdUp");
    ExpectNothing("Please select something to find");
    EXPECT_EQ(ProjectRecords().position(), 2) << "an update here must not write B's rows to A";

    Look(QStringLiteral("a"));
    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    Edit("ADD_NEW");
    Step("cmdFind"); // off while a project is entered
    EXPECT_TRUE(ProjectRecords().hasPendingChanges());
    Edit("CANCEL");
    ShowTable(Customers);
    EXPECT_FALSE(Manager().buttons.item(QStringLiteral("cmdFind")).enabled) << "projects only";
    ShowTable(Projects);
    EXPECT_TRUE(Manager().buttons.item(QStringLiteral("cmdFind")).enabled);
}

TEST_F(RecordSearchTest, FindNextLeavesARecordThatMatchedInItsLastField) {
    for (const char* name : {"A", "B"})
        AddProject(QString::fromLatin1(name), QStringLiteral("N"), 987);
    Open();
    Look(QStringLiteral("987"));
    Step("cmdFind");
    EXPECT_EQ(Row("PROJECT_NAME"), "A");
    Step("cmdFind");
    EXPECT_EQ(Row("PROJECT_NAME"), "B");
}

TEST_F(RecordSearchTest, ListWithAllFieldsMovesOnByAColumnAMiss) {
    OpenWith({"A", "B", "C", "D", "E", "F", "G", "H", "needle"});
    View("LIST_VIEW");
    ASSERT_EQ(Manager().ListView1.columnCount(), 8);
    Look(QStringLiteral("needle"));
    // Row 1 misses in its 8 columns, which leads to row 9.
    Step("cmdFind");
    EXPECT_EQ(Manager().state.SelectedIndex, 9);
    EXPECT_EQ(Manager().state.ListFindIndex, 10);
    ExpectNothing("No more items found"); // one past the last row
    EXPECT_EQ(Manager().state.ListFindIndex, 1);
    Look(QStringLiteral("nowhere"));
    ExpectNothing("Item not found");
}

TEST_F(RecordSearchTest, WhatTheListSearchFindsIsWhatIsSelected) {
    for (const char* name : {"Same", "Same", "Other"})
        AddProject(QString::fromLatin1(name), QStringLiteral("plain"));
    Execute(QStringLiteral("UPDATE ProjectInfo SET Notes = 'needle' WHERE ID = 2"));
    QStringList taken;
    selectionSinks.day.select = [&](const QString& name, const QString&) {
        taken.append(name + ProjectRecords().text(0));
    };
    Open();
    View("FIND");
    View("LIST_VIEW");
    Manager().smuiFind.setChoices(QStringLiteral("FIELDS"), FieldNames.mid(1) << "All");
    Manager().smuiFind.choose(QStringLiteral("FIELDS"), 4); // the notes
    Look(QStringLiteral("needle"));
    int marked = -1;
    const auto connection = QObject::connect(&Manager().ListView1, &ProjectList::RowWanted,
                                             [&](int row) { marked = row; });
    Step("cmdFind");
    EXPECT_EQ(marked, 2);
    EXPECT_EQ(Manager().state.SelectedIndex, 2);
    EXPECT_EQ(ProjectRecords().text(0), "2") << "the second of the two named alike";

    ListClick(3);
    ExpectNothing("No more items found");
    EXPECT_EQ(marked, 0);
    dialogs.expect(QStringLiteral("Please select a record"));
    View("SELECT");
    EXPECT_TRUE(taken.isEmpty());
    Step("cmdFind");
    View("SELECT");
    EXPECT_EQ(taken, QStringList("Same2"));
    QObject::disconnect(connection);
}

TEST_F(RecordSearchTest, ASearchAsksAboutWhatWasTyped) {
    OpenWith({"A", "B"});
    Manager().smuiOptions.click(QStringLiteral("DB Manager"));
    Look(QStringLiteral("B"));
    Type("NOTES", QStringLiteral("typed"));
    dialogs.expect(QStringLiteral("Save changes to the entry?"), BoxAnswer::Yes);
    Step("cmdFind");
    EXPECT_EQ(Row("PROJECT_NAME"), "B");
    EXPECT_EQ(Stored("ProjectInfo", 1, "Notes"), "typed");
}

TEST_F(RecordSearchTest, TheFindPanelOpensAndClosesAndRestartsTheSearch) {
    OpenWith({"A"});
    EXPECT_TRUE(Manager().state.FindShown);
    EXPECT_EQ(Manager().smuiFind.item(QStringLiteral("FIELDS")).choices, QStringList("All"));
    Manager().smuiFind.click(QStringLiteral("SEARCH BACKWARD"));
    EXPECT_TRUE(Manager().smuiFind.item(QStringLiteral("SEARCH BACKWARD")).ticked);
    EXPECT_FALSE(Manager().smuiFind.item(QStringLiteral("SEARCH FORWARD")).ticked);
    Step("ImgClose");
    EXPECT_FALSE(Manager().state.FindShown);
    EXPECT_FALSE(Manager().smuiPanel0.item(QStringLiteral("FIND")).ticked);
}

TEST_F(RecordSearchTest, AnEmptyDatabaseHasNothingToFind) {
    OpenWith({});
    Look(QStringLiteral("x"));
    ExpectNothing("No records to find because Project Database is empty");
    EXPECT_EQ(dialogs.shown.last().title, "Database is Empty");
}

} // namespace
} // namespace kelvrane::testing
