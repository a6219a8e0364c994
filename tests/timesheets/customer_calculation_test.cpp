#include "sheet_fixture.h"
#include "timesheets/customer_calculation.h"

#include <QFile>

namespace kelvrane::testing {
namespace {

class CustomerCalculationTest : public SheetTest {
  protected:
    void calculate(SheetContext& context) {
        SetUpByCustomerCalculations(context, end, QStringLiteral("15 Minutes"));
    }
    QStringList names() const {
        QStringList names;
        for (const auto& [name, html] : filed)
            names.append(name);
        return names;
    }
    static std::string shown(Spreadsheet& sheet, const char* cell) {
        return sheet.worksheet()
            .text(ParseAddress(QString::fromLatin1(cell)).value())
            .toStdString();
    }
};

TEST_F(CustomerCalculationTest, OneInvoiceForEachCustomer) {
    addDay("1/6/2003", "Alpha", 100, 10);
    addDay("1/7/2003", "Alpha", 60);
    addDay("1/8/2003", "Beta", 30);
    listDatabases({ownLine()});
    SheetContext context = scanned(invoiceTemplate(), end, {true});
    calculate(context);
    EXPECT_FALSE(context.noData);
    ASSERT_EQ(names(), (QStringList{"Acme", "Birch & Sons"}));
    Spreadsheet acme, birch;
    opened(acme, filed[0].second);
    const char* cells[][2] = {
        {"A1", "Acme"},    {"A2", "Springfield 02134"},
        {"B7", "6 Jan"},   {"C7", "Alpha"},
        {"D7", "1.5"},     {"E7", "$72.00"},
        {"F7", "$108.00"}, {"B8", "7 Jan"},
        {"F8", "$72.00"},  {"C9", ""},
        {"F3", "180"},
    };
    for (const auto& [cell, text] : cells)
        EXPECT_EQ(shown(acme, cell), text) << cell;
    EXPECT_EQ(acme.Range("F7").Formula(), "108") << "fixed, no formula";
    opened(birch, filed[1].second);
    EXPECT_EQ(shown(birch, "A1"), "Birch & Sons");
    EXPECT_EQ(shown(birch, "E7"), "$60.00") << "no discount";
    EXPECT_EQ(shown(birch, "C8"), "") << "a fresh template for each";
    for (const char* file : {"1.dat", "2.dat", "tCustfile.htm"})
        EXPECT_FALSE(QFile::exists(path(file))) << file;
}

TEST_F(CustomerCalculationTest, AnyNameReachesItsInvoice) {
    const char* names_[] = {"O'Neil's site", "R&D; part 2", "C:\\work\\", "a \"b\" ';--", "2024"};
    for (const char* name : names_) {
        addProject(name, "7;7", 50, 1);
        addDay("1/6/2003", name, 60);
    }
    listDatabases({ownLine()});
    SheetContext context = scanned(invoiceTemplate(), end, {true});
    calculate(context);
    ASSERT_EQ(names(), QStringList{"Acme"});
    Spreadsheet acme;
    opened(acme, filed[0].second);
    QStringList billed;
    for (const char* row : {"7", "8", "9", "10", "11"})
        billed.append(QString::fromStdString(shown(acme, (std::string("C") + row).c_str()) + '|' +
                                             shown(acme, (std::string("D") + row).c_str()) + '|' +
                                             shown(acme, (std::string("F") + row).c_str())));
    for (const char* name : names_)
        EXPECT_TRUE(billed.contains(QString(name) + "|1|$45.00")) << name;
}

TEST_F(CustomerCalculationTest, OfTwoProjectsOfANameEachIsBilledToItsOwnCustomer) {
    addProject("Site", "1001", 80, 1);
    addProject("Site", "2002", 60, 2);
    addDay("1/6/2003", "Site", 60);
    addDay("1/7/2003", "Site", 120);
    Connection(history()).execute("UPDATE DayInfo SET ProjectNumber = '2002' WHERE ID = 2");
    listDatabases({ownLine()});
    SheetContext context = scanned(invoiceTemplate(), end, {true});
    calculate(context);
    ASSERT_EQ(names(), (QStringList{"Acme", "Birch & Sons"}));
    Spreadsheet acme, birch;
    opened(acme, filed[0].second);
    opened(birch, filed[1].second);
    EXPECT_EQ(shown(acme, "F7") + shown(acme, "F8"), "$72.00");
    EXPECT_EQ(shown(birch, "F7") + shown(birch, "F8"), "$120.00");
}

TEST_F(CustomerCalculationTest, NothingInThePeriodShowsNoData) {
    listDatabases({ownLine()});
    SheetContext context = scanned(invoiceTemplate(), end, {true});
    calculate(context);
    EXPECT_TRUE(context.noData);
    EXPECT_TRUE(filed.isEmpty());
}

TEST_F(CustomerCalculationTest, AProjectThatIsGoneGivesUpItsDatabase) {
    const QString other = path("other.mdb");
    CreateDayInfoDatabase(other);
    addDay("1/6/2003", "Alpha", 60);
    addDay("1/6/2003", "Gone", 60);
    addDay("1/6/2003", "Zeta", 60);
    addDayTo(other, "1/6/2003", "Beta", 60);
    listDatabases({ownLine(), "Other;" + other + ";ACCEPT"});
    SheetContext context = scanned(invoiceTemplate(), end, {true, true});
    dialogs.expect("Customer ID for project name \"Gone\" does not exist, skipping this project.");
    calculate(context);
    EXPECT_EQ(names(), (QStringList{"Acme", "Birch & Sons"}));
}

TEST_F(CustomerCalculationTest, NothingIsFiledWithoutTheHoursOfADatabaseInUse) {
    const QString other = path("other.mdb");
    CreateDayInfoDatabase(other);
    addDay("1/6/2003", "Alpha", 60);
    addDayTo(other, "1/6/2003", "Beta", 60);
    listDatabases({ownLine(), "Other;" + other + ";ACCEPT"});
    Connection user(other);
    user.execute("BEGIN EXCLUSIVE");
    SheetContext context = scanned(invoiceTemplate(), end, {true, true});
    dialogs.expect("database is locked");
    calculate(context);
    EXPECT_TRUE(filed.isEmpty());
}

TEST_F(CustomerCalculationTest, RowsOfACustomerMetBeforeGoToTheOneMetLast) {
    addProject("Charlie", "1003", 50, 1);
    addDay("1/6/2003", "Alpha", 60);
    addDay("1/6/2003", "Beta", 60);
    addDay("1/6/2003", "Charlie", 60); // Acme again
    listDatabases({ownLine()});
    SheetContext context = scanned(invoiceTemplate(), end, {true});
    calculate(context);
    Spreadsheet birch;
    opened(birch, filed.value(1).second);
    EXPECT_EQ(shown(birch, "C8"), "Charlie");
}

TEST_F(CustomerCalculationTest, AProjectWithoutCustomerOverflowsAndEndsTheSheets) {
    addProject("Own", "1", 10, 0);
    addDay("1/6/2003", "Alpha", 60);
    addDay("1/6/2003", "Own", 60);
    listDatabases({ownLine()});
    SheetContext context = scanned(invoiceTemplate(), end, {true});
    dialogs.expect("Error # 6 ");
    dialogs.expect("This error was generated by the SetUpByCustomerCalculations function.");
    calculate(context);
    EXPECT_EQ(names(), QStringList{"Acme"});
    EXPECT_TRUE(QFile::exists(path("9999999.dat")));
}

TEST_F(CustomerCalculationTest, OptionalAnchorsAndAProjectWithoutARate) {
    const QString plain =
        saveTemplate("plain.htm", {{"A3", "#NAME#"}, {"B3", "#HOURS#"}, {"C3", "#NOTES#"}});
    addDay("1/6/2003", "Alpha", 3); // rounds to nothing
    listDatabases({ownLine()});
    SheetContext context = scanned(plain, end, {true});
    calculate(context);
    Spreadsheet sheet;
    opened(sheet, filed.value(0).second);
    EXPECT_EQ(shown(sheet, "A3"), "Alpha");
    EXPECT_EQ(shown(sheet, "B3"), "0");
    EXPECT_EQ(shown(sheet, "C3"), "#NOTES#") << "an anchor without a value shows its token";

    filed.clear();
    const QString bare = saveTemplate("bare.htm", {{"A3", "nothing"}});
    SheetContext none = scanned(bare, end, {true});
    dialogs.expect("Error # 9 ");
    calculate(none);
    EXPECT_TRUE(filed.isEmpty());
}

} // namespace
} // namespace kelvrane::testing
