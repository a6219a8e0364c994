#include "worksheet/cell_measures.h"
#include "worksheet/page_painter.h"
#include "worksheet/sheet_layout.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

constexpr QRgb red = 0xffff0000;
constexpr QRgb blue = 0xff0000ff;

Cell TextCell(const QString& text) {
    Cell cell;
    cell.value = text;
    return cell;
}

Cell NumberCell(double number, const QString& format = {}) {
    Cell cell;
    cell.value = number;
    cell.style.numberFormat = format;
    return cell;
}

CellBorder BorderLine(CellBorder::Line line, int width, QRgb color = red) {
    return {line, width, color};
}

/// The range on white, a pixel a unit, with a rim of five pixels around.
constexpr int rim = 5;
QImage Painted(const SheetContents& contents, const CellRange& range, double scale = 1) {
    const QSizeF size = RangeRect(contents, range).size() + QSizeF(2 * rim, 2 * rim);
    QImage image((size * scale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    painter.translate(rim, rim);
    PaintCells(painter, contents, range);
    return image;
}

/// Pixels in a part of the picture, counted without the rim, that aren't white.
int InkIn(const QImage& image, const QRect& part) {
    int ink = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            if (image.pixel(x + rim, y + rim) != qRgb(255, 255, 255))
                ++ink;
    return ink;
}

QRect Box(const SheetContents& contents, const char* range) {
    return RangeRect(contents, *ParseRange(QString::fromLatin1(range))).toRect();
}

CellRange RangeOf(const char* name) {
    return *ParseRange(QString::fromLatin1(name));
}

QPageLayout Paper(QPageSize::PageSizeId id) {
    return {QPageSize(id), QPageLayout::Portrait, QMarginsF(36, 36, 36, 36), QPageLayout::Point};
}

/// A list of rows in columns A to F.
SheetContents ListOf(int rows) {
    SheetContents contents;
    for (int row = 0; row < rows; ++row) {
        contents.cells.insert({row, 0}, TextCell(QStringLiteral("Project %1").arg(row)));
        contents.cells.insert({row, 5}, NumberCell(row, QStringLiteral("0.00")));
    }
    return contents;
}

TEST(SheetLayout, FindsWhatLiesAtAPlace) {
    SheetContents contents;
    contents.columnWidths = {{1, 0}, {2, 100}};
    contents.rowHeights = {{0, 40}, {3, 1'000'000'000}};
    const SheetLayout layout(contents, 5, 4);
    EXPECT_EQ(layout.columnAt(63), 0);
    EXPECT_EQ(layout.columnAt(64), 2) << "a hidden column is never hit";
    EXPECT_EQ(layout.columnAt(-5), 0);
    EXPECT_EQ(layout.columnAt(100'000), 3);
    EXPECT_EQ(layout.rowAt(39), 0);
    EXPECT_EQ(layout.rowAt(40), 1);
    EXPECT_EQ(layout.size().height(), 40 + 3 * 20 + LargestCellSide) << "a bound for hostile sizes";
    EXPECT_EQ(layout.rect(RangeOf("C1:D2")), QRect(64, 0, 164, 60));
    EXPECT_EQ(RangeRect(contents, RangeOf("C1:D2")).toRect(), QRect(64, 0, 164, 60));
    EXPECT_EQ(layout.rangeIn(QRect(70, 45, 1, 20)), RangeOf("C2:C3"));
}

TEST(PaintCells, FillsAndMergesCoverTheirCells) {
    SheetContents contents;
    Cell filled;
    filled.style.fill = blue;
    contents.cells.insert({1, 1}, filled);
    contents.merges = {RangeOf("B2:C3")};
    const QImage image = Painted(contents, RangeOf("A1:D4"));
    const QRect box = Box(contents, "B2:C3");
    EXPECT_EQ(InkIn(image, box), box.width() * box.height());
    EXPECT_EQ(InkIn(image, QRect({}, Box(contents, "A1:D4").size())), box.width() * box.height());
    // Where only a corner of the merge is on view, it is filled all the same.
    const QImage corner = Painted(contents, RangeOf("C3:D4"));
    EXPECT_EQ(corner.pixel(rim, rim), blue);
}

TEST(PaintCells, NoSeamBetweenFillsAtAnyScale) {
    SheetContents contents;
    Cell filled;
    filled.style.fill = blue;
    for (int row = 0; row < 8; ++row)
        for (int column = 0; column < 5; ++column)
            contents.cells.insert({row, column}, filled);
    for (const double scale : {0.37, 0.75, 1.1, 2.53}) {
        const QImage image = Painted(contents, RangeOf("A1:E8"), scale);
        const QRectF box = RangeRect(contents, RangeOf("A1:E8")).translated(rim, rim);
        const int top = qRound(box.top() * scale) + 1;
        for (int y = top; y < int(box.bottom() * scale) - 1; ++y)
            for (int x = int(box.left() * scale) + 1; x < int(box.right() * scale) - 1; ++x)
                ASSERT_EQ(image.pixel(x, y), blue) << scale << ": " << x << ", " << y;
    }
}

TEST(PaintCells, BordersLieOnTheirEdge) {
    using Line = CellBorder::Line;
    struct Row {
        Line line;
        int width;
        QList<int> inked; ///< pixels from the edge, across it
    };
    const Row rows[] = {
        {Line::None, 3, {}},           {Line::Solid, 1, {-1}},     {Line::Solid, 2, {-1, 0}},
        {Line::Solid, 3, {-2, -1, 0}}, {Line::Double, 1, {-2, 0}}, {Line::Dashed, 1, {-1}},
    };
    for (const Row& row : rows) {
        SheetContents contents;
        Cell cell;
        cell.style.right = BorderLine(row.line, row.width);
        contents.cells.insert({0, 0}, cell);
        const QImage image = Painted(contents, RangeOf("A1:B1"));
        const int edge = Box(contents, "A1").width();
        QList<int> inked;
        for (int x = -5; x <= 5; ++x)
            if (image.pixel(rim + edge + x, rim) == red)
                inked.append(x);
        EXPECT_EQ(inked, row.inked) << static_cast<int>(row.line) << ' ' << row.width;
    }
}

TEST(PaintCells, SharedEdgesShowTheHeavierBorder) {
    SheetContents contents;
    Cell left;
    left.style.right = BorderLine(CellBorder::Line::Solid, 1, blue);
    Cell right;
    right.style.left = BorderLine(CellBorder::Line::Solid, 3, red);
    contents.cells.insert({0, 0}, left);
    contents.cells.insert({0, 1}, right);
    const int edge = Box(contents, "A1").width();
    EXPECT_EQ(Painted(contents, RangeOf("A1:B1")).pixel(rim + edge - 1, rim + 5), red);
    // A neighbour's border shows where the neighbour itself isn't painted.
    EXPECT_EQ(Painted(contents, RangeOf("A1")).pixel(rim + edge - 1, rim + 5), red);
    EXPECT_EQ(Painted(contents, RangeOf("B1")).pixel(rim - 1, rim + 5), red);

    // Around a merge, not within; at the sheet's own edge nothing is cut off.
    contents = {};
    Cell boxed;
    boxed.style.left = boxed.style.top = boxed.style.right = boxed.style.bottom =
        BorderLine(CellBorder::Line::Solid, 1);
    contents.cells.insert({0, 0}, boxed);
    contents.merges = {RangeOf("A1:B2")};
    const QImage image = Painted(contents, RangeOf("A1:C3"));
    const QRect box = Box(contents, "A1:B2");
    EXPECT_EQ(InkIn(image, Box(contents, "A1:C3")), 2 * box.width() + 2 * box.height() - 4);
    EXPECT_EQ(image.pixel(rim, rim), red);
}

TEST(PaintCells, HairlinesSurviveShrinking) {
    SheetContents contents;
    Cell cell;
    cell.style.bottom = BorderLine(CellBorder::Line::Solid, 1);
    for (int row = 0; row < 12; ++row)
        contents.cells.insert({row, 0}, cell);
    const QImage image = Painted(contents, RangeOf("A1:A12"), 0.31);
    int lines = 0;
    for (int y = 0; y < image.height(); ++y)
        lines += image.pixel(image.width() / 2, y) == red ? 1 : 0;
    EXPECT_EQ(lines, 12);
}

TEST(PaintCells, TextRunsOverEmptyNeighboursOnly) {
    const QString text = QStringLiteral("A text that needs three columns");
    struct Row {
        const char* what;
        const char* blocked; ///< a cell with content
        HorizontalAlign align;
        QList<bool> inked; ///< A1 to E1; the text stands in C1
    };
    using enum HorizontalAlign;
    const Row rows[] = {
        {"to the right", "A9", General, {false, false, true, true, true}},
        {"as far as content", "E1", General, {false, false, true, true, false}},
        {"not at all", "D1", Left, {false, false, true, false, false}},
        {"to the left", "A9", Right, {true, true, true, false, false}},
        {"both ways", "A9", Center, {false, true, true, true, false}},
    };
    for (const Row& row : rows) {
        SheetContents contents;
        Cell cell = TextCell(text);
        cell.style.horizontal = row.align;
        contents.cells.insert({0, 2}, cell);
        contents.cells.insert(*ParseAddress(QString::fromLatin1(row.blocked)),
                              TextCell(QStringLiteral(" ")));
        const QImage whole = Painted(contents, RangeOf("A1:E1"));
        for (int column = 0; column < 5; ++column) {
            const QRect box =
                RangeRect(contents, {{0, column}, {0, column}}).toRect().adjusted(2, 0, -2, 0);
            EXPECT_EQ(InkIn(whole, box) > 0, row.inked[column]) << row.what << ' ' << column;
            // The same when the screen asks for one column alone.
            const QImage alone = Painted(contents, {{0, column}, {0, column}});
            EXPECT_EQ(InkIn(alone, QRect(2, 0, box.width(), box.height())) > 0, row.inked[column])
                << row.what << ' ' << column << " alone";
        }
    }
}

TEST(PaintCells, NumbersNeverRunOverNorLookLikeOthers) {
    SheetContents contents;
    contents.columnWidths = {{0, 40}};
    contents.cells.insert({0, 0}, NumberCell(1234567.5, QStringLiteral("#,##0.00")));
    const QImage number = Painted(contents, RangeOf("A1:C1"));
    EXPECT_EQ(InkIn(number, Box(contents, "B1:C1")), 0);
    contents.cells.insert({0, 0}, NumberCell(7654321.5, QStringLiteral("#,##0.00")));
    EXPECT_EQ(Painted(contents, RangeOf("A1:C1")), number) << "both are ###";
    // A General number loses decimals, not its value.
    contents.cells.insert({0, 0}, NumberCell(1.0 / 3));
    const QImage third = Painted(contents, RangeOf("A1:C1"));
    EXPECT_NE(third, number);
    contents.cells.insert({0, 0}, NumberCell(2.0 / 3));
    EXPECT_NE(Painted(contents, RangeOf("A1:C1")), third);
    // Wide enough by its own measure, it is shown as it is.
    contents.cells.insert({0, 0}, NumberCell(1234567.5, QStringLiteral("#,##0.00")));
    contents.columnWidths[0] = WantedColumnWidth(contents, 0);
    EXPECT_NE(Painted(contents, RangeOf("A1")).size(), number.size());
    EXPECT_GT(InkIn(Painted(contents, RangeOf("A1:C1")), Box(contents, "A1")), 0);
    EXPECT_LT(contents.columnWidths[0], 90);
}

TEST(PaintCells, WrappedTextHasItsHeight) {
    SheetContents contents;
    Cell cell = TextCell(QStringLiteral("several words that wrap in a column"));
    cell.style.wraps = true;
    contents.cells.insert({0, 0}, cell);
    const int wanted = WantedRowHeight(contents, 0);
    EXPECT_GT(wanted, 3 * 13);
    contents.rowHeights[0] = wanted;
    const QImage image = Painted(contents, RangeOf("A1:C1"));
    EXPECT_EQ(InkIn(image, Box(contents, "B1:C1")), 0);
    EXPECT_GT(InkIn(image, QRect(0, wanted - 14, 64, 13)), 0) << "the last line";
    contents.cells.insert({1, 0}, TextCell(QStringLiteral("one\ntwo")));
    EXPECT_GT(WantedRowHeight(contents, 1), 2 * 13);
}

TEST(PaintCells, FontsOfOtherMachinesMeasureAlike) {
    const auto measured = [](const char* family, const QString& text) {
        SheetContents contents;
        Cell cell = TextCell(text);
        cell.style.fontFamily = QString::fromLatin1(family);
        cell.style.pointSize = 14;
        contents.cells.insert({0, 0}, cell);
        return QSize(WantedColumnWidth(contents, 0), WantedRowHeight(contents, 0));
    };
    const QString text = QStringLiteral("First line\nand a second one");
    const QSize size = measured("Liberation Sans", text);
    for (const char* family : {"", "Arial", "ARIAL", "Helvetica", "No Such Font"})
        EXPECT_EQ(measured(family, text), size) << family;
    EXPECT_EQ(measured("Times New Roman", text), measured("Liberation Serif", text));
    EXPECT_EQ(measured("Courier New", text), measured("Liberation Mono", text));
    EXPECT_NE(measured("DejaVu Sans", text), size) << "a font that is there keeps its own";
    // A letter that comes from another font makes the row no higher.
    EXPECT_EQ(measured("", QStringLiteral("First \u2603\nand a second one")).height(),
              size.height());
}

TEST(PaintCells, HostileStylesCostNothing) {
    SheetContents contents;
    Cell cell = TextCell(QString(100'000, QLatin1Char('W')));
    cell.style.pointSize = 1e9;
    cell.style.indent = 2'000'000'000;
    cell.style.fontFamily = QStringLiteral("No Such Font");
    contents.cells.insert({0, 0}, cell);
    cell.style.wraps = true;
    contents.cells.insert({1, 0}, cell);
    contents.columnWidths = {{0, -5}, {1, 2'000'000'000}};
    contents.merges = {{{0, 0}, {SheetRows - 1, SheetColumns - 1}}};
    Painted(contents, RangeOf("A1:A2"));
    EXPECT_LE(WantedRowHeight(contents, 1), LargestCellSide);
    EXPECT_LE(WantedColumnWidth(contents, 0), LargestCellSide);
}

TEST(SheetPages, BreaksBetweenRowsOnA4AndLetter) {
    struct Row {
        int rows;
        QPageSize::PageSizeId paper;
        int pages;
    };
    // 20 pixels are 15 points; A4 has 770 between the margins, Letter 720.
    const Row rows[] = {
        {1, QPageSize::A4, 1},       {5, QPageSize::A4, 1},      {51, QPageSize::A4, 1},
        {52, QPageSize::A4, 2},      {60, QPageSize::A4, 2},     {200, QPageSize::A4, 4},
        {48, QPageSize::Letter, 1},  {49, QPageSize::Letter, 2}, {60, QPageSize::Letter, 2},
        {200, QPageSize::Letter, 5},
    };
    for (const Row& row : rows) {
        const SheetPages pages(ListOf(row.rows), Paper(row.paper));
        EXPECT_EQ(pages.count(), row.pages) << row.rows << " on " << row.paper;
        EXPECT_DOUBLE_EQ(pages.scale(), 0.75);
    }
    EXPECT_EQ(SheetPages({}, Paper(QPageSize::A4)).count(), 1);
}

TEST(SheetPages, AllColumnsFitTheWidth) {
    SheetContents contents = ListOf(10);
    contents.cells.insert({0, 20}, NumberCell(1));
    const SheetPages pages(contents, Paper(QPageSize::A4));
    EXPECT_NEAR(pages.scale(), (595.0 - 72) / (21 * 64), 0.001);
    // A text at the end needs more room than its column has.
    contents.cells.insert({1, 20}, TextCell(QStringLiteral("A remark that runs on and on")));
    EXPECT_EQ(ShownRange(contents).last.column, 22);
    // What only has a font shows nothing.
    contents = ListOf(3);
    Cell bold;
    bold.style.bold = true;
    contents.cells.insert({400, 30}, bold);
    EXPECT_EQ(ShownRange(contents), RangeOf("A1:F3"));
    Cell ruled;
    ruled.style.top.line = CellBorder::Line::Solid;
    contents.cells.insert({8, 7}, ruled);
    EXPECT_EQ(ShownRange(contents), RangeOf("A1:H9"));
}

TEST(SheetPages, EveryRowIsOnOnePageWhole) {
    SheetContents contents = ListOf(130);
    for (int row = 0; row < 130; ++row) {
        Cell mark;
        mark.style.fill = qRgb(200, row, 10);
        contents.cells.insert({row, 1}, mark);
        contents.rowHeights.insert(row, 17 + row % 9);
    }
    contents.merges = {{{40, 2}, {47, 3}}};
    const QPageLayout paper = Paper(QPageSize::Letter);
    const SheetPages pages(contents, paper);
    QHash<QRgb, int> heights;
    for (int page = 0; page < pages.count(); ++page) {
        QImage image(paper.fullRect(QPageLayout::Point).size().toSize() * 4, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(4, 4);
        pages.paint(painter, page);
        const int x = qRound((36 + (64 + 32) * pages.scale()) * 4);
        QHash<QRgb, int> here;
        for (int y = 0; y < image.height(); ++y)
            ++here[image.pixel(x, y)];
        here.remove(qRgb(255, 255, 255));
        for (auto it = here.cbegin(); it != here.cend(); ++it) {
            EXPECT_FALSE(heights.contains(it.key())) << "row " << qGreen(it.key()) << " twice";
            heights.insert(it.key(), it.value());
        }
    }
    ASSERT_EQ(heights.size(), 130);
    for (int row = 0; row < 130; ++row)
        EXPECT_NEAR(heights.value(qRgb(200, row, 10)), (17 + row % 9) * 3, 1) << row;
}

TEST(SheetPages, MergedAndOverlongRows) {
    // A merge goes to the next page as a whole; 51 rows fit.
    SheetContents contents = ListOf(60);
    contents.merges = {{{45, 0}, {55, 1}}};
    EXPECT_EQ(SheetPages(contents, Paper(QPageSize::A4)).count(), 2);
    contents.merges = {{{0, 0}, {59, 1}}};
    EXPECT_EQ(SheetPages(contents, Paper(QPageSize::A4)).count(), 2) << "none that no page holds";
    contents = ListOf(3);
    contents.rowHeights[1] = 2500;
    EXPECT_EQ(SheetPages(contents, Paper(QPageSize::A4)).count(), 3) << "a row goes on";
}

TEST(SheetPages, LinesOfATextAreNeverCut) {
    SheetContents contents = ListOf(51);
    contents.cells[{50, 0}].value = QStringLiteral("one\ntwo\nthree");
    EXPECT_EQ(SheetPages(contents, Paper(QPageSize::A4)).count(), 2);
    contents.rowHeights[50] = 20;
    EXPECT_EQ(SheetPages(contents, Paper(QPageSize::A4)).count(), 1) << "its own height stays";
}

TEST(PrintSheet, PdfHasThePagesAndIsTheSameEachTime) {
    const auto print = [](const SheetContents& contents, QPageSize::PageSizeId paper) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        {
            QPdfWriter writer(&buffer);
            writer.setPageSize(QPageSize(paper));
            PrintSheet(contents, writer);
            EXPECT_GE(writer.pageLayout().margins(QPageLayout::Point).left(), 35.9);
        }
        return bytes;
    };
    for (const auto& [rows, pages] : {std::pair(5, 1), std::pair(60, 2), std::pair(200, 4)}) {
        const QByteArray pdf = print(ListOf(rows), QPageSize::A4);
        EXPECT_TRUE(pdf.contains(QByteArray("/Count ").append(QByteArray::number(pages)))) << rows;
        EXPECT_EQ(pdf.size(), print(ListOf(rows), QPageSize::A4).size());
    }
}

} // namespace
} // namespace kelvrane
