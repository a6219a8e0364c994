#include "worksheet/page_painter.h"

#include "platform/error.h"
#include "worksheet/cell_measures.h"
#include "worksheet/sheet_layout.h"

#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kelvrane {

namespace {

constexpr double pointsPerPixel = 0.75;
constexpr double pointsPerInch = 72;
constexpr double margin = pointsPerInch / 2;
constexpr int rimPixels = 5; ///< half of the widest border may lie outside of the last cell
constexpr double leastScale = 0.01;

bool ShowsBox(const CellStyle& style) {
    const auto drawn = [](const CellBorder& border) {
        return border.line != CellBorder::Line::None;
    };
    return style.fill != CellStyle::NoColor || drawn(style.left) || drawn(style.top) ||
           drawn(style.right) || drawn(style.bottom);
}

int EdgeAfter(int count, int (*size)(const SheetContents&, int), const QMap<int, int>& own,
              const SheetContents& contents, int usual) {
    int pixels = count * usual;
    for (auto it = own.cbegin(); it != own.cend() && it.key() < count; ++it)
        pixels += size(contents, it.key()) - usual;
    return pixels;
}

/// The column in which a text ends that runs on from a cell with nothing to its right.
int LastColumnOf(const SheetContents& contents, CellAddress at) {
    int reach = TextReach(contents, at) - ShownWidth(contents, at.column);
    int column = at.column;
    while (reach > 0 && column + 1 < SheetColumns)
        reach -= ShownWidth(contents, ++column);
    return column;
}

} // namespace

int ColumnLeft(const SheetContents& contents, int column) {
    return EdgeAfter(column, &ShownWidth, contents.columnWidths, contents,
                     SheetContents::DefaultColumnWidth);
}

int RowTop(const SheetContents& contents, int row) {
    return EdgeAfter(row, &ShownHeight, contents.rowHeights, contents,
                     SheetContents::DefaultRowHeight);
}

QRectF RangeRect(const SheetContents& contents, const CellRange& range) {
    const QPointF first(ColumnLeft(contents, range.first.column),
                        RowTop(contents, range.first.row));
    const QPointF end(ColumnLeft(contents, range.last.column + 1),
                      RowTop(contents, range.last.row + 1));
    return {first, end};
}

CellRange ShownRange(const SheetContents& contents) {
    struct RowEnd {
        int filled = -1; ///< last column with content
        int merged = -1; ///< last column of a merge
    };
    QHash<int, RowEnd> ends;
    CellAddress last;
    const auto take = [&last](CellAddress cell) {
        last = {std::max(last.row, cell.row), std::max(last.column, cell.column)};
    };
    for (const CellRange& merge : contents.merges) {
        take(merge.last);
        for (int row = merge.first.row; row <= merge.last.row; ++row)
            ends[row].merged = std::max(ends[row].merged, merge.last.column);
    }
    for (auto it = contents.cells.cbegin(); it != contents.cells.cend(); ++it) {
        if (IsEmpty(it->value) && it->formula.isEmpty() && !ShowsBox(it->style))
            continue;
        take(it.key());
        if (!IsEmpty(it->value))
            ends[it.key().row].filled = std::max(ends[it.key().row].filled, it.key().column);
    }
    // Only the last text of a row can run out of the sheet.
    for (auto end = ends.cbegin(); end != ends.cend(); ++end)
        if (end->filled > end->merged)
            take({0, LastColumnOf(contents, {end.key(), end->filled})});
    return {{}, last};
}

SheetPages::SheetPages(const SheetContents& contents, const QPageLayout& layout)
    : m_contents(WithFittedRows(contents)), m_paper(layout.paintRect(QPageLayout::Point)),
      m_printed(ShownRange(contents)) {
    const int width = std::max(1, ColumnLeft(contents, m_printed.last.column + 1));
    m_scale = std::clamp(m_paper.width() / width, leastScale, pointsPerPixel);
    breakRows(std::max(1, static_cast<int>(m_paper.height() / m_scale)));
}

