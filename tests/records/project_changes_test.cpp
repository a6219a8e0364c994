#include "frame/day_tail.h"
#include "history/booked_time.h"
#include "history/roll_up.h"
#include "records/project_changes.h"
#include "records/project_lookup.h"
#include "records/project_record.h"
#include "records/record_fixture.h"

namespace kelvrane::testing {
namespace {

class ProjectChangesTest : public RecordTest {
  protected:
    ProjectChangesTest() { CreateDayInfoDatabase(path(QStringLiteral("DayInfo.mdb"))); }

    void Book(const QString& name, const QString& number, int minutes) {
        Connection connection(path(QStringLiteral("DayInfo.mdb")));
        Recordset rows(connection, QStringLiteral("DayInfo"), Recordset::Optimistic);
        rows.addNew();
        rows.setValue(QStringLiteral("Date"), QStringLiteral("2/27/2026"));
        rows.setValue(QStringLiteral("ProjectName"), name);
        rows.setValue(QStringLiteral("ProjectNumber"), number);
        rows.setValue(QStringLiteral("TotalTime"), minutes);
        rows.update();
    }
    static qint64 Booked(const char* name) {
        return ReadBookedTime({QString::fromLatin1(name)})->workMinutes;
    }
    static QString Recent() {
        QStringList choices = ProjectChoices();
        choices.removeLast();
        return choices.join(u',');
    }
    void GoTo(int position) {
        ProjectRecords().setPosition(position);
        RedrawProject(true);
    }
    void Rename(const char* to) {
        Type("PROJECT_NAME", QString::fromLatin1(to));
        Edit("UPDATE");
    }
};

TEST_F(ProjectChangesTest, AProjectIsFoundByItsNameAndByItsNumberWhereTheNameIsShared) {
    for (const auto& [name, number] :
         {std::pair("Site", "1"), {"Other", "2"}, {"Site", "3"}, {"O'Neil = 'x'", "4"}})
        AddProject(QString::fromLatin1(name), QString::fromLatin1(number));
    OpenTable table(ProjectDatabase, QStringLiteral("ProjectInfo"), Recordset::ReadOnly);
    const struct {
        const char* name;
        const char* number;
        ProjectFound found;
        int position;
    } cases[] = {
        {"Site", "3", ProjectFound::Yes, 3},
        {"Site", "1", ProjectFound::Yes, 1},
        {"Site", "", ProjectFound::Several, 1},
        {"Site", "9", ProjectFound::Several, 1},
        {"Other", "another since", ProjectFound::Yes, 2},
        {"other", "2", ProjectFound::No, 2}, // and stays
        {"O'Neil = 'x'", "", ProjectFound::Yes, 4},
        {"", "", ProjectFound::No, 4},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(
            FindProject(table.rows, QString::fromLatin1(row.name), QString::fromLatin1(row.number)),
            row.found)
            << row.name << ' ' << row.number;
        EXPECT_EQ(table.rows.position(), row.position) << row.name << ' ' << row.number;
    }
    EXPECT_EQ(NumberIfShared(table.rows), "");
    table.rows.setPosition(3);
    EXPECT_EQ(NumberIfShared(table.rows), "3");
    EXPECT_EQ(table.rows.position(), 3);
}

TEST_F(ProjectChangesTest, ARenamedProjectTakesTodayThenTheHistoryAlongWhenAsked) {
    AddProject(QStringLiteral("It's old"), QStringLiteral("1"));
    AddProject(QStringLiteral("Idle"), QStringLiteral("2"));
    AddRecentProject(QStringLiteral("Idle"));
    AddRecentProject(QStringLiteral("It's old"));
    Book(QStringLiteral("It's old"), QStringLiteral("1"), 90);
    QStringList today;
    projectSinks.renameToday = [&](const RenamedProject& renamed) {
        if (today.isEmpty())
            EXPECT_EQ(Booked("It's old"), 90) << "the history comes second";
        today.append(renamed.from + u'>' + renamed.to + renamed.number);
    };
    int refreshed = 0;
    projectSinks.changed = [&] { ++refreshed; };
    OpenManager();
    dialogs.expect(QStringLiteral("Time is booked on \"It's old\": 1.5 hours"), BoxAnswer::Yes);
    Rename("New");
    EXPECT_EQ(today, QStringList("It's old>New"));
    EXPECT_EQ(Booked("New"), 90);
    EXPECT_EQ(Recent(), "New,Idle");
    EXPECT_GT(refreshed, 0);

    dialogs.expect(QStringLiteral("Rename Project"), BoxAnswer::No);
    Rename("Newer");
    EXPECT_EQ(Booked("New"), 90);
    EXPECT_EQ(Recent(), "Newer,Idle");

    GoTo(2);
    Rename("Nothing booked"); // and nothing to ask
    EXPECT_EQ(Recent(), "Newer,Nothing booked");
    DayEntries = {{"Nothing booked", "2", "9:00 AM", "", "", ""}};
    dialogs.expect(QStringLiteral("Rename Project"), BoxAnswer::Yes);
    Rename("Today");
    EXPECT_EQ(today.last(), "Nothing booked>Today");
}

TEST_F(ProjectChangesTest, AHistoryThatIsLockedIsRenamedLater) {
    AddProject(QStringLiteral("Old"), QStringLiteral("1"));
    Book(QStringLiteral("Old"), QStringLiteral("1"), 90);
    OpenManager();
    {
        Connection other(path(QStringLiteral("DayInfo.mdb")));
        other.execute(QStringLiteral("BEGIN EXCLUSIVE")); // nobody can see what is booked
        dialogs.expect(QStringLiteral("Rename Project"), BoxAnswer::Yes);
        Rename("New");
        EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), "New");
        EXPECT_EQ(TailValues(tail::Rename), QStringList("Old;New;"));
        other.execute(QStringLiteral("ROLLBACK"));
    }
    EXPECT_EQ(Booked("Old"), 90);
    RetryRollUp();
    EXPECT_EQ(Booked("New"), 90);
    EXPECT_TRUE(TailValues(tail::Rename).isEmpty());
}

