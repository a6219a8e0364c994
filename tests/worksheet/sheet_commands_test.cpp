#include "support/raised_error.h"
#include "worksheet/cell_measures.h"
#include "worksheet/sheet_actions.h"
#include "worksheet/sheet_clipboard.h"
#include "worksheet/sheet_commands.h"
#include "worksheet/sheet_session.h"

#include <QSet>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

CellRange RangeOf(const char* name) {
    return *ParseRange(QString::fromLatin1(name));
}
CellAddress CellOf(const char* name) {
    return *ParseAddress(QString::fromLatin1(name));
}

using Texts = QList<QStringList>;

struct Sheet : Spreadsheet {
    /// Rows of texts, typed from A1 on.
    explicit Sheet(const Texts& rows = {}) {
        for (int row = 0; row < rows.size(); ++row)
            for (int column = 0; column < rows[row].size(); ++column)
                worksheet().enter({row, column}, rows[row][column]);
    }
    QString text(const char* cell) const { return worksheet().text(CellOf(cell)); }
    QString input(const char* cell) const { return worksheet().input(CellOf(cell)); }
    const CellStyle& style(const char* cell) const { return worksheet().style(CellOf(cell)); }
};

TEST(SheetCommands, EachIsOneStepOfUndo) {
    Sheet sheet(Texts{{"1", "2"}, {"3", "4"}, {"5", "=A1+A3"}});
    struct Row {
        const char* what;
        std::function<void()> change;
    };
    const CellRange range = RangeOf("A1:B2");
    const Row rows[] = {
        {"enter",
         [&] {
             EnterText(sheet, {0, 0}, QStringLiteral("7"));
         }},
        {"clear", [&] { ClearValues(sheet, range); }},
        {"bold", [&] { ToggleFormat(sheet, range, Toggle::Bold); }},
        {"align", [&] { ToggleAlign(sheet, range, HorizontalAlign::Center); }},
        {"size", [&] { SetPointSize(sheet, range, 20); }},
        {"borders", [&] { SetBorders(sheet, range, BorderChoices()[1]); }},
        {"format", [&] { SetNumberFormat(sheet, range, QStringLiteral("0.00")); }},
        {"insert", [&] { InsertRows(sheet, range); }},
        {"delete", [&] { DeleteColumns(sheet, range); }},
        {"merge", [&] { ToggleMerge(sheet, range); }},
        {"width", [&] { SetColumnWidths(sheet, range, 90); }},
        {"hide", [&] { SetRowHeights(sheet, range, 0); }},
        {"fit", [&] { FitColumns(sheet, range); }},
        {"sum", [&] { AutoSum(sheet, range); }},
        {"cut", [&] { CutCells(sheet, range); }},
        {"paste",
         [&] {
             PasteCells(sheet, RangeOf("D1"), {QStringLiteral("x\ty\n"), {}, {}});
         }},
    };
    const SheetContents before = sheet.worksheet().contents();
    for (const Row& row : rows) {
        QSignalSpy edited(&sheet, &Spreadsheet::Edited);
        row.change();
        EXPECT_EQ(edited.count(), 1) << row.what;
        EXPECT_NE(sheet.worksheet().contents(), before) << row.what;
        sheet.undo();
        EXPECT_EQ(sheet.worksheet().contents(), before) << row.what;
        EXPECT_FALSE(sheet.canUndo()) << row.what;
        sheet.redo();
        sheet.undo();
        EXPECT_EQ(sheet.worksheet().contents(), before) << row.what;
    }
    EnterText(sheet, {0, 0}, QStringLiteral("1"));
    EXPECT_FALSE(sheet.canUndo()) << "the text that is there is no change";
}

