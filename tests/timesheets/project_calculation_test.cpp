#include "sheet_fixture.h"
#include "timesheets/project_calculation.h"

#include <QFile>

namespace kelvrane::testing {
namespace {

class ProjectCalculationTest : public SheetTest {
  protected:
    void calculate(SheetContext& context) {
        SetUpByProjectCalculations(context, end, QStringLiteral("15 Minutes"));
    }
};

TEST_F(ProjectCalculationTest, AWeekOfTwoProjects) {
    addDay("1/5/2003", "Beta", 60);
    addDay("1/6/2003", "Alpha", 100, 10); // 90 minutes
    addDay("1/11/2003", "Alpha", 52);     // 0.87 of an hour rounds up
    addDay("1/12/2003", "Alpha", 600);    // after the period
    listDatabases({ownLine()});
    SheetContext context = scanned(weekTemplate(), end, {true});
    calculate(context);
    const char* cells[][2] = {
        {"A1", "Week 2, Jan 5 -  Jan 11"},
        {"A2", "Me"},
        {"A5", "Alpha"},
        {"B5", "1001"},
        {"D5", "1.5"},
        {"I5", "1"},
        {"J5", "2.5"},
        {"A6", "Beta"},
        {"C6", "1"},
        {"J6", "1"},
        {"J7", ""}, // a row without hours stays blank
        {"C12", "1"},
        {"D12", "1.5"},
        {"E12", "0"},
        {"I12", "1"},
        {"J4", ""},
    };
    for (const auto& [cell, shown] : cells)
        EXPECT_EQ(text(cell).toStdString(), shown) << cell;
    EXPECT_EQ(ss1.Range("J5").Formula(), "=SUM(C5:I5)");
    EXPECT_EQ(ss1.Range("I12").Formula(), "=SUM(I5:I11)");
    EXPECT_EQ(ss1.worksheet().style(ParseAddress(u"D5").value()).horizontal,
              HorizontalAlign::Center);
    EXPECT_TRUE(filed.isEmpty()) << "one database: filed by command only";
    EXPECT_FALSE(QFile::exists(path("ssMP_Template.htm")));
}

TEST_F(ProjectCalculationTest, EachAcceptedDatabaseBeginsOnTheScannedTemplate) {
    const QString other = path("other.mdb");
    CreateDayInfoDatabase(other);
    addDay("1/6/2003", "Alpha", 60);
    addDay("1/6/2003", "Beta", 60);
    addDayTo(other, "1/7/2003", "Gamma", 120);
    listDatabases({ownLine(), "Nobody;" + path("missing.mdb") + ";DECLINE", "Ann;" + other + ";"});
    SheetContext context = scanned(weekTemplate(), end, {true, false, true});
    calculate(context);
    // Once after each project, the sheet growing by a row.
    QStringList names;
    for (const auto& [name, html] : std::as_const(filed))
        names.append(name);
    EXPECT_EQ(names, (QStringList{"Me", "Me", "Ann"}));
    EXPECT_EQ(text("A2"), "Ann");
    EXPECT_EQ(text("A5"), "Gamma");
    EXPECT_EQ(text("A6"), "") << "nothing of the database before";
    Spreadsheet first;
    opened(first, filed[1].second);
    EXPECT_EQ(first.Range("A6").Value(), "Beta");
}

TEST_F(ProjectCalculationTest, ADatabaseThatCannotBeOpenedEndsItInTheGivenWords) {
    addDay("1/6/2003", "Alpha", 60);
    const QString missing = path("missing.mdb");
    writeFile("garbage.mdb", "no database");
    for (const QString& bad : {missing, path("garbage.mdb")}) {
        listDatabases({"Them;" + bad + ";ACCEPT", ownLine()});
        SheetContext context = scanned(weekTemplate(), end, {true, true});
        dialogs.expect(bad + " does not exist.  Please modify the Select Database Output window "
                             "and then recalculate the spread sheet again.");
        calculate(context);
        EXPECT_EQ(dialogs.shown.last().title, "Invalid file path");
        EXPECT_EQ(dialogs.shown.last().icon, BoxIcon::Stop);
        EXPECT_TRUE(filed.isEmpty());
        EXPECT_TRUE(QFile::exists(path("ssMP_Template.htm"))) << "stays until the screen closes";
    }
}

TEST_F(ProjectCalculationTest, AnEmptyHistoryEndsTheListAndAQuoteNothing) {
    CreateDayInfoDatabase(path("empty.mdb"));
    addDay("1/6/2003", "Alpha", 60);
    listDatabases({"None;" + path("empty.mdb") + ";ACCEPT", ownLine()});
    SheetContext context = scanned(weekTemplate(), end, {true, true});
    calculate(context);
    EXPECT_EQ(text("A5"), "") << "later databases aren't reached";

    addDay("1/6/2003", "O'Neil", 60);
    addDay("1/7/2003", "Zeta", 60);
    listDatabases({ownLine()});
    SheetContext again = scanned(weekTemplate(), end, {true});
    calculate(again);
    EXPECT_EQ(text("A6"), "O'Neil");
    EXPECT_EQ(text("J6"), "1");
    EXPECT_EQ(text("E7"), "1") << "Zeta's day is there";
}

TEST_F(ProjectCalculationTest, DaysBeyondTheLettersAreTold) {
    addDay("1/6/2003", "Alpha", 60);
    addDay("1/25/2003", "Alpha", 60); // column W
    addDay("1/26/2003", "Alpha", 60);
    listDatabases({ownLine()});
    SheetContext context = scanned(weekTemplate(), QDate(2003, 2, 5), {true});
    dialogs.expect("Error # 9 "); // once, not for each of the cells
    SetUpByProjectCalculations(context, QDate(2003, 2, 5), QStringLiteral("None"));
    EXPECT_EQ(text("D5"), "1");
}

TEST_F(ProjectCalculationTest, TheAliasReachesTheWholeFileAndOddNamesStayText) {
    addDay("1/6/2003", "=1+1", 60);
    addDay("1/6/2003", "0042", 30);
    listDatabases({"Tom & <Ann>;" + history() + ";ACCEPT"});
    SheetContext context = scanned(weekTemplate(), end, {true});
    calculate(context);
    EXPECT_EQ(text("A5"), "0042");
    EXPECT_EQ(text("A6"), "=1+1");
    EXPECT_EQ(text("D6"), "1");
}

} // namespace
} // namespace kelvrane::testing
