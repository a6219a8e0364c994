#include "records/customer_record.h"
#include "records/record_fixture.h"

namespace kelvrane::testing {
namespace {

class CustomerRecordTest : public RecordTest {
  protected:
    void OpenCustomers() {
        OpenManager();
        ShowTable(Customers);
    }
};

TEST_F(CustomerRecordTest, ARowThatIsRefusedStopsTheSaveThere) {
    struct Refusal {
        const char* row;
        const char* text;
        const char* message;
    };
    const Refusal refusals[] = {
        {"CUSFIRSTNAME", "", "Company name cannot cannot be blank!"},
        {"CUSLASTNAME", "", "Customer's last name cannot be blank!"},
        {"CUSADDR1", "", "Customer address(1) cannot be blank!"},
        {"CUSCITY", "", "City cannot be blank!"},
        {"CUSSTATE", "", "State cannot be blank!"},
        {"CUSZIP", "", "Zip Code cannot be blank!"},
        {"CUSDISCOUNT", "", "Discount cannot be blank!"},
        {"CUSDISCOUNT", "100.5", "Customer discount cannot exceed 100%"},
    };
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    OpenCustomers();
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.message);
        DisplayCustomer();
        Type(refusal.row, QString::fromLatin1(refusal.text));
        dialogs.expect(QString::fromLatin1(refusal.message));
        EXPECT_EQ(SaveNewCustomerProject(), 103);
        EXPECT_EQ(dialogs.shown.last().text, QString::fromLatin1(refusal.message));
        EXPECT_EQ(dialogs.shown.last().title, "Invalid Entry");
        CustomerRecords().cancelUpdate();
    }
    EXPECT_EQ(Stored("CustomerInfo", 1, "LastName"), "Stone");
}

TEST_F(CustomerRecordTest, SavesWhatIsAllowedAndAlwaysGives103) {
    AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
    OpenCustomers();
    Type("CUSCOMPANY", QString());
    Type("CUSTITLE", QString());
    for (const char* discount : {"100", "-5"}) {
        Type("CUSDISCOUNT", QString::fromLatin1(discount));
        EXPECT_EQ(SaveNewCustomerProject(), 103);
        EXPECT_EQ(Stored("CustomerInfo", 1, "Discount"), discount);
    }
    EXPECT_EQ(Stored("CustomerInfo", 1, "Company"), "");

    Type("CUSDISCOUNT", QStringLiteral("50 %"));
    Type("CUSCITY", QStringLiteral("Shelbyville"));
    dialogs.expect(QStringLiteral("SaveNewCustomerProject"));
    EXPECT_EQ(SaveNewCustomerProject(), 103);
    EXPECT_EQ(Stored("CustomerInfo", 1, "City"), "Shelbyville");
    EXPECT_EQ(Stored("CustomerInfo", 1, "Discount"), "-5");
}

TEST_F(CustomerRecordTest, ANewCustomerIsEnteredAndTheScreenStaysOnIt) {
    OpenCustomers();
    dialogs.expect(QStringLiteral("Nothing to update: Database is empty"));
    Edit("UPDATE");
    EXPECT_EQ(dialogs.shown.last().title, "Empty Database");

    Edit("ADD_NEW_CUSTOMER");
    for (const char* row : {"CUSFIRSTNAME", "CUSLASTNAME", "CUSADDR1", "CUSCITY", "CUSSTATE",
                            "CUSZIP", "CUSDISCOUNT"})
        Type(row, QStringLiteral("5"));
    Edit("SAVE");
    EXPECT_EQ(EntryStatus, 103);
    EXPECT_EQ(StoredCount("CustomerInfo"), 1);
    EXPECT_EQ(Row("CUSCITY"), "5");
    EXPECT_TRUE(Manager().smuiPanel1.item(QStringLiteral("ADD_NEW_CUSTOMER")).visible);
    EXPECT_TRUE(Manager().smuiPanel1.item(QStringLiteral("TABLE")).visible);

    Edit("ADD_NEW_CUSTOMER");
    EXPECT_EQ(Row("CUSCITY"), "");
    Edit("CANCEL");
    EXPECT_EQ(Row("CUSCITY"), "5");
    EXPECT_EQ(StoredCount("CustomerInfo"), 1);
}

