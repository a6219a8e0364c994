// Everything that a sheet is made of, as plain data: what a file holds, what undo goes back to. A
// copy is cheap; cells are shared until one side changes them.
#pragma once

#include "worksheet/cell_address.h"
#include "worksheet/cell_style.h"
#include "worksheet/cell_value.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace kelvrane {

struct Cell {
    CellValue value; ///< of a formula: its last result
    QString formula; ///< "=SUM(A1:A3)"; "" for a constant
    CellStyle style;
    bool operator==(const Cell&) const = default;
    /// Neither value nor formula nor style.
    bool isBare() const { return *this == Cell{}; }
};

struct SheetContents {
    static constexpr int DefaultColumnWidth = 64; ///< CSS pixels
    static constexpr int DefaultRowHeight = 20;

    QHash<CellAddress, Cell> cells; ///< none of them bare
    QList<CellRange> merges;        ///< disjoint, each of two cells or more; the first cell shows
    QMap<int, int> columnWidths;    ///< CSS pixels; absent: DefaultColumnWidth
    QMap<int, int> rowHeights;
    QString fontFamily = QStringLiteral("Arial"); ///< of cells that name none
    double pointSize = 10;
    QString title;
    bool showsGrid = false; ///< grid lines on view; never printed

    bool operator==(const SheetContents&) const = default;

    /// From A1 to the last cell with content, style or a merge; nothing: a range of A1 alone.
    CellRange usedRange() const;
    /// From A1 to the last cell with a value or a formula, or nothing.
    std::optional<CellRange> filledRange() const;
    int columnWidth(int column) const { return columnWidths.value(column, DefaultColumnWidth); }
    int rowHeight(int row) const { return rowHeights.value(row, DefaultRowHeight); }
    /// The merge that holds the cell, or the cell alone.
    CellRange spanAt(CellAddress cell) const;
};

} // namespace kelvrane
