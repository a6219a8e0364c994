#include "support/fakes.h"
#include "support/raised_error.h"
#include "timesheets/template_variables.h"
#include "timesheets/week_number.h"

namespace kelvrane::testing {
namespace {

using namespace Qt::StringLiterals;

const SheetPeriod january{u"1/5/2003"_s, QDate(2003, 1, 11), 2};

class TemplateVariables : public ProgramTest {
  protected:
    TemplateVariables() {
        sheetState = {};
        InitSpreadsheetTables();
    }
};

TEST_F(TemplateVariables, EachDateVariableHasItsForm) {
    const struct {
        QString text;
        QString expanded;
    } cases[] = {
        {u"#WEEK#"_s, u"2"_s},
        {u"#YEAR1#"_s, u"2003"_s},
        {u"#YEAR2#"_s, u"03"_s},
        {u"#DATE1#"_s, u"JAN 5 -  JAN 11"_s},
        {u"#DATE2#"_s, u"Jan 5 -  Jan 11"_s},
        {u"#DATE3#"_s, u"1/5 -  1/11"_s},
        {u"#DATE4#"_s, u"JANUARY 5 "_s},
        {u"#DATE5#"_s, u"January 5 "_s},
        {u"#DATE6#"_s, u"1/5 "_s},
        {u"#DATE7#"_s, u"JAN 5, 2003 -  JAN 11, 2003"_s},
        {u"#DATE8#"_s, u"January 5, 2003 -  January 11, 2003"_s},
        {u"#DATE9#"_s, u"1/5/2003 -  1/11/2003"_s},
        {u"#DATE10#"_s, u"1/5/03 -  1/11/03"_s},
        {u"#MONTH1#"_s, u"January"_s},
        {u"#MONTH2#"_s, u"JANUARY"_s},
        {u"#MONTH3#"_s, u"Jan"_s},
        {u"#MONTH4#"_s, u"JAN"_s},
        {u"Week #WEEK# of #YEAR1#, #WEEK#"_s, u"Week 2 of 2003, 2"_s},
        {u"#DATE11# #date1# #DATE# #YEAR# #YEAR3# #MONTH5# #NAME#"_s,
         u"#DATE11# #date1# #DATE# #YEAR# #YEAR3# #MONTH5# #NAME#"_s},
        {u"##WEEK##YEAR2#"_s, u"#203"_s},
        {u""_s, u""_s},
    };
    for (const auto& row : cases)
        EXPECT_EQ(ExpandDateVariables(row.text, january), row.expanded) << row.text.toStdString();

    const SheetPeriod day{u"12/31/1999"_s, QDate(1999, 12, 31), 53};
    EXPECT_EQ(ExpandDateVariables(u"#DATE10#"_s, day), "12/31/99 -  12/31/99");
    EXPECT_EQ(ExpandDateVariables(u"#YEAR2#"_s, day), "99");
    const SheetPeriod broken{u"soon"_s, QDate(), 0};
    EXPECT_EQ(ExpandDateVariables(u"#YEAR2# #WEEK#"_s, broken), "on 0");
    EXPECT_EQ(RaisedError([&] { ExpandDateVariables(u"#MONTH1#"_s, broken); }),
              errors::TypeMismatch);
    EXPECT_EQ(RaisedError([] { FormatDateRange(january, 11); }), errors::Subscript);
    EXPECT_EQ(RaisedError([] { FormatYearVariable(january, 0); }), errors::Subscript);
}

TEST_F(TemplateVariables, CustomerVariablesAreReplacedInOrder) {
    CustomerSheetFields fields{7,          u"Acme"_s,       u"Mr."_s,     u"John"_s,
                               u"Stone"_s, u"1 Main St."_s, u"Suite 2"_s, u"Springfield"_s,
                               u"MA"_s,    u"02134"_s};
    EXPECT_EQ(
        ExpandCustomerVariables(u"#COMPANY#|#TITLE# #FIRSTNAME# #LASTNAME#|#ADDRESS1#|"
                                "#ADDRESS2#|#CITY#, #STATE# #ZIPCODE#|#CITY#|#CUS_NAME#"_s,
                                fields),
        "Acme|Mr. John Stone|1 Main St.|Suite 2|Springfield, MA 02134|Springfield|#CUS_NAME#");
    fields.Company = u"#CITY# Works, #COMPANY#"_s; // later variables are expanded, itself isn't
    EXPECT_EQ(ExpandCustomerVariables(u"#COMPANY#"_s, fields), "Springfield Works, #COMPANY#");

    fields.Company = u"#TITLE#"_s.repeated(200);
    fields.Title = u"#FIRSTNAME#"_s.repeated(200);
    fields.FirstName = u"#LASTNAME#"_s.repeated(200);
    EXPECT_EQ(RaisedError([&] { ExpandCustomerVariables(u"#COMPANY#"_s, fields); }),
              errors::Overflow);
    const QString longText(100'000, u'x');
    EXPECT_EQ(ExpandCustomerVariables(longText, fields), longText);
}

TEST_F(TemplateVariables, TheTablesHaveTheirWordsInOrder) {
    EXPECT_EQ(At(ColumnLetters, 0), "A");
    EXPECT_EQ(At(ColumnLetters, 16), "Q");
    for (const int outside : {-1, 17})
        EXPECT_EQ(RaisedError([&] { At(ColumnLetters, outside); }), errors::Subscript);
    EXPECT_EQ(QStringList(ReservedVariables.begin(), ReservedVariables.end()).join(u' '),
              "#NAME# #NUMBER# #HOURS# #TOTAL# #DATE# #YEAR# #WEEK# #CUS_NAME# #CUS_TITLE# "
              "#CUS_ADDR1# #CUS_ADDR2# #CUS_CITY# #CUS_STATE# #CUS_ZIP# #CUS_CSZ# #RATE# #ALIAS#");
    EXPECT_EQ(QStringList(ShortDayNames.begin(), ShortDayNames.end()).join(u' '),
              "Sun Mon Tues Wed Thur Fri Sat");
    ResetSSVariables();
    QStringList names;
    for (const SSVariable& variable : SSVariables)
        names.append(variable.Name);
    EXPECT_EQ(names.join(u' '), "#NAME# #NUMBER# #HOURS# #VTOTAL# #HTOTAL# #DAY# #NOTES# #RATE# "
                                "#TOTAL#  ");
}

TEST_F(TemplateVariables, ASheetByProjectNeedsItsNamesAndWithNumbersItsHours) {
    const struct {
        bool name, number, hours;
        const char* missing;
        bool hasNumbers;
    } cases[] = {
        {true, true, true, nullptr, true},     {true, false, true, nullptr, false},
        {true, false, false, nullptr, false}, // neither is asked for
        {true, true, false, "#HOURS#", true},  {false, true, true, "#NAME#", true},
        {false, false, false, "#NAME#", true},
    };
    for (const auto& row : cases) {
        SSVariables[anchor::Total].Row = 9;
        ResetSSVariables();
        EXPECT_EQ(SSVariables[anchor::Total].Row, -1);
        const auto place = [](anchor::Place which, bool isThere) {
            if (isThere)
                SSVariables[which].Row = SSVariables[which].Col = 1;
        };
        place(anchor::Name, row.name);
        place(anchor::Number, row.number);
        place(anchor::Hours, row.hours);
        if (row.missing)
            dialogs.expect(u"TimeSheet can not be created without setting the "_s +
                           QLatin1String(row.missing) + u" variable"_s);
        EXPECT_EQ(CheckProjectAnchors(), row.missing == nullptr);
        EXPECT_EQ(HasNumberColumn, row.hasNumbers);
    }
    EXPECT_EQ(dialogs.shown.last().title, "Spreadsheet can not be calculated");
}

TEST_F(TemplateVariables, WeeksAndWeekdays) {
    const struct {
        QDate date;
        int startOfWeek;
        int week;
    } cases[] = {
        {QDate(2003, 1, 1), 1, 1},    {QDate(2003, 1, 4), 1, 1}, // a Saturday
        {QDate(2003, 1, 5), 1, 2},    {QDate(2003, 1, 5), 2, 1},    {QDate(2003, 1, 6), 2, 2},
        {QDate(2003, 1, 1), 4, 1},    {QDate(2003, 1, 8), 4, 2}, // New Year on the first day
        {QDate(2003, 12, 31), 1, 53}, {QDate(2000, 12, 31), 1, 54},
    };
    for (const auto& row : cases)
        EXPECT_EQ(WeekNumber(row.date, row.startOfWeek), row.week)
            << row.date.toString(Qt::ISODate).toStdString() << " " << row.startOfWeek;
    EXPECT_EQ(RaisedError([] { WeekNumber(QDate(), 1); }), errors::BadArgument);
    EXPECT_EQ(RaisedError([] { WeekNumber(QDate(2003, 1, 1), 8); }), errors::BadArgument);

    EXPECT_EQ(WeekdayNumberConvert(true, u"Sunday"_s), "1");
    EXPECT_EQ(WeekdayNumberConvert(true, u"Saturday"_s), "7");
    EXPECT_EQ(WeekdayNumberConvert(false, u"2"_s), "Monday");
    for (const char* unknown : {"", "0", "8", "Sun", "monday", "1.0"}) {
        EXPECT_EQ(WeekdayNumberConvert(true, QLatin1String(unknown)), "") << unknown;
        EXPECT_EQ(WeekdayNumberConvert(false, QLatin1String(unknown)), "") << unknown;
    }
}

} // namespace
} // namespace kelvrane::testing
