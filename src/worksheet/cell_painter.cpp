#include "worksheet/cell_painter.h"

#include "worksheet/cell_text.h"
#include "worksheet/number_format.h"
#include "worksheet/sheet_layout.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace kelvrane {

namespace {

/// How far beside the range a text may begin that runs back into it.
constexpr int columnsBeside = 64;
constexpr QRgb blackInk = 0xff000000;

enum class Side { Left, Top, Right, Bottom };

const CellBorder& BorderOf(const CellStyle& style, Side side) {
    const std::array<const CellBorder*, 4> borders{&style.left, &style.top, &style.right,
                                                   &style.bottom};
    return *borders[static_cast<size_t>(side)];
}

/// The heavier of two borders that share an edge; the second where they are alike.
const CellBorder& Stronger(const CellBorder& one, const CellBorder& other) {
    const auto weight = [](const CellBorder& border) {
        constexpr int order[] = {0, 3, 2, 1, 4}; // None, Solid, Dashed, Dotted, Double
        return border.line == CellBorder::Line::None
                   ? 0
                   : border.width * 8 + order[static_cast<int>(border.line)];
    };
    return weight(one) > weight(other) ? one : other;
}

int BorderWidth(const CellBorder& border) {
    if (border.line == CellBorder::Line::None)
        return 0;
    return std::clamp(border.width, border.line == CellBorder::Line::Double ? 3 : 1, 9);
}

/// Fills whole pixels of the device, one at least: no seams between fills, no line that vanishes.
class PixelFiller {
  public:
    explicit PixelFiller(QPainter& painter)
        : m_painter(painter), m_toDevice(painter.deviceTransform()),
          m_snaps(m_toDevice.type() <= QTransform::TxScale && m_toDevice.isInvertible()),
          m_fromDevice(m_toDevice.inverted()) {}

    void fill(const QRectF& rect, QRgb color) {
        m_painter.fillRect(m_snaps ? m_fromDevice.mapRect(snapped(m_toDevice.mapRect(rect))) : rect,
                           QColor::fromRgb(color));
    }

  private:
    static QRectF snapped(const QRectF& rect) {
        const double left = std::round(rect.left());
        const double top = std::round(rect.top());
        return {left, top, std::max(1.0, std::round(rect.right()) - left),
                std::max(1.0, std::round(rect.bottom()) - top)};
    }

    QPainter& m_painter;
    QTransform m_toDevice;
    bool m_snaps;
    QTransform m_fromDevice;
};

/// Cells, spans and edges of a range, seen from its corner.
class Scene {
  public:
    Scene(const SheetContents& contents, const CellRange& range);

    const CellRange& range() const { return m_range; }
    const SheetContents& contents() const { return m_contents; }
    int lastTextColumn() const { return m_lastColumn; }

    const Cell* cell(CellAddress at) const {
        const auto found = m_contents.cells.constFind(at);
        return found == m_contents.cells.cend() ? nullptr : &*found;
    }
    /// The merge that holds the cell; nullptr for none.
    const CellRange* mergeAt(CellAddress at) const { return m_covered.value(at, nullptr); }
    CellRange spanOf(CellAddress at) const {
        const CellRange* merge = mergeAt(at);
        return merge ? *merge : CellRange{at, at};
    }
    QRectF rect(const CellRange& span) const {
        const double left = columnEdge(span.first.column);
        const double top = rowEdge(span.first.row);
        return {left, top, columnEdge(span.last.column + 1) - left,
                rowEdge(span.last.row + 1) - top};
    }
    /// True where the text of a neighbour ends.
    bool stopsText(CellAddress at) const {
        if (at.column < 0 || at.column >= SheetColumns || mergeAt(at))
            return true;
        const Cell* here = cell(at);
        return here && !IsEmpty(here->value);
    }

  private:
    double columnEdge(int column) const {
        return m_layout.left(column) - m_layout.left(m_range.first.column);
    }
    double rowEdge(int row) const { return m_layout.top(row) - m_layout.top(m_range.first.row); }
    int lastRow() const;

