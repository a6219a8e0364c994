#include "support/fakes.h"
#include "widgets/open_editor.h"
#include "widgets/sheet_editor.h"
#include "widgets/sheet_grid.h"
#include "widgets/sheet_head.h"
#include "widgets/sheet_view.h"
#include "worksheet/cell_measures.h"
#include "worksheet/page_painter.h"
#include "worksheet/sheet_clipboard.h"
#include "worksheet/sheet_session.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

CellRange RangeOf(const char* name) {
    return *ParseRange(QString::fromLatin1(name));
}

struct SheetEditorTest : testing::ProgramTest {
    Spreadsheet sheet;
    SheetEditor editor{&sheet};
    SheetGrid* grid = editor.findChild<SheetGrid*>();

    SheetEditorTest() {
        editor.resize(1000, 600);
        editor.show();
    }
    QPoint middle(const char* cell) const { return grid->place(RangeOf(cell)).center(); }
    void click(const char* cell, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, modifiers, middle(cell));
    }
    void drag(const char* from, const char* to) {
        QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, middle(from));
        QTest::mouseMove(grid->viewport(), middle(to));
        QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, middle(to));
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(grid, Qt::Key(key), modifiers);
    }
    void type(const char* text) { QTest::keyClicks(grid, QString::fromLatin1(text)); }
    QString text(const char* cell) const { return sheet.worksheet().text(RangeOf(cell).first); }
    QString input(const char* cell) const { return sheet.worksheet().input(RangeOf(cell).first); }
    QString selected() const { return RangeText(editor.session()->selected()); }
    template <typename Control>
    Control* control(const char* name) const {
        return editor.findChild<Control*>(QString::fromLatin1(name));
    }
    SheetHead* head(const char* name) const { return control<SheetHead>(name); }
};

TEST_F(SheetEditorTest, TypingFillsCellsAndWalksOn) {
    QSignalSpy edited(&sheet, &Spreadsheet::Edited);
    click("B2");
    type("12");
    EXPECT_EQ(text("B2"), QString()) << "not before it is taken over";
    EXPECT_EQ(control<QLineEdit>("FormulaLine")->text(), QStringLiteral("12"));
    key(Qt::Key_Return);
    type("3");
    key(Qt::Key_Tab);
    EXPECT_EQ(selected(), QStringLiteral("C3"));
    type("=B2*B3");
    key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(text("C3"), QStringLiteral("36"));
    EXPECT_EQ(selected(), QStringLiteral("B3"));
    EXPECT_EQ(edited.count(), 3);
    // Arrows take over what was typed, not what is edited in place.
    type("4");
    key(Qt::Key_Up);
    EXPECT_EQ(text("C3"), QStringLiteral("48"));
    EXPECT_EQ(selected(), QStringLiteral("B2"));
    key(Qt::Key_F2);
    key(Qt::Key_Left);
    key(Qt::Key_Up);
    EXPECT_TRUE(editor.session()->isEditing());
    type("0");
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(text("B2"), QStringLiteral("102"));
    // Esc gives up, Del clears, undo brings back.
    type("9");
    key(Qt::Key_Escape);
    EXPECT_EQ(text("B1"), QString());
    // A range becomes its cell again, before Esc is the screen's.
    click("B2");
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selected(), QStringLiteral("B2:C2"));
    key(Qt::Key_Escape);
    EXPECT_EQ(selected(), QStringLiteral("B2"));
    click("B2");
    key(Qt::Key_Delete);
    EXPECT_EQ(text("B2"), QString());
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text("B2"), QStringLiteral("102"));
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(text("B2"), QString());
}

TEST_F(SheetEditorTest, F2WhileTypingLeavesTheCellAlone) {
    click("B2");
    type("old");
    key(Qt::Key_Return);
    click("B2");
    type("=SUM(");
    QTest::keyClick(control<QLineEdit>("FormulaLine"), Qt::Key_F2);
    EXPECT_EQ(editor.session()->editMode(), EditMode::InPlace);
    EXPECT_EQ(text("B2"), QStringLiteral("old"));
    editor.session()->cancel();
    EXPECT_EQ(text("B2"), QStringLiteral("old"));
}