TEST_F(CustomerRecordTest, ANewNameIsCarriedToProjectsByTheCustomersPosition) {
    for (const char* name : {"One", "Two", "Three"})
        AddCustomer(QString::fromLatin1(name), QStringLiteral("Stone"));
    AddProject(QStringLiteral("P1"), QStringLiteral("1"), 2);
    AddProject(QStringLiteral("P2"), QStringLiteral("2"), 3);
    AddProject(QStringLiteral("P3"), QStringLiteral("3"), 0);
    AddProject(QStringLiteral("P4"), QStringLiteral("4"), 2);
    Execute(QStringLiteral("DELETE FROM CustomerInfo WHERE ID = 1"));
    OpenManager();
    Step("CmdUp");
    ShowTable(Customers);
    Step("CmdUp");
    ASSERT_EQ(Row("CUSCOMPANY"), "Three");
    ASSERT_EQ(CustomerRecords().position(), 2); // the ID is 3
    ProjectRecords().setPosition(2);
    Type("CUSCOMPANY", QStringLiteral("Drei"));
    Edit("UPDATE");
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustomerID"), "Drei - Stone");
    EXPECT_EQ(Stored("ProjectInfo", 2, "CustomerID"), "old - text");
    EXPECT_EQ(Stored("ProjectInfo", 3, "CustomerID"), "");
    EXPECT_EQ(Stored("ProjectInfo", 4, "CustomerID"), "Drei - Stone");
    EXPECT_EQ(ProjectRecords().position(), 2);
    EXPECT_EQ(CustomerPosition, 2);
    EXPECT_EQ(Row("CUSCOMPANY"), "Drei");
}

TEST_F(CustomerRecordTest, DeleteMovesTheCursorAndLeavesTheProjects) {
    struct Case {
        int rows;
        int position;
        const char* thenOn;
    };
    AddProject(QStringLiteral("P"), QStringLiteral("1"), 1);
    for (const Case& row : {Case{1, 1, ""}, {2, 1, "C2"}, {2, 2, "C1"}, {3, 2, "C3"}}) {
        SCOPED_TRACE(::testing::Message() << row.position << " of " << row.rows);
        UnloadDataBase();
        Execute(QStringLiteral("DELETE FROM CustomerInfo"));
        for (int i = 1; i <= row.rows; ++i)
            AddCustomer(QStringLiteral("C%1").arg(i), QStringLiteral("Stone"));
        OpenCustomers();
        for (int i = 1; i < row.position; ++i)
            Step("CmdUp");
        dialogs.expect(QStringLiteral("Are you sure"), BoxAnswer::Ok);
        Edit("DELETE");
        EXPECT_EQ(StoredCount("CustomerInfo"), row.rows - 1);
        if (*row.thenOn)
            EXPECT_EQ(Row("CUSCOMPANY"), row.thenOn);
        else
            EXPECT_EQ(RecordPanel().items().first().caption, "Customer database is empty");
    }
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustomerID"), "old - text");
}

TEST_F(CustomerRecordTest, SteppingKeepsARecordThatWasSaved) {
    AddCustomer(QStringLiteral("One"), QStringLiteral("Stone"));
    AddCustomer(QStringLiteral("Two"), QStringLiteral("Stone"));
    OpenCustomers();
    Type("CUSCITY", QStringLiteral("Ogdenville"));
    dialogs.expect(QStringLiteral("Save Changes?"), BoxAnswer::Yes);
    Step("CmdUp");
    EXPECT_EQ(Row("CUSCOMPANY"), "One");
    Step("CmdUp");
    EXPECT_EQ(Row("CUSCOMPANY"), "Two");
    EXPECT_EQ(Stored("CustomerInfo", 1, "City"), "Ogdenville");
}

} // namespace
} // namespace kelvrane::testing
