#include "records/customer_browser.h"
#include "records/frmBrowseForCust.h"
#include "records/record_fixture.h"
#include "widgets/keyed_panel.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace kelvrane::testing {
namespace {

class frmBrowseForCustTest : public RecordTest {
  protected:
    frmBrowseForCustTest() {
        AddCustomer(QStringLiteral("Acme"), QStringLiteral("Stone"));
        AddCustomer(QStringLiteral("Bold"), QStringLiteral("Acker"));
        AddCustomer(QStringLiteral("Crisp"), QStringLiteral("Reed"));
    }
    void Browse(int customerOfProject = 0) {
        AddProject(QStringLiteral("Alpha"), QStringLiteral("A-1"), customerOfProject);
        OpenManager();
        screen = std::make_unique<frmBrowseForCust>();
        screen->show();
    }
    void Click(const char* key) {
        QTest::mouseClick(screen->findChild<QAbstractButton*>(QString::fromLatin1(key)),
                          Qt::LeftButton);
    }
    void Find(const char* text) {
        auto* field = screen->findChild<QLineEdit*>(QStringLiteral("FINDWHAT"));
        field->clear();
        QTest::keyClicks(field, QString::fromLatin1(text));
        Click("FIND");
    }
    QString Number() { return screen->findChild<QLabel*>(QStringLiteral("RECORDNUM"))->text(); }
    QString Marked() {
        return screen->findChild<KeyedPanel*>(QStringLiteral("smuiCustInfo"))->currentKey();
    }
    static QString Company() { return Browser().smuiCustInfo.value(QStringLiteral("CUSCOMPANY")); }

    std::unique_ptr<frmBrowseForCust> screen;
};

TEST_F(frmBrowseForCustTest, EveryItemHasItsControlAndSteppingStopsAtBothEnds) {
    Browse(2);
    EXPECT_EQ(screen->windowTitle(), "Browse for Customer");
    EXPECT_TRUE(screen->isModal());
    for (const KeyedItem& item : Browser().SmartStatusBar.items())
        EXPECT_TRUE(screen->findChild<QWidget*>(item.key)) << item.key.toStdString();
    EXPECT_EQ(Company(), "Bold");
    EXPECT_EQ(Number(), "Record 2 of 3");
    for (int press = 0; press < 3; ++press)
        Click("NEXT");
    EXPECT_EQ(Number(), "Record 3 of 3");
    EXPECT_EQ(Company(), "Crisp");
    for (int press = 0; press < 3; ++press)
        Click("PREVIOUS");
    EXPECT_EQ(Number(), "Record 1 of 3");
    Click("SHOWFIND"); // inert
    EXPECT_EQ(Company(), "Acme");
}

TEST_F(frmBrowseForCustTest, TheSelectedCustomerIsStoredWithTheProject) {
    Browse();
    EXPECT_EQ(Row("CUSTID_SHOW"), NotAssigned);
    Click("NEXT");
    Click("SELECT");
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmBrowseForCust});
    EXPECT_EQ(Row("CUSTID_SHOW"), "Bold - Acker");
    EXPECT_EQ(Row("CUSTID_HIDE"), "2");
    EXPECT_EQ(Row("CUSCITY"), "Springfield");
    EXPECT_EQ(RecordPanel().item(QStringLiteral("CUSTID_SHOW")).role, TextRole::Value);
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustInfoDBID"), "") << "only saving the project stores it";
    Edit("UPDATE");
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustInfoDBID"), "2");
    EXPECT_EQ(Stored("ProjectInfo", 1, "CustomerID"), "Bold - Acker");
}

TEST_F(frmBrowseForCustTest, ClosingLeavesThePanelAndTheCursorWhereItIs) {
    Browse(1);
    Click("NEXT");
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmBrowseForCust});
    EXPECT_EQ(Row("CUSCOMPANY"), "Acme");
    EXPECT_EQ(CustomerRecords().position(), 2);
    // Behind the project's customer: that isn't a deleted one.
    screen = std::make_unique<frmBrowseForCust>();
    EXPECT_EQ(Number(), "Record 1 of 3");
}

TEST_F(frmBrowseForCustTest, ADeletedCustomerIsToldAndTheFirstOneShown) {
    dialogs.strict = false;
    Browse(9);
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_EQ(dialogs.shown[0].title, "Invalid Customer ID");
    EXPECT_EQ(dialogs.shown[0].text,
              "Customer ID was deleted from the database. Please select a new customer");
    EXPECT_EQ(Number(), "Record 1 of 3");
}

TEST_F(frmBrowseForCustTest, FindGoesThroughAllFieldsOfAllRecordsInAnyCase) {
    Execute(QStringLiteral("UPDATE CustomerInfo SET Title = NULL"));
    Browse();
    Click("FIND"); // nothing to find: no message
    Find("aC");
    EXPECT_EQ(Number(), "Record 1 of 3");
    EXPECT_EQ(Marked(), "CUSCOMPANY");
    Click("FIND");
    EXPECT_EQ(Number(), "Record 2 of 3");
    EXPECT_EQ(Marked(), "CUSLASTNAME");
    dialogs.strict = false;
    Click("FIND");
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_EQ(dialogs.shown[0].text, "No records found");
    EXPECT_EQ(dialogs.shown[0].title, " No records");
    EXPECT_EQ(Number(), "Record 2 of 3");
    Click("FIND"); // begins anew
    EXPECT_EQ(Number(), "Record 1 of 3");
    Find("reed");
    EXPECT_EQ(Company(), "Crisp");
    EXPECT_EQ(Marked(), "CUSLASTNAME");
    Click("PREVIOUS");
    EXPECT_EQ(Marked(), "") << "the mark belongs to the record found";
}

TEST_F(frmBrowseForCustTest, TheManagerThatClosesTakesItAlong) {
    Browse();
    screens.loaded.insert(Screen::frmBrowseForCust);
    ItemSelected = true;
    UnloadDataBase();
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmBrowseForCust});
}

} // namespace
} // namespace kelvrane::testing