TEST_F(ProjectChangesTest, BesideTheProcessThatKeepsTheDayNothingIsRenamed) {
    AddProject(QStringLiteral("Old"), QStringLiteral("1"));
    OpenManager();
    KeepsDay = false;
    dialogs.expect(QStringLiteral("Rename \"Old\" there"));
    Rename("New");
    EXPECT_EQ(Stored("ProjectInfo", 1, "Project_Name"), "Old");
    Manager().smuiPanel1.click(QStringLiteral("CANCEL"));
}

TEST_F(ProjectChangesTest, TodayThatCantBeSavedLeavesTheHistoryAsItIs) {
    AddProject(QStringLiteral("Old"), QStringLiteral("1"));
    Book(QStringLiteral("Old"), QStringLiteral("1"), 90);
    projectSinks.renameToday = [](const RenamedProject&) { Raise(errors::PathAccess); };
    OpenManager();
    dialogs.expect(QStringLiteral("Rename Project"), BoxAnswer::Yes);
    dialogs.expect(QStringLiteral("RenameBookedTime"));
    Rename("New");
    EXPECT_EQ(Booked("Old"), 90);
}

TEST_F(ProjectChangesTest, ASecondProjectOfANameIsAskedAboutAndTheRecentListShowsNumbers) {
    AddProject(QStringLiteral("Site"), QStringLiteral("1"));
    AddProject(QStringLiteral("Other"), QStringLiteral("2"));
    AddRecentProject(QStringLiteral("Site"));
    AddRecentProject(QStringLiteral("Other"));
    Book(QStringLiteral("Site"), QStringLiteral("1"), 60);
    Book(QStringLiteral("Other"), QStringLiteral("2"), 30);
    OpenManager();
    GoTo(2);
    dialogs.expect(QStringLiteral("already a project named \"Site\" (number 1)"), BoxAnswer::No);
    Rename("Site");
    EXPECT_EQ(Stored("ProjectInfo", 2, "Project_Name"), "Other");
    EXPECT_EQ(Row("PROJECT_NAME"), "Site") << "to be mended";

    dialogs.expect(QStringLiteral("Project Name"), BoxAnswer::Yes);
    dialogs.expect(QStringLiteral("Rename Project"), BoxAnswer::Yes);
    Edit("UPDATE");
    EXPECT_EQ(Recent(), "Site (2),Site (1)");
    Type("NOTES", QStringLiteral("agreed to before"));
    Edit("UPDATE"); // no question
    dialogs.expect(QStringLiteral("same number"), BoxAnswer::No);
    Type("PROJECT_NUM", QStringLiteral("1"));
    Edit("UPDATE");
    Type("PROJECT_NUM", QStringLiteral("22"));
    Edit("UPDATE");
    EXPECT_EQ(Recent(), "Site (22),Site (1)");
    Type("PROJECT_NUM", QStringLiteral("2"));
    Edit("UPDATE");

    // Only the time of this one goes along, and a name that is one project's needs no number.
    dialogs.expect(QStringLiteral("0.5 hours"), BoxAnswer::Yes);
    Rename("Own");
    EXPECT_EQ(Booked("Site"), 60);
    EXPECT_EQ(Booked("Own"), 30);
    EXPECT_EQ(Recent(), "Own,Site");

    Edit("ADD_NEW");
    for (const auto& [row, text] :
         {std::pair("PROJECT_NAME", "Own"), {"PROJECT_NUM", "4"}, {"RATE", "1"}})
        Type(row, QString::fromLatin1(text));
    dialogs.expect(QStringLiteral("Project Name"), BoxAnswer::Yes);
    Edit("SAVE");
    EXPECT_EQ(StoredCount("ProjectInfo"), 3);
    EXPECT_EQ(Recent(), "Own (2),Site") << "the one that was meant";
}

