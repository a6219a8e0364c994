#include "platform/texts.h"
#include "worksheet/format_picture.h"
#include "worksheet/number_format.h"
#include "worksheet/number_format_table.h"

#include <QTime>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace kelvrane::testing {
namespace {

std::string shown(const CellValue& value, const QString& format) {
    return FormatCellValue(value, format).toStdString();
}

struct NumberCase {
    double number;
    const char* format;
    const char* text;
};
void expectAll(std::initializer_list<NumberCase> cases) {
    for (const NumberCase& row : cases)
        EXPECT_EQ(shown(row.number, row.format), row.text) << row.number << " as " << row.format;
}

TEST(NumberFormat, ShowsNumbersAndDatesAsSpreadsheetsDo) {
    int cases = 0;
    const QStringList lines = QString::fromUtf8(NumberFormatTable).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QStringList parts = line.split(u'~');
        for (const QString& pair : parts.mid(1)) {
            const qsizetype sign = pair.indexOf(u'=');
            const double number = pair.left(sign).toDouble();
            EXPECT_EQ(shown(number, parts[0]), pair.mid(sign + 1).toStdString())
                << number << " as " << qPrintable(parts[0]);
            ++cases;
        }
    }
    EXPECT_GT(cases, 500);
}

// Here spreadsheets differ among each other, or from what a reader of an invoice expects.
TEST(NumberFormat, OwnChoices) {
    expectAll({
        {1.005, "0%", "101%"}, // the decimal text decides, not 1.005 * 100
        {-0.0, "0.00", "0.00"},
        {-5, "[>=100]\"a\";0.0", "-5.0"}, // no condition hides a sign
        {-5, "[>100]0.0;[<=100]0", "-5"},
        {5, "[>100]0", "5"}, // no section is for it
        {-3, "[<-10]0;[>10]0;\"mid\" 0", "-mid 3"},
        {7, "0##", "007"},
        {1e20, "General", "1E+20"},
        {1.0 / 3, "General", "0.3333333333"},
        {100.0 / 3, "", "33.33333333"},
        {12345678901.25, "General", "12345678901"},
        {0.1 + 0.2, "General", "0.3"},
        {1234567890123456, "General", "1.23456789E+15"},
        {9.9999999999e-12, "General", "1E-11"},
        {0.25, "h:mm A/P", "6:00 A"},
        {0.9, "h:mm a/p", "9:36 p"},
        {-0.5, "m/d/yyyy", "###"},
        {-0.5, "h:mm", "###"},
        {2958466, "d", "###"},
        {1e300, "[h]:mm", "###"},
        {-1e-9, "[h]:mm", "0:00"},
        {37680.9999999999, "m/d/yyyy h:mm", "3/1/2003 0:00"}, // date and time agree
        {37680.9999999999, "d", "1"},
        {1.5 / 86400, "[ss].00", "01.50"},
        {1234.5, "Fixed", "1234.50"},
        {-1234.5, "currency", "($1,234.50)"},
        {0.5, "Medium Time", "12:00 PM"},
        {0, "Yes/No", "No"},
    });
}

TEST(NumberFormat, RoundsOnTheDecimalText) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> thousandths(-2'000'000, 2'000'000);
    for (int i = 0; i < 2000; ++i) {
        const double number = thousandths(random) / 1000.0;
        EXPECT_EQ(shown(number, "0.00"), TwoDecimalsText(number).toStdString());
    }
}

TEST(NumberFormat, EveryMinuteOfADayIsThatMinute) {
    const QTime midnight(0, 0);
    for (int minute = 0; minute < 1440; ++minute) {
        const QString clock = midnight.addSecs(minute * 60).toString("h:mm");
        EXPECT_EQ(FormatCellValue(45000 + minute / 1440.0, "h:mm m/d"), clock + " 3/15");
        const QString elapsed = QString::number(48 + minute / 60) + clock.right(3);
        EXPECT_EQ(FormatCellValue(2 + minute / 1440.0, "[h]:mm"), elapsed);
    }
}

