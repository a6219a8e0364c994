#include "support/raised_error.h"
#include "worksheet/sheet_compare.h"
#include "worksheet/sheet_html.h"

#include <gtest/gtest.h>

using namespace kelvrane;

namespace {

QString sheetOf(const QString& head, const QString& cells) {
    return "<html>\n<head>\n" + head + "</head>\n<xml>\n</xml><![endif]-->\n" + cells;
}

SheetContents twoCells() {
    SheetContents sheet;
    sheet.cells[{0, 0}].value = QStringLiteral("Project");
    sheet.cells[{0, 1}].value = 7.5;
    for (Cell& cell : sheet.cells)
        cell.style.bold = true;
    return sheet;
}

} // namespace

TEST(SheetCompare, WhatASaveRenumbersIsNoChange) {
    const struct {
        const char* what;
        QString saved;
        QString current;
        bool differ;
    } rows[] = {
        {"other class number", sheetOf({}, "<td class=s1 x:str>a b</td>\n"),
         sheetOf({}, "<td class=s22 x:str>a b</td>\n"), false},
        {"other text", sheetOf({}, "<td class=s1 x:str>a b</td>\n"),
         sheetOf({}, "<td class=s1 x:str>c b</td>\n"), true},
        {"style rule alone", sheetOf(".s1{color:red}\n", "<td>a</td>"),
         sheetOf(".s1{color:blue}\n", "<td>a</td>"), false},
        {"a rule more", sheetOf(".s1{}\n", "<td>a</td>"), sheetOf(".s1{}\n.s2{}\n", "<td>a</td>"),
         true},
        {"other title", sheetOf("<title>a</title>\n", {}), sheetOf("<title>b</title>\n", {}), true},
        {"class without a blank behind it", sheetOf({}, "<td class=s1>a</td>"),
         sheetOf({}, "<td class=s1>other text</td>"), false},
        {"the same, changed before it", sheetOf({}, "<td a class=s1>a</td>"),
         sheetOf({}, "<td b class=s1>a</td>"), true},
        {"class in one line only", sheetOf({}, "<td x>a</td>"),
         sheetOf({}, "<td class=s1 x>a</td>"), true},
        {"lines added at the end", sheetOf({}, "<td>a</td>\n"),
         sheetOf({}, "<td>a</td>\n<td>b</td>\n"), false},
        {"line ends of another system", sheetOf({}, "<td>a</td>\n<td>b</td>\n"),
         sheetOf({}, "<td>a</td>\n<td>b</td>\n").replace("\n", "\r\n"), false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(SavedSheetsDiffer(row.saved, row.current), row.differ) << row.what;
        EXPECT_EQ(SavedSheetsDiffer(row.current, row.saved), row.differ) << row.what;
    }
}

TEST(SheetCompare, ATextWithoutItsMarksIsAnError) {
    const QString whole = sheetOf({}, "<td>a</td>");
    for (const QString& broken :
         {QString(), QString("<html>\n"), QString(whole).remove("<head>"),
          QString(whole).remove("</xml>"), whole.section("</head>", 0, 0)}) {
        EXPECT_EQ(RaisedError([&] { SavedSheetsDiffer(broken, whole); }), errors::EndOfFile);
        EXPECT_EQ(RaisedError([&] { SavedSheetsDiffer(whole, broken); }), errors::EndOfFile);
    }
}

TEST(SheetCompare, ChangesOfARealSheetAreSeen) {
    const QString saved = WriteSheetHtml(twoCells()) + '\n'; // as files hold it
    EXPECT_FALSE(SavedSheetsDiffer(saved, WriteSheetHtml(twoCells())));

    SheetContents renumbered = twoCells(); // a new first style, on a cell that isn't compared
    renumbered.cells[{0, 1}].style.wraps = true;
    EXPECT_TRUE(SavedSheetsDiffer(saved, WriteSheetHtml(renumbered))); // a rule more in the head

    const auto differs = [&](auto change) {
        SheetContents sheet = twoCells();
        change(sheet);
        return SavedSheetsDiffer(saved, WriteSheetHtml(sheet));
    };
    EXPECT_TRUE(differs([](auto& sheet) {
        sheet.cells[{0, 0}].value = QStringLiteral("Projects");
    }));
    EXPECT_TRUE(differs([](auto& sheet) { sheet.cells[{0, 0}].value = {}; }));
    EXPECT_TRUE(differs([](auto& sheet) { sheet.cells[{0, 1}].value = 7.25; }));
    EXPECT_TRUE(differs([](auto& sheet) { sheet.cells[{0, 1}].formula = "=A1"; }));
    EXPECT_TRUE(differs([](auto& sheet) { sheet.merges.append(CellRange{{0, 0}, {1, 0}}); }));
    EXPECT_TRUE(differs([](auto& sheet) { sheet.columnWidths[0] = 80; }));

    // A text that looks like an attribute hides nothing behind it.
    SheetContents one = twoCells();
    SheetContents other = twoCells();
    one.cells[{0, 0}] = {.value = QStringLiteral("class=first name")};
    other.cells[{0, 0}] = {.value = QStringLiteral("class=other name")};
    EXPECT_TRUE(SavedSheetsDiffer(WriteSheetHtml(one), WriteSheetHtml(other)));
}