TEST_F(ProjectChangesTest, ADeleteSaysWhatRefersToTheRecordAndTheRecentListFollows) {
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    AddProject(QStringLiteral("Site"), QStringLiteral("1"), 1);
    AddProject(QStringLiteral("Site"), QStringLiteral("2"), 1);
    AddProject(QStringLiteral("Idle"), QStringLiteral("3"));
    for (const char* number : {"1", "2"})
        AddRecentProject(QStringLiteral("Site"), QString::fromLatin1(number));
    AddRecentProject(QStringLiteral("Idle"));
    Book(QStringLiteral("Site"), QStringLiteral("1"), 60);
    Book(QStringLiteral("Site"), QStringLiteral("2"), 45);
    OpenManager();
    const auto question = [this] { return dialogs.shown.last().text; };
    const QString given = QStringLiteral("Are you sure you want to delete this record");
    dialogs.expect(given, BoxAnswer::Ok);
    Edit("DELETE");
    EXPECT_TRUE(question().startsWith(given + u"\r\n\r\n1 hour in the history"))
        << question().toStdString();
    EXPECT_EQ(Recent(), "Idle,Site");
    dialogs.expect(given, BoxAnswer::Cancel);
    Edit("DELETE");
    EXPECT_TRUE(question().contains(u"1.75 hours")) << "the name is its own now";
    EXPECT_EQ(Recent(), "Idle,Site");
    GoTo(2);
    dialogs.expect(QStringLiteral("No time in the history"), BoxAnswer::Ok);
    Edit("DELETE");
    EXPECT_EQ(Recent(), "Site");

    ShowTable(Customers);
    dialogs.expect(QStringLiteral("1 project refers to this customer."), BoxAnswer::Cancel);
    Edit("DELETE");
    Execute(QStringLiteral("UPDATE ProjectInfo SET CustInfoDBID = NULL"));
    dialogs.expect(QStringLiteral("No project refers to this customer."), BoxAnswer::Ok);
    Edit("DELETE");
    EXPECT_EQ(StoredCount("CustomerInfo"), 0);
}

} // namespace
} // namespace kelvrane::testing
