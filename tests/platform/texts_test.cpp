#include "platform/texts.h"
#include "support/raised_error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

TEST(Texts, DatesAndTimesKeepOneForm) {
    EXPECT_EQ(DateText({2002, 3, 4}), "3/4/2002");
    EXPECT_EQ(DateText({}), "");
    EXPECT_EQ(StoredDateText({2002, 3, 4}), "2002-03-04");
    EXPECT_EQ(ClockText({0, 5}), "12:05 AM");
    EXPECT_EQ(ClockText({12, 0}), "12:00 PM");
    EXPECT_EQ(ClockText({23, 59}), "11:59 PM");
    EXPECT_EQ(SystemTimeText({9, 5, 7}), "9:05:07 AM");
    EXPECT_EQ(BooleanText(true), "True");
}

TEST(Texts, DatesAreRead) {
    const struct {
        const char* text;
        QDate date;
    } cases[] = {
        {"3/14/2002", {2002, 3, 14}},
        {"03/04/2002", {2002, 3, 4}},
        {"2002-03-14", {2002, 3, 14}},
        {" 3/14/2002 ", {2002, 3, 14}},
        {"2/29/2001", {}},
        {"14/3/2002", {}},
        {"3/14/02", {}},
        {"3/14", {}},
        {"", {}},
        {"3/-4/2002", {}},
        {"3/14/2002x", {}},
        {"a/b/cdef", {}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(DateFromText(QString::fromLatin1(row.text)), row.date) << row.text;
}

TEST(Texts, NumbersAsText) {
    const struct {
        double value;
        const char* text;
        const char* twoDecimals;
    } cases[] = {
        {0, "0", "0.00"},
        {-0.0, "0", "0.00"},
        {0.25, "0.25", "0.25"},
        {-3, "-3", "-3.00"},
        {0.1 + 0.2, "0.3", "0.30"},
        {1.0 / 3, "0.333333333333333", "0.33"},
        {0.125, "0.125", "0.13"},
        {-0.125, "-0.125", "-0.13"},
        {1.005, "1.005", "1.01"},
        {0.005, "0.005", "0.01"},
        {0.0049, "0.0049", "0.00"},
        {-0.001, "-0.001", "0.00"},
        {9.995, "9.995", "10.00"},
        {999.999, "999.999", "1000.00"},
        {123456789012345, "123456789012345", "123456789012345.00"},
        {1e20, "1E+20", "100000000000000000000.00"},
        {1e-7, "1E-07", "0.00"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(DoubleText(row.value), row.text);
        EXPECT_EQ(TwoDecimalsText(row.value), row.twoDecimals) << row.value;
    }
    EXPECT_EQ(SingleText(0.1F), "0.1");
    EXPECT_EQ(SingleText(1234567.9F), "1234568");
    EXPECT_EQ(RaisedError([] { TwoDecimalsText(std::nan("")); }), errors::Overflow);
}

TEST(Texts, NumericTexts) {
    const struct {
        QString text;
        double value;
    } numbers[] = {
        {u"5"_s, 5},      {u" 5 "_s, 5},       {u"-0.5"_s, -0.5},
        {u"+.5"_s, 0.5},  {u"5."_s, 5},        {u"$75.00"_s, 75},
        {u"-$75"_s, -75}, {u"$-75"_s, -75},    {u"1,234.5"_s, 1234.5},
        {u"1e3"_s, 1000}, {u"1.5E-1"_s, 0.15}, {u"60\0"_s, 60},
        {u"00007"_s, 7},
    };
    for (const auto& row : numbers) {
        EXPECT_TRUE(IsNumeric(row.text)) << row.text.toStdString();
        EXPECT_DOUBLE_EQ(ToDouble(row.text), row.value) << row.text.toStdString();
    }
    for (const QString& text :
         {u""_s,      u" "_s,    u"."_s,    u"-"_s,   u"$"_s,    u"abc"_s, u"5a"_s, u"5 5"_s,
          u"1.2.3"_s, u"--5"_s,  u"-$-5"_s, u"$$5"_s, u",5"_s,   u"1e"_s,  u"e5"_s, u"1.5,0"_s,
          u"\0"_s,    u"5\0a"_s, u"inf"_s,  u"nan"_s, u"0x10"_s, u"٣"_s}) {
        EXPECT_FALSE(IsNumeric(text)) << text.toStdString();
        EXPECT_EQ(RaisedError([&] { ToDouble(text); }), errors::TypeMismatch) << text.toStdString();
    }
    EXPECT_EQ(RaisedError([] { ToDouble(u"1e400"_s); }), errors::Overflow);
    EXPECT_EQ(ToDouble(u"1e-400"_s), 0);
    EXPECT_TRUE(IsNumeric(QString(10000, u'7')));
}

TEST(Texts, SixteenBitNumbers) {
    EXPECT_EQ(ToInt16(0.5), 0);
    EXPECT_EQ(ToInt16(1.5), 2);
    EXPECT_EQ(ToInt16(-2.5), -2);
    EXPECT_EQ(ToInt16(32767.4), 32767);
    EXPECT_EQ(ToInt16(u"-32768"_s), -32768);
    for (const double value :
         {32767.5, -32769.0, 1e30, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(RaisedError([&] { ToInt16(value); }), errors::Overflow) << value;
    EXPECT_EQ(RaisedError([] { ToInt16(u""_s); }), errors::TypeMismatch);
}

TEST(Texts, FileBytesComeBackAsTheyWentIn) {
    for (const QString& text :
         {u"Alpha"_s, u"Müller & Söhne"_s, u"日本 🙂"_s, u"a\0b"_s, u""_s})
        EXPECT_EQ(FromFileBytes(ToFileBytes(text)), text);
    EXPECT_EQ(FromFileBytes("M\xFCller \x80 \x93x\x94"), u"Müller € “x”"_s);
    EXPECT_EQ(FromFileBytes("cut \xC3"), u"cut Ã"_s); // a sequence that breaks off isn't UTF-8
}

} // namespace