    const SheetContents& m_contents;
    CellRange m_range;
    int m_lastColumn;
    SheetLayout m_layout;
    QHash<CellAddress, const CellRange*> m_covered;
};

/// The rows that are laid out reach as far as the merges that begin in the range.
int Scene::lastRow() const {
    int last = m_range.last.row;
    for (const CellRange& merge : m_contents.merges)
        if (merge.intersects(m_range))
            last = std::max(last, merge.last.row);
    return std::min(last, SheetRows - 1);
}

Scene::Scene(const SheetContents& contents, const CellRange& range)
    : m_contents(contents), m_range(range),
      m_lastColumn(std::min(range.last.column + columnsBeside, SheetColumns - 1)),
      m_layout(contents, lastRow() + 1, SheetColumns) {
    const CellRange near{{range.first.row, 0}, {range.last.row, m_lastColumn}};
    for (const CellRange& merge : contents.merges) {
        if (!merge.intersects(near))
            continue;
        const int lastRow = std::min(merge.last.row, near.last.row);
        const int lastColumn = std::min(merge.last.column, near.last.column);
        for (int row = std::max(merge.first.row, near.first.row); row <= lastRow; ++row)
            for (int column = merge.first.column; column <= lastColumn; ++column)
                m_covered.insert({row, column}, &merge);
    }
}

template <typename Visit>
void ForEachCell(const CellRange& range, Visit&& visit) {
    for (int row = range.first.row; row <= range.last.row; ++row)
        for (int column = range.first.column; column <= range.last.column; ++column)
            visit(CellAddress{row, column});
}

class CellPainter {
  public:
    CellPainter(QPainter& painter, const Scene& scene)
        : m_painter(painter), m_scene(scene), m_filler(painter), m_fonts(scene.contents()) {}

    void paintFills();
    void paintTexts();
    void paintBorders();

  private:
    struct Run { ///< a text and where it may be seen
        QRectF box;
        QRectF seen;
        double textLeft;
        double room;
        HorizontalAlign align;
    };
    void paintText(const CellRange& span, const Cell& cell);
    Run runOf(const CellRange& span, const Cell& cell) const;
    void widen(Run& run, CellAddress at, double textWidth) const;
    void drawRun(const Run& run, CellText& text, const Cell& cell);
    QColor inkOf(const Cell& cell) const;
    CellBorder borderAt(CellAddress at, Side side) const;
    void paintEdge(CellAddress at, Side side, CellAddress beyond, Side facing);
    void paintBorder(const CellBorder& border, const QRectF& edge, bool vertical);