TEST_F(SheetEditorTest, TypingElsewhereTakesOverWhatIsTypedHere) {
    Spreadsheet other;
    SheetEditor second(&other);
    second.resize(600, 400);
    second.show();
    click("B2");
    type("first");
    auto* otherGrid = second.findChild<SheetGrid*>();
    QTest::mouseClick(otherGrid->viewport(), Qt::LeftButton, {}, QPoint(200, 100));
    QTest::keyClicks(otherGrid, QStringLiteral("second"));
    EXPECT_EQ(text("B2"), QStringLiteral("first"));
}

TEST_F(SheetEditorTest, SelectsByMouseAndKeys) {
    QSignalSpy clicked(&editor, &SheetEditor::Clicked);
    drag("B2", "D5");
    EXPECT_EQ(selected(), QStringLiteral("B2:D5"));
    EXPECT_EQ(clicked.count(), 1);
    click("E6", Qt::ShiftModifier);
    EXPECT_EQ(selected(), QStringLiteral("B2:E6"));
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selected(), QStringLiteral("B2:F6"));
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(), QStringLiteral("A1:Z50"));
    QTest::mouseClick(head("ColumnHead"), Qt::LeftButton, {}, {96, 8});
    EXPECT_EQ(selected(), QStringLiteral("B1:B50"));
    QTest::mouseClick(head("RowHead"), Qt::LeftButton, Qt::ShiftModifier, {8, 50});
    EXPECT_EQ(selected(), QStringLiteral("A1:Z3"));
    // What is off the view comes into it.
    key(Qt::Key_End, Qt::ControlModifier);
    key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(selected(), QStringLiteral("A50"));
    EXPECT_TRUE(grid->viewport()->rect().contains(middle("A50")));
    // A name leads to its cell; what is no name, nowhere.
    auto* name = control<QLineEdit>("CellName");
    EXPECT_EQ(name->text(), QStringLiteral("A50"));
    name->setText(QStringLiteral("c3:d4"));
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(selected(), QStringLiteral("C3:D4"));
    name->setText(QStringLiteral("nowhere"));
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(name->text(), QStringLiteral("C3:D4"));
}

TEST_F(SheetEditorTest, HeadsSizeTheirCells) {
    SheetHead* columns = head("ColumnHead");
    const auto pull = [&](int from, int to) {
        QTest::mousePress(columns, Qt::LeftButton, {}, {from, 8});
        QTest::mouseMove(columns, {to, 8});
        QTest::mouseRelease(columns, Qt::LeftButton, {}, {to, 8});
    };
    pull(64, 104);
    EXPECT_EQ(sheet.worksheet().contents().columnWidth(0), 104);
    editor.session()->selectColumns(0, 1);
    pull(103, 83);
    EXPECT_EQ(sheet.worksheet().contents().columnWidth(0), 84);
    EXPECT_EQ(sheet.worksheet().contents().columnWidth(1), 84) << "all that are selected";
    pull(84, -50);
    EXPECT_EQ(sheet.worksheet().contents().columnWidth(0), 0) << "hidden, not less";
    sheet.undo();
    sheet.edit([](Worksheet& cells) {
        cells.enter({0, 0}, QStringLiteral("A text of some length"));
    });
    editor.session()->select(RangeOf("A1"));
    QTest::mouseDClick(columns, Qt::LeftButton, {}, {84, 8});
    EXPECT_EQ(sheet.worksheet().contents().columnWidth(0),
              WantedColumnWidth(sheet.worksheet().contents(), 0));
    SheetHead* rows = head("RowHead");
    QTest::mousePress(rows, Qt::LeftButton, {}, {8, 40});
    QTest::mouseMove(rows, {8, 70});
    QTest::mouseRelease(rows, Qt::LeftButton, {}, {8, 70});
    EXPECT_EQ(sheet.worksheet().contents().rowHeight(1), 50);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(sheet.worksheet().contents().rowHeight(0), 26);
}

