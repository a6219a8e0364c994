#include "worksheet/table_grid.h"

#include <algorithm>

namespace kelvrane {

std::optional<CellRange> TableGrid::place(int columns, int rows) {
    if (m_row < 0)
        beginRow();
    const auto isFree = [this](int column) { return m_freeFrom[column] <= m_row; };
    while (m_column < SheetColumns && !isFree(m_column))
        ++m_column;
    if (m_column >= SheetColumns || !isWithinSheet())
        return std::nullopt;
    const int first = m_column;
    const int end = std::min(columns, SheetColumns - first) + first;
    const int lastRow = m_row + std::clamp(rows, 1, SheetRows - m_row) - 1;
    do
        m_freeFrom[m_column++] = lastRow + 1;
    while (m_column < end && isFree(m_column));
    return CellRange{.first = {m_row, first}, .last = {lastRow, m_column - 1}};
}

} // namespace kelvrane