/// The edges between rows, top of the sheet and end included, without those inside of merges that a
/// page could hold; which these are, breakRows() sees by the distance.
QList<int> SheetPages::breakableEdges() const {
    const int rows = m_printed.rows();
    QList<bool> inMerge(rows + 1, false);
    for (const CellRange& merge : m_contents.merges)
        for (int row = merge.first.row + 1; row <= std::min(merge.last.row, rows - 1); ++row)
            inMerge[row] = true;
    QList<int> edges;
    int top = 0;
    for (int row = 0; row <= rows; ++row) {
        if (!inMerge[row])
            edges.append(top);
        if (row < rows)
            top += ShownHeight(m_contents, row);
    }
    return edges;
}

void SheetPages::breakRows(int pageHeight) {
    const SheetLayout layout(m_contents, m_printed.rows(), 1);
    const QList<int> edges = breakableEdges();
    const int end = edges.last();
    int top = 0;
    while (end - top > pageHeight) {
        const auto next = std::ranges::upper_bound(edges, top + pageHeight);
        int bottom = *std::prev(next);
        if (next != edges.end() && *next - bottom > pageHeight) {
            // No page holds what comes: merged rows break between rows, a single one anywhere.
            const int row = layout.top(layout.rowAt(top + pageHeight));
            bottom = row > bottom ? row : top + pageHeight;
        }
        m_bands.append({top, bottom});
        top = bottom;
    }
    m_bands.append({top, std::max(end, top)});
}

void SheetPages::paint(QPainter& painter, int page) const {
    const Band band = At(m_bands, page);
    const SheetLayout layout(m_contents, m_printed.rows(), m_printed.columns());
    const CellRange range{{layout.rowAt(band.top), 0},
                          {layout.rowAt(band.bottom - 1), m_printed.last.column}};
    painter.save();
    painter.translate(m_paper.topLeft());
    painter.scale(m_scale, m_scale);
    const int rim = rimPixels;
    painter.setClipRect(
        QRectF(-rim, -rim, layout.size().width() + 2 * rim, band.bottom - band.top + 2 * rim),
        Qt::IntersectClip);
    if (layout.top(range.first.row) < band.top || layout.top(range.last.row + 1) > band.bottom)
        painter.setClipRect(
            QRectF(-rim, 0, layout.size().width() + 2 * rim, band.bottom - band.top),
            Qt::IntersectClip);
    painter.translate(0, layout.top(range.first.row) - band.top);
    PaintCells(painter, m_contents, range);
    painter.restore();
}

void PrintSheet(const SheetContents& contents, QPagedPaintDevice& device) {
    QPageLayout own = device.pageLayout();
    own.setUnits(QPageLayout::Point);
    const QMarginsF least = own.minimumMargins();
    device.setPageMargins(QMarginsF(std::max(least.left(), margin), std::max(least.top(), margin),
                                    std::max(least.right(), margin),
                                    std::max(least.bottom(), margin)),
                          QPageLayout::Point);
    const QPageLayout layout = device.pageLayout();
    const SheetPages pages(contents, layout);
    QPainter painter;
    if (!painter.begin(&device))
        Raise(errors::DeviceError);
    const QRectF paper = layout.paintRect(QPageLayout::Point);
    for (int page = 0; page < pages.count(); ++page) {
        if (page > 0 && !device.newPage())
            Raise(errors::DeviceError);
        painter.save();
        painter.scale(device.logicalDpiX() / pointsPerInch, device.logicalDpiY() / pointsPerInch);
        if (layout.mode() == QPageLayout::StandardMode)
            painter.translate(-paper.topLeft());
        pages.paint(painter, page);
        painter.restore();
    }
    if (!painter.end())
        Raise(errors::DeviceError);
}

} // namespace kelvrane