TEST_F(SheetEditorTest, ButtonsAndListsFormatTheSelection) {
    drag("A1", "B2");
    QTest::mouseClick(control<QAbstractButton>("bold"), Qt::LeftButton);
    EXPECT_TRUE(sheet.worksheet().style({1, 1}).bold);
    EXPECT_TRUE(control<QAbstractButton>("bold")->isChecked());
    click("D4");
    EXPECT_FALSE(control<QAbstractButton>("bold")->isChecked());
    key(Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(sheet.worksheet().style({3, 3}).italic);

    auto* size = control<QComboBox>("size");
    size->setEditText(QStringLiteral("22"));
    QTest::keyClick(size, Qt::Key_Return);
    EXPECT_EQ(sheet.worksheet().style({3, 3}).pointSize, 22);
    auto* format = control<QComboBox>("format");
    format->setEditText(QStringLiteral("0.000"));
    QTest::keyClick(format, Qt::Key_Return);
    EXPECT_EQ(sheet.worksheet().style({3, 3}).numberFormat, QStringLiteral("0.000"));
    click("A1");
    EXPECT_EQ(format->currentText(), QStringLiteral("General"));
    click("D4");
    EXPECT_EQ(format->currentText(), QStringLiteral("0.000"));

    const auto choose = [&](const char* menu, const char* caption) {
        for (QAction* entry : control<QMenu>(menu)->actions())
            if (entry->text() == QLatin1String(caption))
                entry->trigger();
    };
    choose("fill_menu", "Pale Blue");
    choose("ink_menu", "Red");
    choose("borders_menu", "Outline");
    EXPECT_NE(sheet.worksheet().style({3, 3}).fill, CellStyle::NoColor);
    EXPECT_NE(sheet.worksheet().style({3, 3}).ink, CellStyle::NoColor);
    EXPECT_EQ(sheet.worksheet().style({3, 3}).top.line, CellBorder::Line::Solid);
    choose("fill_menu", "No Fill");
    EXPECT_EQ(sheet.worksheet().style({3, 3}).fill, CellStyle::NoColor);

    // A command takes over what is being typed.
    click("F1");
    type("7");
    QTest::mouseClick(control<QAbstractButton>("bold"), Qt::LeftButton);
    EXPECT_EQ(text("F1"), QStringLiteral("7"));
    type("8");
    CommitOpenEditor();
    EXPECT_EQ(text("F1"), QStringLiteral("8"));
}

TEST_F(SheetEditorTest, AutoSumAndFormulasByClicks) {
    sheet.edit([](Worksheet& cells) {
        cells.enter({0, 0}, QStringLiteral("2"));
        cells.enter({1, 0}, QStringLiteral("3"));
    });
    click("A3");
    key(Qt::Key_Equal, Qt::AltModifier);
    EXPECT_EQ(input("A3"), QStringLiteral("=SUM(A1:A2)"));
    click("C1");
    type("=2*");
    click("A1");
    type("+SUM(");
    drag("A1", "A2");
    type(")");
    key(Qt::Key_Return);
    EXPECT_EQ(input("C1"), QStringLiteral("=2*A1+SUM(A1:A2)"));
    EXPECT_EQ(text("C1"), QStringLiteral("9"));
}

TEST_F(SheetEditorTest, ClipboardInAndOut) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->setText(QStringLiteral("Mon\t8\nTue\t7.5\n"));
    click("A1");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text("B2"), QStringLiteral("7.5"));
    EXPECT_EQ(selected(), QStringLiteral("A1:B2"));
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(), QStringLiteral("Mon\t8\nTue\t7.5\n"));
    EXPECT_TRUE(clipboard->mimeData()->html().contains(QStringLiteral("Mon")));
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(text("A1"), QString());
    click("C3");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text("D4"), QStringLiteral("7.5"));

    auto* table = new QMimeData;
    table->setText(QStringLiteral("x"));
    table->setHtml(QStringLiteral("<table><tr><td><b>Rate</b><td>75</table>"));
    clipboard->setMimeData(table);
    click("F1");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text("G1"), QStringLiteral("75"));

    // A clip that can't be read is told of, and nothing is lost.
    dialogs.expect(QStringLiteral("The clipboard holds no cells"));
    auto* broken = new QMimeData;
    broken->setData(QString::fromLatin1(SheetClip::CellsType), "broken");
    clipboard->setMimeData(broken);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text("G1"), QStringLiteral("75"));
}