TEST(NumberFormat, ValuesThatAreNoNumbers) {
    EXPECT_EQ(shown({}, "0.00"), "");
    EXPECT_EQ(shown({}, "@\" x\""), "");
    EXPECT_EQ(shown(true, "0.00"), "TRUE");
    EXPECT_EQ(shown(CellError::Reference, "0.00"), "#REF!");
    EXPECT_EQ(shown(QStringLiteral("7"), "0.00"), "7");
    EXPECT_EQ(shown(QStringLiteral("a"), "@"), "a");
    EXPECT_EQ(shown(QStringLiteral("a"), "0;@\" x\""), "a x");
    EXPECT_EQ(shown(QStringLiteral("a"), "0;0;0;\"<\"@\">\""), "<a>");
    EXPECT_EQ(shown(QStringLiteral("a"), ";;;"), "");
    EXPECT_EQ(shown(std::nan(""), "0.00"), "#NUM!");
    EXPECT_EQ(shown(-std::numeric_limits<double>::infinity(), "h:mm"), "#NUM!");
}

TEST(NumberFormat, TellsKindAndColor) {
    for (const char* format : {"d mmm", "h:mm", "[h]:mm", "[Red]yyyy", "AM/PM", "Short Date"})
        EXPECT_TRUE(IsDateFormat(format)) << format;
    for (const char* format : {"", "General", "0.00", "\"d\"0", "\\d0", "[Red]0", "@", "[h"})
        EXPECT_FALSE(IsDateFormat(format)) << format;
    EXPECT_TRUE(IsTextFormat("@"));
    EXPECT_FALSE(IsTextFormat("0;@"));

    const QString format = QStringLiteral("0;[red]-0;[Blue]0;[Green]@");
    EXPECT_EQ(FormatColorName(1.0, format), "");
    EXPECT_EQ(FormatColorName(-1.0, format), "Red");
    EXPECT_EQ(FormatColorName(0.0, format), "Blue");
    EXPECT_EQ(FormatColorName(QStringLiteral("a"), format), "Green");
    EXPECT_EQ(FormatColorName({}, format), "");
}

TEST(NumberFormat, WhatCannotBeReadIsGeneral) {
    const QString many(10'000, u'0');
    const QString texts(9, u'@');
    for (const QString& format :
         {QStringLiteral("0\"h"), QStringLiteral("[Red"), QStringLiteral("0\\"),
          QStringLiteral("0_"), QStringLiteral("0*"), QStringLiteral("# ?/?"),
          QStringLiteral("0;0;0;0;0"), QStringLiteral("0E+"), many, QString(10'000, u'['),
          QString(10'000, u';'), texts})
        EXPECT_EQ(shown(-2.5, format), "-2.5") << qPrintable(format.left(20));
    EXPECT_EQ(shown(QStringLiteral("a"), texts), "a");
}

TEST(NumberFormat, StaysBoundedUnderHostileFormats) {
    const QStringList pieces = {"0",     "#",   "?",       ",",     ".",        "%",     "E+", "E-",
                                "/",     "@",   "General", "\"",    "\\",       "_",     "*",  "[",
                                "]",     "[h]", "[>1]",    "[Red]", "[$$-409]", ";",     "d",  "m",
                                "mmmmm", "yy",  "h",       "s",     ".0",       "AM/PM", " ",  "é"};
    const QList<double> numbers = {0, -0.0, 5e-324, -1.5, 0.999999, 37626.4, 1e15, -1e20, 1.7e308};
    std::mt19937 random(2);
    for (int i = 0; i < 20'000; ++i) {
        QString format;
        for (auto length = random() % 12; length > 0; --length)
            format += pieces[qsizetype(random()) % pieces.size()];
        for (const double number : numbers)
            EXPECT_LT(FormatCellValue(number, format).size(), 4000) << qPrintable(format);
        FormatCellValue(QStringLiteral("text"), format);
        FormatColorName(-1.0, format);
    }
    EXPECT_EQ(FormatCellValue(1.7e308, QString(LongestPicture, u'0')).size(), LongestPicture);
    EXPECT_EQ(FormatCellValue(1e308, "#,##0").size(), 309 + 102);
}

} // namespace
} // namespace kelvrane::testing
