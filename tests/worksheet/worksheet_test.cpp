#include "support/raised_error.h"
#include "worksheet/spreadsheet.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace kelvrane;

namespace {

CellAddress at(const char* name) {
    return ParseAddress(QString::fromLatin1(name)).value();
}

class WorksheetTest : public ::testing::Test {
  protected:
    void enter(std::initializer_list<std::pair<const char*, const char*>> cells) {
        const Worksheet::Changes changes(sheet);
        for (const auto& [name, text] : cells)
            sheet.enter(at(name), QString::fromUtf8(text));
    }
    std::string text(const char* name) { return sheet.text(at(name)).toStdString(); }
    std::string input(const char* name) { return sheet.input(at(name)).toStdString(); }

    Worksheet sheet;
};

TEST_F(WorksheetTest, ComputesWhatDependsOnAChangeAndNothingElse) {
    enter({{"A1", "2"}, {"A2", "=A1*3"}, {"A3", "=SUM(A1:A2)"}, {"B1", "=1+1"}});
    EXPECT_EQ(text("A3"), "8");
    QSignalSpy changed(&sheet, &Worksheet::Changed);
    sheet.enter(at("A1"), "5");
    EXPECT_EQ(text("A3"), "20");
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].value<CellRange>(), ParseRange(u"A1:A3").value());
    sheet.enter(at("A2"), "");
    EXPECT_EQ(text("A3"), "5");
    enter({{"C1", "=C2"}, {"C2", "=C1+1"}, {"C3", "=C2"}});
    EXPECT_TRUE(IsError(sheet.value(at("C3"))));
    sheet.enter(at("C1"), "1");
    EXPECT_EQ(text("C3"), "2") << "a cycle that was opened computes again";
}

TEST_F(WorksheetTest, InputGivesBackWhatWasTyped) {
    const char* rows[][3] = {
        // typed, shown, in the formula bar
        {"75", "75", "75"},          {"=1/0", "#DIV/0!", "=1/0"}, {"'02134", "02134", "'02134"},
        {"plain", "plain", "plain"}, {"TRUE", "TRUE", "TRUE"},    {"", "", ""},
    };
    for (const auto& [typed, shown, bar] : rows) {
        sheet.enter(at("D4"), QString::fromUtf8(typed));
        EXPECT_EQ(text("D4"), shown) << typed;
        EXPECT_EQ(input("D4"), bar) << typed;
    }
    sheet.enter(at("E1"), "1/5/2003");
    EXPECT_TRUE(IsNumber(sheet.value(at("E1"))));
    EXPECT_EQ(input("E1"), "1/5/2003");
    CellStyle zip;
    zip.numberFormat = "@";
    sheet.setStyle(at("F1"), zip);
    sheet.enter(at("F1"), "02134");
    EXPECT_EQ(text("F1"), "02134");
    EXPECT_EQ(input("F1"), "02134") << "under @ everything is text";
    for (const char* typed : {"'Alpha", "=1+1", "''twice"}) {
        sheet.enter(at("F1"), QString::fromLatin1(typed));
        const std::string shown = text("F1");
        EXPECT_EQ(shown, typed[0] == '\'' ? typed + 1 : typed);
        sheet.enter(at("F1"), sheet.input(at("F1")));
        EXPECT_EQ(text("F1"), shown) << "typed again as the formula bar has it";
    }
}

TEST_F(WorksheetTest, StructureMovesCellsFormulasSizesAndMerges) {
    enter({{"A1", "1"}, {"A2", "2"}, {"A4", "=SUM(A1:A2)"}, {"B2", "x"}});
    sheet.setRowHeight(3, 44);
    sheet.merge(ParseRange(u"A4:B4").value());
    sheet.changeStructure({.rows = true, .at = 1, .count = 2});
    EXPECT_EQ(input("A6"), "=SUM(A1:A4)");
    EXPECT_EQ(text("A6"), "3");
    EXPECT_EQ(text("B4"), "x");
    EXPECT_EQ(sheet.contents().rowHeight(5), 44);
    EXPECT_EQ(sheet.contents().merges, QList<CellRange>{ParseRange(u"A6:B6").value()});
    sheet.changeStructure({.rows = true, .at = 1, .count = -2});
    EXPECT_EQ(input("A4"), "=SUM(A1:A2)");
    sheet.changeStructure({.rows = false, .at = 1, .count = -1});
    EXPECT_TRUE(sheet.contents().merges.isEmpty()) << "one cell is no merge";
    sheet.changeStructure({.rows = true, .at = 0, .count = -2});
    EXPECT_EQ(text("A2"), "#REF!");
}

TEST_F(WorksheetTest, MergingKeepsTheFirstValueAndUndoesOverlaps) {
    enter({{"A1", "keep"}, {"B1", "lose"}, {"C2", "far"}});
    sheet.merge(ParseRange(u"A1:B1").value());
    EXPECT_EQ(text("B1"), "");
    sheet.merge(ParseRange(u"B1:C2").value());
    EXPECT_EQ(sheet.contents().merges, QList<CellRange>{ParseRange(u"B1:C2").value()});
    EXPECT_EQ(sheet.contents().spanAt(at("C2")), ParseRange(u"B1:C2").value());
    sheet.unmerge(ParseRange(u"C2").value());
    EXPECT_TRUE(sheet.contents().merges.isEmpty());
}