TEST_F(SheetEditorTest, MenusHelpAndNames) {
    QSignalSpy help(&editor, &SheetEditor::HelpWanted);
    QSignalSpy about(&editor, &SheetEditor::AboutWanted);
    key(Qt::Key_F1);
    QTest::mouseClick(control<QAbstractButton>("help"), Qt::LeftButton);
    QTest::mouseClick(control<QAbstractButton>("about"), Qt::LeftButton);
    EXPECT_EQ(help.count(), 2);
    EXPECT_EQ(about.count(), 1);
    sheet.edit([](Worksheet& cells) { cells.enter({1, 1}, QStringLiteral("here")); });
    editor.session()->selectRows(0, 1);
    for (QAction* entry : control<QMenu>("RowMenu")->actions())
        if (entry->objectName() == u"insert_rows")
            entry->trigger();
    EXPECT_EQ(text("B4"), QStringLiteral("here"));
    click("B4");
    EXPECT_EQ(grid->accessibleDescription(), QStringLiteral("B4 here"));
    for (const QAbstractButton* button : editor.findChildren<QAbstractButton*>())
        EXPECT_FALSE(button->accessibleName().isEmpty() && button->isVisible())
            << button->objectName().toStdString();
    for (const QComboBox* list : editor.findChildren<QComboBox*>())
        EXPECT_FALSE(list->accessibleName().isEmpty());
}

TEST_F(SheetEditorTest, PaperIsWhiteInDarkPalettes) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x20, 0x22, 0x25));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, QColor(0x18, 0x1a, 0x1c));
    dark.setColor(QPalette::Text, Qt::white);
    editor.setPalette(dark);
    const QImage picture = grid->viewport()->grab().toImage();
    EXPECT_EQ(picture.pixelColor(middle("C3")), QColor(Qt::white));
    EXPECT_EQ(head("RowHead")->grab().toImage().pixelColor(2, 100), QColor(0x20, 0x22, 0x25));
    // Beside the sheet there is no paper.
    editor.resize(3000, 1800);
    QCoreApplication::processEvents();
    EXPECT_EQ(grid->viewport()->grab().toImage().pixelColor(26 * 64 + 40, 300),
              QColor(0x20, 0x22, 0x25));
}

TEST(SheetEditor, GoesWhileSomethingIsTyped) {
    Spreadsheet sheet;
    auto editor = std::make_unique<SheetEditor>(&sheet);
    editor->show();
    auto* grid = editor->findChild<SheetGrid*>();
    QTest::keyClicks(grid, QStringLiteral("12"));
    editor->findChild<QComboBox*>(QStringLiteral("font"))->setFocus();
    editor.reset();
    CommitOpenEditor();
    EXPECT_TRUE(sheet.worksheet().contents().cells.isEmpty());
}

TEST(SheetView, ShowsWhatPrintsAndScrolls) {
    SheetContents contents;
    Cell filled;
    filled.style.fill = qRgb(0, 0, 255);
    contents.cells.insert({0, 0}, filled);
    contents.cells.insert({199, 3}, filled);
    SheetView view;
    view.resize(600, 400);
    view.setContents(contents);
    const auto find = [&] {
        const QImage picture = view.grab().toImage();
        int blue = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                blue += picture.pixel(x, y) == qRgb(0, 0, 255) ? 1 : 0;
        return blue;
    };
    EXPECT_EQ(find(), 64 * 20);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(find(), 0);
    QTest::keyClick(&view, Qt::Key_End);
    EXPECT_EQ(find(), 64 * 20);
    view.setContents({});
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(find(), 0);
}

} // namespace
} // namespace kelvrane