TEST(SheetCommands, TogglesGoByAllCells) {
    Sheet sheet(Texts{{"a", "b"}});
    const CellRange range = RangeOf("A1:B1");
    ToggleFormat(sheet, RangeOf("A1"), Toggle::Bold);
    ToggleFormat(sheet, range, Toggle::Bold);
    EXPECT_TRUE(sheet.style("A1").bold && sheet.style("B1").bold);
    ToggleFormat(sheet, range, Toggle::Bold);
    EXPECT_FALSE(sheet.style("A1").bold || sheet.style("B1").bold);
    ToggleAlign(sheet, range, HorizontalAlign::Right);
    ToggleAlign(sheet, range, HorizontalAlign::Right);
    EXPECT_EQ(sheet.style("A1").horizontal, HorizontalAlign::General);
    SetNumberFormat(sheet, range, QStringLiteral(" general "));
    EXPECT_EQ(sheet.style("A1").numberFormat, QString());
    for (const double size : {0.0, -3.0, 1e9, std::numeric_limits<double>::quiet_NaN()})
        SetPointSize(sheet, range, size);
    EXPECT_EQ(sheet.style("A1").pointSize, 0) << "sizes that are none";
}

TEST(SheetCommands, RowsGrowForWhatTheyShow) {
    Sheet sheet(Texts{{"Invoice"}});
    const SheetSession session(&sheet);
    const auto height = [&](int row) {
        return session.layout().top(row + 1) - session.layout().top(row);
    };
    const QString remark = QStringLiteral("a remark in several words and lines");
    SetPointSize(sheet, RangeOf("A1"), 24);
    EXPECT_GE(height(0), 32);
    ToggleFormat(sheet, RangeOf("A3"), Toggle::Wrap);
    EnterText(sheet, CellOf("A3"), remark);
    EXPECT_EQ(height(2), WantedRowHeight(sheet.worksheet().contents(), 2));
    EXPECT_GT(height(2), 3 * 13);
    EnterText(sheet, CellOf("A3"), QStringLiteral("short"));
    EXPECT_EQ(height(2), SheetContents::DefaultRowHeight);
    // With a height of its own it grows, but becomes no lower by itself.
    SetRowHeights(sheet, RangeOf("A3"), 30);
    EnterText(sheet, CellOf("A3"), remark);
    const int grown = height(2);
    EXPECT_GT(grown, 3 * 13);
    EnterText(sheet, CellOf("A3"), QStringLiteral("short"));
    EXPECT_EQ(height(2), grown);
    SetRowHeights(sheet, RangeOf("A1"), 0);
    SetPointSize(sheet, RangeOf("A1"), 30);
    EXPECT_EQ(height(0), 0) << "hidden ones stay so";
    ShowRows(sheet, RangeOf("A1:A3"));
    EXPECT_GE(height(0), 40);
    EXPECT_EQ(height(2), grown);
}

TEST(SheetCommands, BordersOfASelection) {
    Sheet sheet;
    const auto choice = [](const char* key) {
        for (const BorderChoice& row : BorderChoices())
            if (QLatin1String(row.key) == QLatin1String(key))
                return row;
        return BorderChoice{};
    };
    const auto lines = [&](const char* cell) {
        QString text;
        const CellStyle& style = sheet.style(cell);
        for (const auto& [name, border] :
             {std::pair('l', style.left), std::pair('t', style.top), std::pair('r', style.right),
              std::pair('b', style.bottom)})
            if (border.line != CellBorder::Line::None)
                text += QLatin1Char(name);
        return text;
    };
    SetBorders(sheet, RangeOf("B2:C3"), choice("border_outline"));
    EXPECT_EQ(lines("B2") + u' ' + lines("C2") + u' ' + lines("B3") + u' ' + lines("C3"),
              QStringLiteral("lt tr lb rb"));
    SetBorders(sheet, RangeOf("B2:C3"), choice("border_inside"));
    EXPECT_EQ(lines("B2"), QStringLiteral("ltrb"));
    SetBorderColor(sheet, RangeOf("B2:C3"), qRgb(1, 2, 3));
    EXPECT_EQ(sheet.style("C3").right.color, qRgb(1, 2, 3));
    // A line that a neighbour has on the shared edge goes with it.
    SetBorders(sheet, RangeOf("D2"), choice("border_none"));
    EXPECT_EQ(lines("C2"), QStringLiteral("ltb"));
    SetBorders(sheet, RangeOf("A1:D4"), choice("border_none"));
    EXPECT_TRUE(sheet.worksheet().contents().cells.isEmpty());
}

