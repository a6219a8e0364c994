#include "worksheet/number_format.h"
#include "worksheet/typed_value.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <cmath>

namespace kelvrane::testing {
namespace {

struct TypedCase {
    const char* text;
    double number;
    const char* format;
    const char* shown = nullptr; ///< under that format, where it isn't the text itself
};

const TypedCase numbers[] = {
    {"75", 75, ""},
    {" 75\t", 75, "", "75"},
    {"02134", 2134, "", "2134"},
    {"+3", 3, "", "3"},
    {"-.5", -0.5, "", "-0.5"},
    {"5.", 5, "", "5"},
    {"(75)", -75, "", "-75"},
    {"1,234.50", 1234.5, "#,##0.00"},
    {"12,345,678", 12345678, "#,##0"},
    {"$75.00", 75, "$0.00"},
    {"$1080.00", 1080, "$0.00"},
    {"$1,080.00", 1080, "$#,##0.00"},
    {"$ 75", 75, "$0", "$75"},
    {"-$5", -5, "$0"},
    {"$-5", -5, "$0", "-$5"},
    {"($75.00)", -75, "$0.00", "-$75.00"},
    {"12%", 0.12, "0%"},
    {"-12.5 %", -0.125, "0.00%", "-12.50%"},
    {"57%", 0.57, "0%"}, // 57 / 100, not 57 * 0.01
    {"1e3", 1000, "0.00E+00", "1.00E+03"},
    {"1.5E-03", 0.0015, "0.00E+00", "1.50E-03"},
};

// The serial numbers are LibreOffice Calc's.
const TypedCase moments[] = {
    {"1/5/2003", 37626, "m/d/yyyy"},
    {"01/05/2003", 37626, "m/d/yyyy", "1/5/2003"},
    {"1/5/29", 47123, "m/d/yy"},
    {"1/5/30", 10963, "m/d/yy"},
    {"2/29/2004", 38046, "m/d/yyyy"},
    {"12/30/1899", 0, "m/d/yyyy"},
    {"2003-01-05", 37626, "yyyy-mm-dd"},
    {"5-Jan-2003", 37626, "d-mmm-yyyy"},
    {"5-jan-03", 37626, "d-mmm-yy", "5-Jan-03"},
    {"5 January 2003", 37626, "d mmmm yyyy"},
    {"January 5, 2003", 37626, "mmmm d, yyyy"},
    {"Sunday, Jan 5, 2003", 37626, "mmm d, yyyy", "Jan 5, 2003"},
    {"Sept 5, 2003", 37869, "mmm d, yyyy", "Sep 5, 2003"},
    {"9:30", 9.5 / 24, "h:mm"},
    {"9:30 AM", 9.5 / 24, "h:mm AM/PM"},
    {"9:30pm", 21.5 / 24, "h:mm AM/PM", "9:30 PM"},
    {"12:00 AM", 0, "h:mm AM/PM"},
    {"12:30 PM", 12.5 / 24, "h:mm AM/PM"},
    {"9 PM", 21.0 / 24, "h:mm AM/PM", "9:00 PM"},
    {"13:45:10", 49510.0 / 86400, "h:mm:ss"},
    {"13:45:10.5", 49510.5 / 86400, "h:mm:ss.0"},
    {"25:30", 25.5 / 24, "[h]:mm"},
    {"1/5/2003 9:30 AM", 37626 + 9.5 / 24, "m/d/yyyy h:mm AM/PM"},
    {"2003-01-05 19:30:15", 37626 + 70215.0 / 86400, "yyyy-mm-dd h:mm:ss"},
};

void expectTyped(const TypedCase& row) {
    const TypedValue typed = ParseTyped(row.text);
    ASSERT_TRUE(IsNumber(typed.value)) << row.text;
    EXPECT_DOUBLE_EQ(std::get<double>(typed.value), row.number) << row.text;
    EXPECT_EQ(typed.format, row.format) << row.text;
    EXPECT_EQ(FormatCellValue(typed.value, typed.format).toStdString(),
              row.shown ? row.shown : row.text);
    EXPECT_EQ(NumberOfText(row.text), std::get<double>(typed.value)) << row.text;
}

TEST(TypedValue, NumbersAndTheirFormats) {
    for (const TypedCase& row : numbers)
        expectTyped(row);
    EXPECT_FALSE(std::signbit(*NumberOfText("-0")));
    EXPECT_EQ(*NumberOfText("57%"), 0.57);
}

TEST(TypedValue, DatesTimesAndTheirFormats) {
    for (const TypedCase& row : moments)
        expectTyped(row);
}

TEST(TypedValue, WhatMeansNothingStaysText) {
    const QString digits(10'000, u'9');
    const QString signs(10'000, u'(');
    for (const QString& text : QStringList{" ",
                                           "Acme",
                                           "1 2",
                                           "--3",
                                           "(-3)",
                                           "(75",
                                           "75)",
                                           "$",
                                           "$5%",
                                           "%5",
                                           ".",
                                           "1,23",
                                           ",5",
                                           "1,",
                                           "1,2345",
                                           "1e",
                                           "1e400",
                                           "0x10",
                                           "nan",
                                           "inf",
                                           "555-1234",
                                           "1.2.3",
                                           "3.5 h",
                                           "1/5",
                                           "13/1/2003",
                                           "2/29/2003",
                                           "2/29/1900",
                                           "1/0/2003",
                                           "1/5/203",
                                           "12/29/1899",
                                           "5-Jan",
                                           "Jan 2003",
                                           "Jan 32, 2003",
                                           "5-Jan 2003",
                                           "9:60",
                                           "9:30:",
                                           ":30",
                                           "13:30 PM",
                                           "9:30 1/5/2003",
                                           "1/5/2003 25:00",
                                           "1/5/2003 x",
                                           "1:2:3:4",
                                           "9:30 AM AM",
                                           "٣",
                                           digits,
                                           signs,
                                           "1/" + digits,
                                           digits + ":30",
                                           QString(10'000, u','),
                                           QString(10'000, u':')}) {
        const TypedValue typed = ParseTyped(text);
        ASSERT_TRUE(IsText(typed.value)) << qPrintable(text.left(30));
        EXPECT_EQ(std::get<QString>(typed.value), text);
        EXPECT_EQ(NumberOfText(text), std::nullopt);
    }
}

TEST(TypedValue, EmptyTruthErrorsAndForcedText) {
    EXPECT_TRUE(IsEmpty(ParseTyped("").value));
    EXPECT_EQ(NumberOfText(""), std::nullopt);
    EXPECT_EQ(ParseTyped("true").value, CellValue(true));
    EXPECT_EQ(ParseTyped(" FALSE ").value, CellValue(false));
    EXPECT_EQ(NumberOfText("TRUE"), std::nullopt);
    EXPECT_EQ(ParseTyped("'02134").value, CellValue(QStringLiteral("02134")));
    EXPECT_EQ(ParseTyped("'").value, CellValue(QString()));
    EXPECT_EQ(NumberOfText("'5"), std::nullopt);
    for (const CellError error :
         {CellError::Null, CellError::DivisionByZero, CellError::Value, CellError::Reference,
          CellError::Name, CellError::Number, CellError::NotAvailable, CellError::Cycle})
        EXPECT_EQ(ParseTyped(CellErrorText(error).toLower()).value, CellValue(error));
}

TEST(CellMoments, SerialNumbersAndBack) {
    EXPECT_EQ(DateSerial(QDate(1900, 1, 1)), 2);
    EXPECT_EQ(DateSerial(QDate(1899, 12, 29)), -1);
    const QDateTime moment(QDate(2003, 1, 5), QTime(9, 30, 15), QTimeZone::utc());
    EXPECT_EQ(MomentOfSerial(MomentSerial(moment)), moment);
    EXPECT_EQ(MomentOfSerial(37626.9999999).date(), QDate(2003, 1, 6));
    EXPECT_EQ(MomentOfSerial(-0.25).toString(Qt::ISODate), "1899-12-29T18:00:00Z");
    EXPECT_EQ(MomentOfSerial(-1).date(), QDate(1899, 12, 29));
    EXPECT_EQ(MomentOfSerial(DateSerial(QDate(1, 1, 1))).date(), QDate(1, 1, 1));
    for (const double serial : {-693594.0, 2958466.0, 1e300, -1e300, std::nan("")})
        EXPECT_FALSE(MomentOfSerial(serial).isValid()) << serial;
}

} // namespace
} // namespace kelvrane::testing
