// Where the cells of an HTML table stand on the sheet: each takes the next free place of its row
// and spans columns and rows, in part into rows that are still to come.
//
//     TableGrid grid;
//     grid.beginRow();
//     auto place = grid.place(2, 1); // A1:B1
#pragma once

#include "worksheet/cell_address.h"

#include <array>
#include <optional>

namespace kelvrane {

class TableGrid {
  public:
    /// The first row begins by itself when a cell comes before it.
    void beginRow() { ++m_row, m_column = 0; }
    int row() const { return m_row; } ///< -1 before the first
    bool isWithinSheet() const { return m_row < SheetRows; }

    /// The range of the next cell, disjoint from all before, cut at the sheet's ends and where a
    /// cell from a row above stands in its way; nothing outside the sheet. Spans below 1 count
    /// as 1.
    std::optional<CellRange> place(int columns, int rows);

  private:
    int m_row = -1;
    int m_column = 0;
    std::array<int, SheetColumns> m_freeFrom = {}; ///< the row from which a column is free again
};

} // namespace kelvrane