TEST(SheetCommands, AutoSumChoosesWhatToAdd) {
    struct Row {
        const char* what;
        Texts cells;
        const char* range;
        const char* sums; ///< "A3=SUM(A1:A2)", parted by blanks
    };
    const Row rows[] = {
        {"the numbers above", {{"x"}, {"1"}, {"2"}}, "A4", "A4=SUM(A2:A3)"},
        {"not those further left", {{"1", "2"}, {"3", "4"}}, "B3", "B3=SUM(B1:B2)"},
        {"those to the left", {{"x", "1", "2"}}, "D1", "D1=SUM(B1:C1)"},
        {"over blanks", {{"1"}, {"2"}, {""}, {""}}, "A5", "A5=SUM(A1:A4)"},
        {"nothing there", {{"x"}}, "A2", ""},
        {"the first cell", {}, "A1", ""},
        {"below a block", {{"1", "2"}, {"3", "4"}}, "A1:B2", "A3=SUM(A1:A2) B3=SUM(B1:B2)"},
        {"in its empty row", {{"1", "2"}, {"3", "4"}}, "A1:B3", "A3=SUM(A1:A2) B3=SUM(B1:B2)"},
        {"in its empty column", {{"1", "2"}, {"3", "4"}}, "A1:C2", "C1=SUM(A1:B1) C2=SUM(A2:B2)"},
        {"right of a row", {{"1", "2"}}, "A1:B1", "C1=SUM(A1:B1)"},
        {"no sum of a text", {{"1", "x"}, {"2", "y"}}, "A1:B2", "A3=SUM(A1:A2)"},
    };
    for (const Row& row : rows) {
        Sheet sheet(row.cells);
        QStringList sums;
        for (const CellAddress cell : AutoSum(sheet, RangeOf(row.range)))
            sums.append(AddressText(cell) + sheet.worksheet().input(cell));
        EXPECT_EQ(sums.join(QLatin1Char(' ')), QLatin1String(row.sums)) << row.what;
    }
}