TEST_F(WorksheetTest, WhatIsRaisedWithinAGroupDoesNotStopRecomputing) {
    enter({{"A1", "1"}, {"B1", "=A1*2"}});
    QSignalSpy changed(&sheet, &Worksheet::Changed);
    const int error = RaisedError([&] {
        const Worksheet::Changes outer(sheet);
        sheet.enter(at("A1"), "2");
        sheet.changeStyle(ParseRange(u"A1:C1").value(), [&](CellStyle& style) {
            if (style.bold)
                Raise(errors::BadArgument);
            style.bold = sheet.style(at("A1")).bold;
            sheet.setStyle(at("B1"), CellStyle{.bold = true});
        });
    });
    EXPECT_EQ(error, errors::BadArgument);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(text("B1"), "4") << "the change that was made counts";
    sheet.enter(at("A1"), "5");
    EXPECT_EQ(text("B1"), "10");
    EXPECT_EQ(changed.size(), 2);
}

TEST(SpreadsheetTest, AnEditThatRaisesIsTakenBack) {
    Spreadsheet ss1;
    ss1.edit([](Worksheet& sheet) { sheet.enter(at("A1"), "1"); });
    const SheetContents before = ss1.worksheet().contents();
    EXPECT_EQ(RaisedError([&] {
                  ss1.edit([](Worksheet& sheet) {
                      sheet.enter(at("A1"), "2");
                      sheet.setRowHeight(3, 50);
                      Raise(errors::BadArgument);
                  });
              }),
              errors::BadArgument);
    EXPECT_EQ(ss1.worksheet().contents(), before);
    ss1.undo();
    EXPECT_EQ(ss1.Range("A1").Value(), "") << "no step of its own";
}

TEST(SpreadsheetTest, RangesReadAndWriteAsTheCalculationsNeedThem) {
    Spreadsheet ss1;
    ss1.Range("B2").setValue("'Alpha");
    EXPECT_EQ(ss1.Range("B2").Value(), "Alpha");
    ss1.Range("C2").setValue("$72.00");
    ss1.Range("D2").setValue(1.5);
    ss1.Range("E2").setValue("=(D2*C2)");
    EXPECT_EQ(ss1.Range("E2").Value(), "108");
    EXPECT_EQ(ss1.Range("E2").Formula(), "=(D2*C2)");
    EXPECT_EQ(ss1.Range("D2").Formula(), "1.5") << "a constant's formula is its value";
    ss1.Range("E2").setValue("$108.00");
    EXPECT_EQ(ss1.worksheet().text(at("E2")), "$108.00");
    EXPECT_EQ(ss1.Range("E2").Formula(), "108");
    ss1.Range("A1").setValue("'007");
    ss1.Range("A1").setValue(ss1.Range("A1").Value()); // as the scan rewrites each cell
    EXPECT_EQ(ss1.worksheet().text(at("A1")), "007");
    ss1.Range("F1").setNumberFormat("d mmm");
    EXPECT_EQ(ss1.Range("F1").NumberFormat(), "d mmm");
    EXPECT_EQ(ss1.Range("G1").NumberFormat(), "General");
    ss1.Range("A5:A6").setFormula("=B5");
    EXPECT_EQ(ss1.Range("A6").Formula(), "=B6");
    EXPECT_EQ(RaisedError([&] { ss1.Range("5C"); }), errors::BadArgument);
    EXPECT_EQ(RaisedError([&] { ss1.setViewableRange("fifty"); }), errors::BadArgument);
}

TEST(SpreadsheetTest, UndoGoesBackStepByStepAndALoadIsNoStep) {
    Spreadsheet ss1;
    QSignalSpy edited(&ss1, &Spreadsheet::Edited);
    for (const char* value : {"1", "2", "3"})
        ss1.edit([&](Worksheet& sheet) { sheet.enter(at("A1"), QString::fromLatin1(value)); });
    ss1.edit([](Worksheet&) {}); // changes nothing: no step
    EXPECT_EQ(edited.size(), 3);
    ss1.undo();
    ss1.undo();
    EXPECT_EQ(ss1.Range("A1").Value(), "1");
    ss1.redo();
    EXPECT_EQ(ss1.Range("A1").Value(), "2");
    ss1.edit([](Worksheet& sheet) { sheet.enter(at("A1"), "4"); });
    EXPECT_FALSE(ss1.canRedo()) << "a new step forgets what was undone";
    ss1.undo();
    EXPECT_EQ(ss1.Range("A1").Value(), "2");
    ss1.setHTMLData({});
    EXPECT_FALSE(ss1.canUndo());
    EXPECT_FALSE(ss1.canRedo());
}

TEST(SpreadsheetTest, HtmlComesBackAsItWent) {
    Spreadsheet ss1;
    ss1.Range("A1").setValue("Hours & <more>");
    ss1.Range("B1").setValue(7.25);
    ss1.Range("B2").setFormula("=B1*2");
    const QString html = ss1.HTMLData();
    Spreadsheet again;
    again.setHTMLData(html);
    EXPECT_EQ(again.HTMLData(), html);
    EXPECT_EQ(again.Range("B2").Formula(), "=B1*2");
    EXPECT_EQ(again.worksheet().contents(), ss1.worksheet().contents());
    EXPECT_THROW(again.setHTMLData("no table here"), RuntimeError);
    EXPECT_EQ(again.HTMLData(), html) << "as it was";
}

} // namespace
