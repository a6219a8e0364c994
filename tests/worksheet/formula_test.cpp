#include "worksheet/formula.h"
#include "worksheet/formula_cells.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>

namespace kelvrane {

// How a failed comparison names a value.
void PrintTo(const CellValue& value, std::ostream* out) {
    if (const auto* number = std::get_if<double>(&value))
        *out << *number;
    else if (const auto* text = std::get_if<QString>(&value))
        *out << '"' << text->toStdString() << '"';
    else if (const auto* truth = std::get_if<bool>(&value))
        *out << (*truth ? "TRUE" : "FALSE");
    else if (const auto* error = std::get_if<CellError>(&value))
        *out << CellErrorText(*error).toStdString();
    else
        *out << "nothing";
}

namespace testing {
namespace {

const char formulaTable[] =
#include "data/formulas.inc"
    ;

/// A value as the table spells it.
CellValue tableValue(const QString& text) {
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    CellError error{};
    if (isNumber)
        return number;
    if (text.startsWith(u'"'))
        return text.sliced(1, text.size() - 2)
            .replace(QStringLiteral("\"\""), QStringLiteral("\""));
    if (ParseCellError(text, error))
        return error;
    if (text.isEmpty())
        return {};
    return text == u"TRUE";
}

bool areAlike(const CellValue& one, const CellValue& other) {
    if (!IsNumber(one) || !IsNumber(other))
        return one == other;
    const double expected = std::get<double>(other);
    return std::abs(std::get<double>(one) - expected) <= 1e-13 * std::max(1.0, std::abs(expected));
}

CellValue evaluated(const QString& formula, const FormulaCells& cells = FormulaTestCells()) {
    return Formula(formula).evaluate(cells);
}

TEST(FormulaTest, EveryFormulaOfTheTableGivesItsResult) {
    FormulaTestCells sheet;
    int row = 0;
    int checked = 0;
    for (const QString& line : QString::fromUtf8(formulaTable).split(u'\n')) {
        if (line.startsWith(u'[')) {
            sheet.cells.clear();
            row = 0;
        } else if (line.startsWith(u'|')) {
            const QStringList values = line.split(u'|');
            for (int column = 0; column + 2 < values.size(); ++column)
                if (const QString text = values[column + 1].trimmed(); !text.isEmpty())
                    sheet.cells.insert({row, column}, tableValue(text));
            ++row;
        } else if (line.startsWith(u'=')) {
            const qsizetype arrow = line.indexOf(QStringLiteral(" => "));
            const QString expected = line.sliced(arrow + 4).split(QStringLiteral(" (Calc:"))[0];
            const CellValue result = evaluated(line.left(arrow), sheet);
            EXPECT_TRUE(areAlike(result, tableValue(expected)))
                << line.toStdString() << "\n  gives " << ::testing::PrintToString(result);
            ++checked;
        }
    }
    EXPECT_GT(checked, 400);
}

TEST(FormulaTest, WhatIsNoFormulaIsNotValid) {
    const QString deep = QString(64, u'(') + u'1' + QString(64, u')');
    for (const QString& text : QStringList{"=",
                                           "",
                                           "=1+",
                                           "=*1",
                                           "=(1",
                                           "=()",
                                           "=1 2",
                                           "=A1 B1",
                                           "=\"open",
                                           "=SUM(1,2))",
                                           "=ROUND(1)",
                                           "=ROUND(1,2,3)",
                                           "=IF()",
                                           "=IF(1)",
                                           "=IF(1,2,3,4)",
                                           "=IFERROR(1)",
                                           "=NOW(1)",
                                           "=A1:",
                                           "=:A1",
                                           "=A1:B2:C3",
                                           "=$",
                                           "=$A",
                                           "=A$",
                                           "=#",
                                           "=#WHAT!",
                                           "={1,2}",
                                           "=1e400",
                                           "='Sheet",
                                           "=A1:SUM(1)",
                                           "=1,2",
                                           "=%",
                                           "=a\\b",
                                           QString(QChar(0)),
                                           "=((((",
                                           "=@A1",
                                           u'=' + QString(8192, u'1'),
                                           "=(" + deep + ")",
                                           "=" + deep.left(64)}) {
        const bool isLeftOpen = text == "=(1"; // closed at its end, as on typing
        EXPECT_EQ(Formula(text).isValid(), isLeftOpen) << text.left(40).toStdString();
        if (!isLeftOpen)
            EXPECT_EQ(evaluated(text), CellValue(CellError::Name));
    }
    EXPECT_EQ(evaluated(u'=' + deep), CellValue(1.0));
    EXPECT_EQ(evaluated("1+1"), CellValue(2.0));
    EXPECT_EQ(evaluated("=SUM(1,ROUND(2.4,0"), CellValue(3.0));
    EXPECT_EQ(evaluated("=1" + QString("+1").repeated(4000)), CellValue(4001.0));
    EXPECT_EQ(evaluated("=" + QString(8000, u'-') + "1"), CellValue(1.0));
    EXPECT_EQ(evaluated("=1" + QString("%").repeated(8000)), CellValue(0.0));
}

TEST(FormulaTest, OtherSheetsAndPlacesOutsideAreNoReference) {
    for (const char* text :
         {"=Sheet1!A1", "='My sheet'!$A$1:B2", "=SUM(Sheet1!A1,2)", "=Sheet1!A1+1", "=AAA1",
          "=A10001", "=SUM(A1:A10001)", "=Sheet1!#REF!"})
        EXPECT_EQ(evaluated(text), CellValue(CellError::Reference)) << text;
}

TEST(FormulaTest, NamesWhatItReadsAndWhetherTimeChangesIt) {
    const Formula formula("=IF($A$1>0,SUM(D9:B2),C:C)+A1*SUM(2:3)");
    EXPECT_EQ(formula.precedents(), (QList<CellRange>{{{0, 0}, {0, 0}},
                                                      {{1, 1}, {8, 3}},
                                                      {{0, 2}, {SheetRows - 1, 2}},
                                                      {{1, 0}, {2, SheetColumns - 1}}}));
    EXPECT_EQ(Formula("=SUMIF(A1:A9,1,C1)").precedents().last(), (CellRange{{0, 2}, {8, 2}}))
        << "the summed range is as large as the tested one";
    EXPECT_TRUE(Formula("=IF(A1,TODAY(),1)").isVolatile());
    EXPECT_FALSE(Formula("=TEXT(A1,\"TODAY()\")").isVolatile());
    EXPECT_EQ(evaluated("=TODAY()"), CellValue(37626.0));
    EXPECT_EQ(evaluated("=NOW()-TODAY()"), CellValue(0.75));
}

TEST(FormulaTest, ReadsOnlyTheBranchTakenAndOnlyWhatIsFilled) {
    FormulaTestCells sheet;
    sheet.set({0, 0}, 1.0);
    sheet.set({9, 1}, 5.0);
    EXPECT_EQ(evaluated("=IF(A1,2,SUM(B1:B200))", sheet), CellValue(2.0));
    EXPECT_EQ(sheet.reads, 1);
    EXPECT_EQ(evaluated("=IFERROR(A1,SUM(B1:B200))", sheet), CellValue(1.0));
    EXPECT_LE(sheet.reads, 3);
    EXPECT_EQ(evaluated("=SUM(A:ZZ)+COUNTIF(A1:ZZ10000,\"\")", sheet),
              CellValue(6.0 + double(SheetRows) * SheetColumns - 2));
    EXPECT_LT(sheet.reads, 60);
}

TEST(FormulaTest, NothingTakesMoreRoomThanItMay) {
    FormulaTestCells sheet;
    sheet.cells.insert({0, 0}, QString(30'000, u'a'));
    const QString manyBlocks = "=SUM(0" + QString(",A1:Z9999*1").repeated(200) + ")";
    for (const QString& text :
         {QString("=A1&A1"), QString("=REPT(A1,1000000000)"), QString("=SUBSTITUTE(A1,\"a\",A1)"),
          QString("=CONCATENATE(A1,A1)"), QString("=SUM(A1:ZZ10000*1)"), manyBlocks,
          QString("=SUMPRODUCT(LEN(REPT(\"abcdefgh\",4000+A2:A9000)))"), QString("=FIXED(1,500)"),
          QString("=COUNTIF(A1,\"" + QString("*a").repeated(200) + "b\")")})
        EXPECT_EQ(evaluated(text, sheet), CellValue(CellError::Value))
            << text.left(40).toStdString();
    EXPECT_EQ(evaluated("=COUNTIF(A1,\"" + QString("*a").repeated(120) + "b\")", sheet),
              CellValue(0.0));
    for (const char* text :
         {"=ROUND(5,1E99)+ROUND(5,-1E99)", "=LEFT(\"abc\",1E99)", "=MID(\"abc\",1E99,1E99)",
          "=DATE(1E99,1,1)", "=DATE(2000,1E9,1)", "=DATE(2000,1,1E300)", "=YEAR(-1E300)",
          "=HOUR(1E300)", "=MOD(1E300,1E-300)", "=ROUNDUP(1,-500)", "=INT(1E300)",
          "=WEEKDAY(1,1E99)", "=CHOOSE(1E99,1)", "=INDEX(A1:B2,1E99)", "=VLOOKUP(1,A1:B2,1E99)",
          "=FIXED(1E300,-400)", "=TEXT(1E300,\"0.00\")", "=REPT(\"\",1E99)", "=FIND(1,2,1E99)"})
        evaluated(text, sheet); // ends, that is all
}

struct RewriteCase {
    const char* before;
    const char* after;
};

TEST(FormulaTest, ACopiedFormulaMovesWhatIsRelative) {
    constexpr RewriteCase cases[] = {
        {"=A1+$A1+A$1+$A$1", "=C2+$A2+C$1+$A$1"},
        {"=sum( a1 : B2 , $c$3)", "=sum( C2:D3 , $c$3)"},
        {"=SUM(A:B)+SUM($A:A)+SUM(1:$2)", "=SUM(C:D)+SUM($A:C)+SUM(2:$2)"},
        {"=\"A1\"&A1&'A1'!A1", "=\"A1\"&C2&'A1'!A1"},
        {"=LOG10(A1)+A1B+1E5", "=LOG10(C2)+A1B+1E5"},
        {"=ZY1+ZZ1", "=#REF!+#REF!"},
        {"=A9999+A10000", "=C10000+#REF!"},
        {"=A1 +\t( broken", "=C2 +\t( broken"},
        {"=\"open A1", "=\"open A1"},
        {"A1", "A1"},
        {"", ""},
    };
    for (const auto& [before, after] : cases)
        EXPECT_EQ(ShiftedFormula(before, 1, 2).toStdString(), after);
    EXPECT_EQ(ShiftedFormula("=B2+A1:B2", -1, 0), "=B1+#REF!");
    EXPECT_EQ(ShiftedFormula("=A1", 2'000'000'000, 2'000'000'000), "=#REF!");
    EXPECT_EQ(ShiftedFormula("=sum(a1)", 0, 0), "=sum(a1)");
    EXPECT_EQ(ShiftedFormula("=MIN(2F1)", 0, -1), "=MIN(2F1)") << "no number 2E1";
    EXPECT_EQ(AdjustedFormula("=MIN(2F1)", {false, 0, -1}), "=MIN(2F1)");
}

TEST(FormulaTest, AFormulaFollowsItsCellsThroughInsertionsAndDeletions) {
    struct Case {
        StructureChange change;
        const char* before;
        const char* after;
    };
    constexpr StructureChange insertRows{true, 2, 3};
    constexpr StructureChange removeRows{true, 2, -3};
    constexpr StructureChange insertColumn{false, 1, 1};
    constexpr StructureChange removeColumns{false, 0, -2};
    constexpr Case cases[] = {
        {insertRows, "=A2+a3+$A$4", "=A2+A6+$A$7"},
        {insertRows, "=SUM(A1:A2)+SUM(A2:A3)+SUM(A3:A5)", "=SUM(A1:A2)+SUM(A2:A6)+SUM(A6:A8)"},
        {insertRows, "=SUM(A5:B2)+SUM(A:B)+SUM(2:3)", "=SUM(A8:B2)+SUM(A:B)+SUM(2:6)"},
        {insertRows, "=A9999+SUM(A1:A9999)", "=#REF!+SUM(A1:A10000)"},
        {removeRows, "=A2+A3+A5+A6", "=A2+#REF!+#REF!+A3"},
        {removeRows, "=SUM(A1:A9)+SUM(A1:A4)+SUM(A4:A9)", "=SUM(A1:A6)+SUM(A1:A2)+SUM(A3:A6)"},
        {removeRows, "=SUM(A3:A5)+SUM(3:4)+SUM(3:9)+\"A3\"",
         "=SUM(#REF!)+SUM(#REF!)+SUM(3:6)+\"A3\""},
        {insertColumn, "=A1+B1+SUM(A:B)+SUM(1:2)+ZZ1", "=A1+C1+SUM(A:C)+SUM(1:2)+#REF!"},
        {removeColumns, "=A1+C1+SUM($A1:$C1)+B:B", "=#REF!+A1+SUM($A1:$A1)+#REF!"},
        {{true, 0, 2'000'000'000}, "=A1", "=#REF!"},
        {{true, 0, -2'000'000'000}, "=A1+SUM(1:9)", "=#REF!+SUM(#REF!)"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(AdjustedFormula(c.before, c.change).toStdString(), c.after);
}

} // namespace
} // namespace testing
} // namespace kelvrane
