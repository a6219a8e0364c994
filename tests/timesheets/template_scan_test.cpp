#include "support/fakes.h"
#include "timesheets/template_scan.h"
#include "worksheet/spreadsheet.h"

namespace kelvrane::testing {
namespace {

using namespace Qt::StringLiterals;

const SheetPeriod january{u"1/5/2003"_s, QDate(2003, 1, 11), 2};

class TemplateScan : public ProgramTest {
  protected:
    TemplateScan() {
        sheetState = {};
        InitSpreadsheetTables();
        ResetSSVariables();
    }
    QString Value(const char* cell) { return ss1.Range(QString::fromLatin1(cell)).Value(); }
    QString Formula(const char* cell) { return ss1.Range(QString::fromLatin1(cell)).Formula(); }
    void Put(const char* cell, const QString& text) {
        ss1.Range(QString::fromLatin1(cell)).setValue(text);
    }
    /// "C5"; "" when it wasn't found.
    static QString Place(anchor::Place place) {
        const SSVariable& found = SSVariables[place];
        return found.Row == -1 ? QString()
                               : At(ColumnLetters, found.Col) + QString::number(found.Row);
    }
    /// The places of all anchors, in the order of the table.
    static QString Places() {
        QStringList places;
        for (int place = anchor::Name; place <= anchor::Total; ++place)
            places.append(Place(anchor::Place(place)));
        return places.join(u' ');
    }
    void LoadReady(const char* name) {
        QFile file(u":/templates/"_s + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ss1.setHTMLData(QString::fromUtf8(file.readAll()));
    }

    Spreadsheet ss1;
};

TEST_F(TemplateScan, CellsAreExpandedAndAnchorsBlanked) {
    const struct {
        const char* cell;
        QString text;
        QString after;
    } cases[] = {
        {"A1", u"Week #WEEK# of #YEAR1#"_s, u"Week 2 of 2003"_s},
        {"A2", u"beside it"_s, u"beside it"_s},
        {"A3", u"#week#"_s, u"#week#"_s},
        {"B1", u"x = #WEEK#"_s, u"x = #WEEK#"_s}, // an equals sign: left alone
        {"B2", u"a = b #RATE#"_s, u""_s},         // but an anchor there is found
        {"B3", u"=\"#DAY# #WEEK#\""_s, u""_s},    // in the result of a formula, too
        {"C5", u"#NAME# and #NUMBER# in #WEEK#"_s, u""_s},
        {"D5", u"#HTOTAL##VTOTAL#"_s, u""_s}, // by the table, not by the text
        {"E1", u"#name#"_s, u"#name#"_s},
        {"P50", u"#NOTES#"_s, u""_s},
        {"Q1", u"#HOURS# #WEEK#"_s, u"#HOURS# #WEEK#"_s},
        {"A51", u"#HOURS# #WEEK#"_s, u"#HOURS# #WEEK#"_s},
        {"F1", u"1.50"_s, u"1.5"_s},
    };
    for (const auto& row : cases)
        Put(row.cell, row.text);
    ScanTemplate(ss1, january);
    for (const auto& row : cases)
        EXPECT_EQ(Value(row.cell), row.after) << row.cell;
    EXPECT_EQ(Places(), "C5   D5  B3 P50 B2 ");
}

TEST_F(TemplateScan, OfTwoCellsTheLastByColumnsCounts) {
    Put("B9", u"#HOURS#"_s);
    Put("C2", u"#HOURS#"_s);
    Put("D8", u"#NAME#"_s);
    Put("D3", u"#NAME#"_s);
    Put("E1", u"=D8"_s); // blank once its cell is
    ScanTemplate(ss1, january);
    EXPECT_EQ(Place(anchor::Hours), "C2");
    EXPECT_EQ(Place(anchor::Name), "D8");
    for (const char* cell : {"B9", "C2", "D3", "D8"})
        EXPECT_EQ(Value(cell), "") << cell;
    EXPECT_EQ(Formula("E1"), "=D8");
    // A template scanned anew starts from nothing.
    ResetSSVariables();
    ScanTemplate(ss1, january);
    EXPECT_EQ(Places().trimmed(), "");
}

TEST_F(TemplateScan, CustomerVariablesReachColumnK) {
    const CustomerSheetFields fields{
        .ID = 1, .Company = u"Acme"_s, .City = u""_s, .ZipCode = u"02134"_s};
    Put("K50", u"#COMPANY#"_s);
    Put("L1", u"#COMPANY#"_s);
    Put("A51", u"#COMPANY#"_s);
    Put("B1", u"= #COMPANY#"_s);
    ss1.Range(u"C1"_s).setNumberFormat(u"@"_s);
    Put("C1", u"#ZIPCODE#"_s);
    Put("D1", u"#CITY##STATE#"_s);
    FillCustomerVariables(ss1, fields);
    EXPECT_EQ(Value("K50"), "Acme");
    EXPECT_EQ(Value("L1"), "#COMPANY#");
    EXPECT_EQ(Value("A51"), "#COMPANY#");
    EXPECT_TRUE(Formula("B1").contains(u"#COMPANY#"_s));
    EXPECT_EQ(Value("C1"), "02134");
    EXPECT_EQ(Value("D1"), "");
}

TEST_F(TemplateScan, TheReadyTimesheetHasItsAnchorsWhereTheTotalsLookForThem) {
    LoadReady("Timesheet.htm");
    EXPECT_EQ(Value("D8"), "Day 1");
    ScanTemplate(ss1, january);
    EXPECT_TRUE(CheckProjectAnchors());
    EXPECT_TRUE(HasNumberColumn);
    const SSVariable& hours = SSVariables[anchor::Hours];
    const SSVariable& vTotal = SSVariables[anchor::VTotal];
    const SSVariable& hTotal = SSVariables[anchor::HTotal];
    EXPECT_EQ(hTotal.Col, hours.Col + 7);
    EXPECT_EQ(vTotal.Col, hours.Col);
    EXPECT_GE(vTotal.Row - hours.Row, 25) << "room for the projects of a week";
    EXPECT_LE(vTotal.Row, 50);
    EXPECT_EQ(SSVariables[anchor::Name].Row, hours.Row);
    EXPECT_EQ(SSVariables[anchor::Number].Row, hours.Row);
    EXPECT_EQ(Value("B3"), "January 5, 2003 -  January 11, 2003");
    EXPECT_EQ(Value("D6"), "2");
    EXPECT_EQ(ss1.worksheet().text({7, hours.Col}), "Sun 5");
    EXPECT_EQ(ss1.worksheet().text({7, hours.Col + 6}), "Sat 11");

    const auto cell = [](int column, int row) -> QString {
        return At(ColumnLetters, column) + QString::number(row);
    };
    ss1.Range(cell(hours.Col, hours.Row)).setValue(1.5);
    ss1.Range(cell(hours.Col + 6, vTotal.Row - 1)).setValue(2.0);
    ss1.Range(cell(hTotal.Col, hours.Row)).setFormula(u"=SUM(D9:J9)"_s);
    ss1.Range(cell(hours.Col, vTotal.Row + 2)).setValue(4.0); // more projects than lines
    EXPECT_EQ(ss1.worksheet().text({vTotal.Row - 1, hTotal.Col}), "1.50");
    EXPECT_EQ(ss1.worksheet().text({5, 8}), "7.50");
}

TEST_F(TemplateScan, TheReadyInvoiceAddsUpAboveItsRows) {
    LoadReady("Invoice.htm");
    const CustomerSheetFields fields{1,         u"Acme"_s, u"Mr."_s,    u"John"_s, u"Stone"_s,
                                     u"12-1"_s, u"007"_s,  u"Boston"_s, u"MA"_s,   u"02134"_s};
    const QString asTyped = ss1.HTMLData();
    ScanTemplate(ss1, january); // has no date variables to lose
    EXPECT_EQ(Places(), "C13  D13   B13  E13 F13");
    ss1.setHTMLData(asTyped);
    FillCustomerVariables(ss1, fields);
    EXPECT_EQ(Value("B7"), "Acme");
    EXPECT_EQ(Value("B8"), "Mr. John Stone");
    EXPECT_EQ(Value("B9"), "12-1 007");
    EXPECT_EQ(Value("B10"), "Boston, MA 02134");
    EXPECT_EQ(ss1.worksheet().text({2, 1}), "March 2, 2026");
    for (int row = 13; row < 113; ++row) {
        ss1.Range(u"D"_s + QString::number(row)).setValue(1.5);
        ss1.Range(u"F"_s + QString::number(row)).setValue(u"$108.00"_s);
    }
    EXPECT_EQ(ss1.worksheet().text({6, 3}), "150.00");
    EXPECT_EQ(ss1.worksheet().text({6, 4}), "$10,800.00");
}

} // namespace
} // namespace kelvrane::testing