    QPainter& m_painter;
    const Scene& m_scene;
    PixelFiller m_filler;
    CellFonts m_fonts;
};

void CellPainter::paintFills() {
    QSet<CellAddress> painted;
    ForEachCell(m_scene.range(), [&](CellAddress at) {
        const CellRange span = m_scene.spanOf(at);
        const Cell* cell = m_scene.cell(span.first);
        if (!cell || cell->style.fill == CellStyle::NoColor)
            return;
        if (span.first != span.last) {
            if (painted.contains(span.first))
                return;
            painted.insert(span.first);
        }
        if (const QRectF box = m_scene.rect(span); !box.isEmpty())
            m_filler.fill(box, cell->style.fill);
    });
}

void CellPainter::paintTexts() {
    const CellRange& range = m_scene.range();
    // Merges whose first cell lies above the range still show their text in it.
    QSet<CellAddress> painted;
    for (int row = range.first.row; row <= range.last.row; ++row)
        for (int column = 0; column <= m_scene.lastTextColumn(); ++column) {
            const CellRange* merge = m_scene.mergeAt({row, column});
            const CellAddress at = merge ? merge->first : CellAddress{row, column};
            const Cell* cell = m_scene.cell(at);
            if (!cell || IsEmpty(cell->value))
                continue;
            if (merge) {
                if (painted.contains(at) || !merge->intersects(range))
                    continue;
                painted.insert(at);
            }
            paintText(merge ? *merge : CellRange{at, at}, *cell);
        }
}

CellPainter::Run CellPainter::runOf(const CellRange& span, const Cell& cell) const {
    Run run;
    run.box = m_scene.rect(span);
    run.seen = run.box;
    run.align = ShownAlign(cell);
    const int indent = std::clamp(cell.style.indent, 0, LargestCellSide);
    const bool fromRight = run.align == HorizontalAlign::Right;
    run.textLeft = run.box.left() + CellPadX + (fromRight ? 0 : indent);
    run.room = run.box.width() - 2 * CellPadX - indent;
    return run;
}

/// The text runs over empty neighbours, as far as it needs to.
void CellPainter::widen(Run& run, CellAddress at, double textWidth) const {
    const double spare = textWidth - run.room;
    const double toRight = run.align == HorizontalAlign::Left     ? spare
                           : run.align == HorizontalAlign::Center ? spare / 2
                                                                  : 0;
    const double toLeft = spare - toRight;
    const double wantedRight = run.box.right() + toRight;
    const double wantedLeft = run.box.left() - toLeft;
    for (int column = at.column + 1;
         run.seen.right() < wantedRight && !m_scene.stopsText({at.row, column}); ++column)
        run.seen.setRight(m_scene.rect({{at.row, column}, {at.row, column}}).right());
    for (int column = at.column - 1;
         run.seen.left() > wantedLeft && !m_scene.stopsText({at.row, column}); --column)
        run.seen.setLeft(m_scene.rect({{at.row, column}, {at.row, column}}).left());
}

void CellPainter::paintText(const CellRange& span, const Cell& cell) {
    Run run = runOf(span, cell);
    if (run.box.isEmpty())
        return;
    const QFont& font = m_fonts.font(cell.style);
    const QString shown = ShownText(cell);
    const bool isNumber = IsNumber(cell.value) && !IsTextFormat(cell.style.numberFormat);
    const bool wraps = cell.style.wraps && !isNumber;
    CellText text(shown, font, wraps ? std::max(run.room, 1.0) : -1);
    if (text.width() > run.room && !wraps) {
        if (isNumber) {
            CellText fitted(TextInRoom(cell, font, run.room), font, -1);
            drawRun(run, fitted, cell);
            return;
        }
        if (span.first == span.last)
            widen(run, span.first, text.width());
    }
    drawRun(run, text, cell);
}

void CellPainter::drawRun(const Run& run, CellText& text, const Cell& cell) {
    const VerticalAlign vertical = cell.style.vertical;
    const double spare = run.box.height() - text.height() - 2 * CellPadY;
    const double share = vertical == VerticalAlign::Bottom   ? 1
                         : vertical == VerticalAlign::Middle ? 0.5
                                                             : 0;
    // Text that is too high keeps its first line on view.
    const double down = spare < 0 && text.height() > run.box.height() ? 0 : spare * share;
    const double top = std::round(run.box.top() + CellPadY + down);
    const bool cut = text.width() > run.seen.width() || text.width() > run.room ||
                     text.height() > run.box.height();
    if (cut) {
        m_painter.save();
        m_painter.setClipRect(run.seen, Qt::IntersectClip);
    }
    m_painter.setPen(inkOf(cell));
    text.draw(m_painter, run.textLeft, top, run.room, run.align);
    if (cut)
        m_painter.restore();
}

QColor CellPainter::inkOf(const Cell& cell) const {
    const QString asked = FormatColorName(cell.value, cell.style.numberFormat);
    if (const QColor color(asked); !asked.isEmpty() && color.isValid())
        return color;
    return QColor::fromRgb(cell.style.ink == CellStyle::NoColor ? blackInk : cell.style.ink);
}

/// Merged cells have their borders around the whole: the first cell's, else what a cell at the rim
/// brings.
CellBorder CellPainter::borderAt(CellAddress at, Side side) const {
    if (at.row < 0 || at.column < 0)
        return {};
    const CellRange span = m_scene.spanOf(at);
    const std::array<bool, 4> atRim{at.column == span.first.column, at.row == span.first.row,
                                    at.column == span.last.column, at.row == span.last.row};
    if (!atRim[static_cast<size_t>(side)])
        return {};
    for (const CellAddress from : {span.first, at})
        if (const Cell* cell = m_scene.cell(from))
            if (const CellBorder& border = BorderOf(cell->style, side);
                border.line != CellBorder::Line::None)
                return border;
    return {};
}

void CellPainter::paintEdge(CellAddress at, Side side, CellAddress beyond, Side facing) {
    const CellBorder own = borderAt(at, side);
    const CellBorder other = borderAt(beyond, facing);
    const CellBorder& border = Stronger(other, own);
    const int width = BorderWidth(border);
    if (width == 0)
        return;
    const QRectF box = m_scene.rect({at, at});
    if (box.isEmpty())
        return;
    const bool vertical = side == Side::Left || side == Side::Right;
    const double edge = side == Side::Left    ? box.left()
                        : side == Side::Right ? box.right()
                        : side == Side::Top   ? box.top()
                                              : box.bottom();
    // A line lies on the last pixels before its edge, the sheet's own left and top edges aside.
    const bool isRim =
        vertical ? side == Side::Left && at.column == 0 : side == Side::Top && at.row == 0;
    const double start = isRim ? edge : edge - 1 - (width - 1) / 2;
    paintBorder(border,
                vertical ? QRectF(start, box.top(), width, box.height())
                         : QRectF(box.left(), start, box.width(), width),
                vertical);
}

void CellPainter::paintBorder(const CellBorder& border, const QRectF& edge, bool vertical) {
    if (border.line == CellBorder::Line::Double) {
        const double thickness = std::floor((vertical ? edge.width() : edge.height()) / 3);
        QRectF first = edge;
        QRectF second = edge;
        if (vertical) {
            first.setWidth(thickness);
            second.setLeft(edge.right() - thickness);
        } else {
            first.setHeight(thickness);
            second.setTop(edge.bottom() - thickness);
        }
        m_filler.fill(first, border.color);
        m_filler.fill(second, border.color);
        return;
    }
    if (border.line == CellBorder::Line::Solid) {
        m_filler.fill(edge, border.color);
        return;
    }
    const double width = vertical ? edge.width() : edge.height();
    const double dash = width * (border.line == CellBorder::Line::Dashed ? 3 : 1);
    const double step = dash + width * (border.line == CellBorder::Line::Dashed ? 2 : 1);
    const double length = vertical ? edge.height() : edge.width();
    for (double at = 0; at < length; at += step) {
        const double piece = std::min(dash, length - at);
        m_filler.fill(vertical ? QRectF(edge.left(), edge.top() + at, width, piece)
                               : QRectF(edge.left() + at, edge.top(), piece, width),
                      border.color);
    }
}

void CellPainter::paintBorders() {
    const CellRange& range = m_scene.range();
    ForEachCell(range, [&](CellAddress at) {
        paintEdge(at, Side::Right, {at.row, at.column + 1}, Side::Left);
        paintEdge(at, Side::Bottom, {at.row + 1, at.column}, Side::Top);
        if (at.column == range.first.column)
            paintEdge(at, Side::Left, {at.row, at.column - 1}, Side::Right);
        if (at.row == range.first.row)
            paintEdge(at, Side::Top, {at.row - 1, at.column}, Side::Bottom);
    });
}

} // namespace

void PaintCells(QPainter& painter, const SheetContents& contents, const CellRange& range) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const Scene scene(contents, range);
    CellPainter cells(painter, scene);
    cells.paintFills();
    cells.paintTexts();
    cells.paintBorders();
    painter.restore();
}

void PaintGuides(QPainter& painter, const SheetContents& contents, const CellRange& range,
                 QRgb color, QRgb paper) {
    const Scene scene(contents, range);
    PixelFiller filler(painter);
    const QRectF whole = scene.rect(range);
    for (int row = range.first.row; row <= range.last.row; ++row)
        filler.fill({0, scene.rect({{row, 0}, {row, 0}}).bottom() - 1, whole.width(), 1}, color);
    for (int column = range.first.column; column <= range.last.column; ++column) {
        const double right =
            scene.rect({{range.first.row, column}, {range.first.row, column}}).right();
        filler.fill({right - 1, 0, 1, whole.height()}, color);
    }
    for (const CellRange& merge : contents.merges)
        if (merge.intersects(range))
            if (const QRectF box = scene.rect(merge).adjusted(0, 0, -1, -1); !box.isEmpty())
                filler.fill(box, paper);
}

} // namespace kelvrane