TEST(SheetClipboard, ReadsTextWithTabs) {
    struct Row {
        const char* text;
        Texts table;
    };
    const Row rows[] = {
        {"a\tb\nc\td\n", {{"a", "b"}, {"c", "d"}}},
        {"a\r\nb", {{"a"}, {"b"}}},
        {"a\t\t\n\n", {{"a", "", ""}, {""}}},
        {"\"two\nlines\"\t\"say \"\"hi\"\"\"\n", {{"two\nlines", "say \"hi\""}}},
        {"5\" pipe\t\"open", {{"5\" pipe", "\"open"}}},
        {"", {}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(TableOfText(QString::fromLatin1(row.text)), row.table) << row.text;
}

TEST(SheetClipboard, TextComesAsItIsTyped) {
    Sheet sheet;
    SetNumberFormat(sheet, RangeOf("C1"), QStringLiteral("@"));
    const auto paste = [&](const char* range, const char* text) {
        return RangeText(PasteCells(sheet, RangeOf(range), {QString::fromLatin1(text), {}, {}}));
    };
    EXPECT_EQ(paste("A1", "$1,080.00\t=A1/2\t02134\n"), QStringLiteral("A1:C1"));
    EXPECT_EQ(sheet.text("A1"), QStringLiteral("$1,080.00"));
    EXPECT_EQ(sheet.text("B1"), QStringLiteral("540"));
    EXPECT_EQ(sheet.text("C1"), QStringLiteral("02134")) << "text stays text under @";
    EXPECT_EQ(paste("A3:B6", "1\t2\n"), QStringLiteral("A3:B6")) << "again and again";
    EXPECT_EQ(sheet.text("B6"), QStringLiteral("2"));
    EXPECT_EQ(paste("A8:B10", "1\t2\n3\t4\n"), QStringLiteral("A8:B9")) << "no multiple: once";
    EXPECT_EQ(paste("ZZ10000", "1\t2\n3\t4\n"), QStringLiteral("ZZ10000")) << "the sheet ends";
}

TEST(SheetClipboard, FormulasOfCopiedCellsMove) {
    Sheet sheet(Texts{{"1", "=A1*2", "=$A$1+B1"}, {"10"}});
    ToggleFormat(sheet, RangeOf("B1"), Toggle::Bold);
    const SheetClip clip = CopyCells(sheet.worksheet(), RangeOf("A1:C1"));
    EXPECT_EQ(clip.text, QStringLiteral("1\t2\t3\n"));
    EXPECT_FALSE(clip.html.contains("=A1*2")) << "its cells stay behind";
    EXPECT_EQ(PasteCells(sheet, RangeOf("A3:A4"), clip), RangeOf("A3:C4"));
    EXPECT_EQ(sheet.input("B3"), QStringLiteral("=A3*2"));
    EXPECT_EQ(sheet.input("C4"), QStringLiteral("=$A$1+B4"));
    EXPECT_TRUE(sheet.style("B4").bold);

    // A block is filled from one cell.
    PasteCells(sheet, RangeOf("E1:E3"), CopyCells(sheet.worksheet(), RangeOf("B1")));
    EXPECT_EQ(sheet.input("E3"), QStringLiteral("=D3*2"));
    // To another sheet, formulas and all; and back out as values from a program without them.
    Sheet other;
    PasteCells(other, RangeOf("A1"), clip);
    EXPECT_EQ(other.text("C1"), QStringLiteral("3"));
    EXPECT_EQ(other.input("B1"), QStringLiteral("=A1*2"));
    PasteCells(other, RangeOf("A5"), {clip.text, clip.html, {}});
    EXPECT_EQ(other.input("B5"), QStringLiteral("2"));
    EXPECT_TRUE(other.style("B5").bold);
}

TEST(SheetClipboard, CutCellsKeepWhatTheyRead) {
    Sheet sheet(Texts{{"5"}, {"1", "=A2*2", "=A1+1"}});
    const SheetClip clip = CutCells(sheet, RangeOf("A2:C2"));
    EXPECT_EQ(sheet.text("B2"), QString());
    PasteCells(sheet, RangeOf("B7"), clip);
    EXPECT_EQ(sheet.input("C7"), QStringLiteral("=B7*2")) << "its cell was cut with it";
    EXPECT_EQ(sheet.input("D7"), QStringLiteral("=A1+1"));
    EXPECT_EQ(sheet.text("D7"), QStringLiteral("6"));
}

TEST(SheetClipboard, MergesGoAlong) {
    Sheet sheet(Texts{{"head"}});
    ToggleMerge(sheet, RangeOf("A1:C1"));
    const SheetClip clip = CopyCells(sheet.worksheet(), RangeOf("A1:C2"));
    PasteCells(sheet, RangeOf("B4"), clip);
    EXPECT_TRUE(sheet.worksheet().contents().merges.contains(RangeOf("B4:D4")));
    // Over a part of a merge: that one ends.
    PasteCells(sheet, RangeOf("C4"), {QStringLiteral("x\n"), {}, {}});
    PasteCells(sheet, RangeOf("C4"), CopyCells(sheet.worksheet(), RangeOf("F9")));
    EXPECT_FALSE(sheet.worksheet().contents().merges.contains(RangeOf("B4:D4")));
}

TEST(SheetClipboard, NothingIsLaidUnderAMerge) {
    Sheet sheet(Texts{{"=SUM(D5:E5)", "10"}, {"", "", "2", "3"}});
    const CellRange merge = RangeOf("D5:E5");
    ToggleMerge(sheet, merge);
    PasteCells(sheet, merge, {QStringLiteral("10\n"), {}, {}});
    EXPECT_EQ(sheet.text("A1"), QStringLiteral("10"));
    PasteCells(sheet, merge, CopyCells(sheet.worksheet(), RangeOf("B1")));
    EXPECT_EQ(sheet.text("A1"), QStringLiteral("10"));
    EXPECT_TRUE(sheet.worksheet().contents().merges.contains(merge));
    PasteCells(sheet, RangeOf("D5"), {QStringLiteral("1\t2\t3\n"), {}, {}});
    EXPECT_EQ(sheet.text("A1"), QStringLiteral("1")) << "what falls under it is left out";

    AutoSum(sheet, merge);
    EXPECT_EQ(sheet.text("E5"), QString());
    Sheet column(Texts{{"1"}, {"2"}, {"Note"}});
    AutoSum(column, RangeOf("A1:A2"));
    EXPECT_EQ(column.text("A3"), QStringLiteral("Note"));
    EXPECT_EQ(column.text("A4"), QStringLiteral("3"));
}

TEST(SheetClipboard, WhatCantBeReadChangesNothing) {
    Sheet sheet(Texts{{"1"}});
    const SheetContents before = sheet.worksheet().contents();
    const QByteArray bad[] = {"", "A1", "A1:B2 cut\n", "Q\n<table></table>", "A1:B2\nno table"};
    for (const QByteArray& cells : bad) {
        if (cells.isEmpty())
            EXPECT_EQ(PasteCells(sheet, RangeOf("A1"), {}), RangeOf("A1"));
        else
            EXPECT_EQ(RaisedError([&] {
                          PasteCells(sheet, RangeOf("A1"), {{}, {}, cells});
                      }),
                      errors::BadArgument)
                << cells.constData();
        EXPECT_EQ(sheet.worksheet().contents(), before);
    }
    PasteCells(sheet, RangeOf("A1"), {QStringLiteral("words"), "<p>words</p>", {}});
    EXPECT_EQ(sheet.text("A1"), QStringLiteral("words")) << "HTML without a table comes as text";
}

TEST(SheetSession, JumpsAsSpreadsheetsDo) {
    const Sheet sheet(Texts{{"a", "b", "", "d"}, {"x"}, {}, {}, {"y"}});
    struct Row {
        const char* from;
        Step jump;
        const char* to;
    };
    const Row rows[] = {
        {"A1", Step::JumpRight, "B1"}, {"B1", Step::JumpRight, "D1"}, {"D1", Step::JumpRight, "Z1"},
        {"A1", Step::JumpDown, "A2"},  {"A2", Step::JumpDown, "A5"},  {"A5", Step::JumpDown, "A50"},
        {"A50", Step::JumpUp, "A5"},   {"A5", Step::JumpUp, "A2"},    {"Z1", Step::JumpLeft, "D1"},
        {"C9", Step::JumpUp, "C1"},    {"A1", Step::JumpUp, "A1"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(
            AddressText(JumpFrom(sheet.worksheet().contents(), CellOf(row.from), row.jump, 50, 26)),
            QLatin1String(row.to))
            << row.from;
}

TEST(SheetSession, MovesAndExtends) {
    Sheet sheet(Texts{{"a", "b"}, {"c"}});
    sheet.worksheet().merge(RangeOf("C3:D4"));
    SetColumnWidths(sheet, RangeOf("F1"), 0);
    SheetSession session(&sheet);
    struct Row {
        const char* from;
        Step step;
        Extend extend;
        const char* active;
        const char* selected;
    };
    using enum Extend;
    const Row rows[] = {
        {"A1", Step::Left, No, "A1", "A1"},
        {"B3", Step::Right, No, "C3", "C3:D4"},
        {"C3", Step::Right, No, "E3", "E3"},
        {"C3", Step::Down, No, "C5", "C5"},
        {"E4", Step::Left, No, "C3", "C3:D4"},
        {"E1", Step::Right, No, "G1", "G1"}, // past the hidden column
        {"B3", Step::Right, Yes, "B3", "B3:D4"},
        {"B2", Step::JumpUp, Yes, "B2", "B1:B2"},
        {"D9", Step::RowStart, No, "A9", "A9"},
        {"D9", Step::SheetStart, Yes, "D9", "A1:D9"},
        {"D9", Step::SheetEnd, No, "B2", "B2"},
        {"D9", Step::PageDown, No, "D19", "D19"},
        {"D9", Step::PageUp, No, "D1", "D1"},
        {"A50", Step::Down, No, "A50", "A50"}, // the viewable rows end
    };
    for (const Row& row : rows) {
        session.select(RangeOf(row.from));
        session.move(row.step, row.extend, 10);
        EXPECT_EQ(AddressText(session.active()), QLatin1String(row.active)) << row.from;
        EXPECT_EQ(RangeText(session.selected()), QLatin1String(row.selected)) << row.from;
    }
    // Rows beyond the viewable ones are there when they hold something.
    sheet.edit([](Worksheet& cells) { cells.enter({79, 0}, QStringLiteral("late")); });
    EXPECT_EQ(session.layout().rows(), 80);
    session.selectAll();
    EXPECT_EQ(RangeText(session.selected()), QStringLiteral("A1:Z80"));
    sheet.undo();
    EXPECT_EQ(RangeText(session.selected()), QStringLiteral("A1:Z50"));
}

TEST(SheetSession, EnterAndTabWalkOn) {
    Sheet sheet;
    SheetSession session(&sheet);
    const auto type = [&](const char* text, Step step) {
        session.beginEdit(EditMode::Typing, QString::fromLatin1(text));
        session.commit();
        session.advance(step);
        return AddressText(session.active());
    };
    session.select(RangeOf("B2"));
    EXPECT_EQ(type("1", Step::Right), QStringLiteral("C2"));
    EXPECT_EQ(type("2", Step::Right), QStringLiteral("D2"));
    EXPECT_EQ(type("3", Step::Down), QStringLiteral("B3")) << "below where the Tabs began";
    EXPECT_EQ(type("4", Step::Up), QStringLiteral("B2"));
    // Around a selection, over what is merged.
    sheet.worksheet().merge(RangeOf("F1:G1"));
    session.select(RangeOf("F1:G2"));
    QStringList walked;
    for (int i = 0; i < 3; ++i) {
        session.advance(Step::Right);
        walked.append(AddressText(session.active()));
    }
    EXPECT_EQ(walked.join(QLatin1Char(' ')), QStringLiteral("F2 G2 F1"));
    EXPECT_EQ(session.selected(), RangeOf("F1:G2"));
    session.advance(Step::Up);
    EXPECT_EQ(AddressText(session.active()), QStringLiteral("G2"));
}

TEST(SheetSession, EditsAreTakenOverOrGivenUp) {
    Sheet sheet(Texts{{"5"}});
    SheetSession session(&sheet);
    session.beginEdit(EditMode::InPlace);
    EXPECT_EQ(session.editText(), QStringLiteral("5"));
    session.setEditText(QStringLiteral("6"), 1);
    session.cancel();
    EXPECT_EQ(sheet.text("A1"), QStringLiteral("5"));
    session.select(RangeOf("B1:B3"));
    session.beginEdit(EditMode::Typing, QStringLiteral("=A1+1"));
    session.commitToSelection();
    EXPECT_EQ(sheet.input("B3"), QStringLiteral("=A3+1"));
    // A sheet that is loaded while something is typed takes no part of it.
    session.beginEdit(EditMode::Typing, QStringLiteral("late"));
    sheet.setHTMLData({});
    EXPECT_FALSE(session.isEditing());
    session.commit();
    EXPECT_TRUE(sheet.worksheet().contents().cells.isEmpty());
}

TEST(SheetSession, ClicksPutNamesIntoAFormula) {
    Sheet sheet;
    SheetSession session(&sheet);
    const auto at = [&](const char* range) { return session.pointAt(RangeOf(range)); };
    EXPECT_FALSE(at("B2"));
    session.beginEdit(EditMode::Typing, QStringLiteral("="));
    EXPECT_TRUE(at("B2"));
    EXPECT_TRUE(at("B3:B5")) << "another one in its place";
    EXPECT_EQ(session.editText(), QStringLiteral("=B3:B5"));
    session.setEditText(QStringLiteral("=B3:B5"), 6);
    EXPECT_FALSE(at("C1")) << "no name after a name";
    session.setEditText(QStringLiteral("=SUM()*2"), 5);
    EXPECT_TRUE(at("C1"));
    EXPECT_EQ(session.editText(), QStringLiteral("=SUM(C1)*2"));
    EXPECT_EQ(session.caret(), 7);
}

TEST(SheetActions, KeysAreUniqueAndRun) {
    QSet<QString> keys;
    for (const SheetAction& action : SheetActions()) {
        EXPECT_EQ(ActionOf(QLatin1String(action.key)), &action) << action.key;
        for (const QString& key :
             QString::fromLatin1(action.keys).split(u' ', Qt::SkipEmptyParts)) {
            EXPECT_FALSE(keys.contains(key)) << key.toStdString();
            keys.insert(key);
            EXPECT_EQ(ActionForKeys(QKeySequence(key)), &action) << key.toStdString();
        }
        // On an empty sheet none has anything to stumble over.
        Sheet sheet;
        SheetSession session(&sheet);
        if (action.run)
            action.run(session);
    }
    EXPECT_EQ(ActionForKeys({}), nullptr);
}

} // namespace
} // namespace kelvrane
