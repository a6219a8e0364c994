#include "worksheet/cell_measures.h"

#include "worksheet/cell_text.h"
#include "worksheet/sheet_layout.h"

#include <algorithm>
#include <cmath>

namespace kelvrane {

namespace {

/// Fonts up to this size find room in a row of the default height. Points.
constexpr double usualPointSize = 10;

/// One line in the usual size finds room in every row.
bool MayNeedHeight(const SheetContents& contents, const Cell& cell) {
    const auto* text = std::get_if<QString>(&cell.value);
    return !IsEmpty(cell.value) &&
           (cell.style.wraps || (text && text->contains(QLatin1Char('\n'))) ||
            ShownPointSize(contents, cell.style) > usualPointSize);
}

} // namespace

int TextReach(const SheetContents& contents, CellAddress at) {
    const auto found = contents.cells.constFind(at);
    if (found == contents.cells.cend() || !IsText(found->value) || found->style.wraps ||
        ShownAlign(*found) != HorizontalAlign::Left)
        return 0;
    CellFonts fonts(contents);
    const CellText text(ShownText(*found), fonts.font(found->style), -1);
    return static_cast<int>(std::ceil(text.width())) + 2 * CellPadX +
           std::clamp(found->style.indent, 0, LargestCellSide);
}

int WantedColumnWidth(const SheetContents& contents, int column) {
    CellFonts fonts(contents);
    int wanted = 0;
    for (auto it = contents.cells.cbegin(); it != contents.cells.cend(); ++it) {
        if (it.key().column != column || IsEmpty(it->value))
            continue;
        if (const CellRange span = contents.spanAt(it.key()); span.columns() > 1)
            continue;
        const CellText text(ShownText(*it), fonts.font(it->style), -1);
        wanted = std::max(wanted, static_cast<int>(std::ceil(text.width())) + 2 * CellPadX + 1 +
                                      std::clamp(it->style.indent, 0, LargestCellSide));
    }
    return wanted == 0 ? SheetContents::DefaultColumnWidth : std::min(wanted, LargestCellSide);
}

int WantedRowHeight(const SheetContents& contents, int row) {
    CellFonts fonts(contents);
    int wanted = SheetContents::DefaultRowHeight;
    for (int column = 0; column < SheetColumns; ++column) {
        const auto cell = contents.cells.constFind({row, column});
        if (cell == contents.cells.cend() || IsEmpty(cell->value))
            continue;
        const CellRange span = contents.spanAt({row, column});
        if (span.rows() > 1)
            continue;
        int width = 0;
        for (int place = span.first.column; place <= span.last.column; ++place)
            width += ShownWidth(contents, place);
        const int indent = std::clamp(cell->style.indent, 0, LargestCellSide);
        const double room = std::max(1, width - 2 * CellPadX - indent);
        const CellText text(ShownText(*cell), fonts.font(cell->style),
                            cell->style.wraps ? room : -1);
        wanted = std::max(wanted, static_cast<int>(std::ceil(text.height())) + 2 * CellPadY + 1);
    }
    return std::min(wanted, LargestCellSide);
}

int FittedRowHeight(const SheetContents& contents, int row) {
    if (contents.rowHeights.contains(row))
        return contents.rowHeight(row);
    for (int column = 0; column < SheetColumns; ++column) {
        const auto cell = contents.cells.constFind({row, column});
        if (cell != contents.cells.cend() && MayNeedHeight(contents, *cell))
            return WantedRowHeight(contents, row);
    }
    return SheetContents::DefaultRowHeight;
}

SheetContents WithFittedRows(const SheetContents& contents) {
    SheetContents fitted = contents;
    for (auto it = contents.cells.cbegin(); it != contents.cells.cend(); ++it)
        if (const int row = it.key().row;
            MayNeedHeight(contents, *it) && !fitted.rowHeights.contains(row))
            fitted.rowHeights.insert(row, WantedRowHeight(contents, row));
    return fitted;
}

} // namespace kelvrane
