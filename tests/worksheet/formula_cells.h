// Cells for formulas in tests: plain values, a clock that stands, and a count of what was read.
#pragma once

#include "worksheet/formula.h"

#include <QHash>

namespace kelvrane::testing {

class FormulaTestCells final : public FormulaCells {
  public:
    CellValue value(CellAddress cell) const override {
        ++reads;
        return cells.value(cell);
    }
    CellRange usedRange() const override {
        CellRange used;
        for (auto cell = cells.begin(); cell != cells.end(); ++cell)
            used.last = {std::max(used.last.row, cell.key().row),
                         std::max(used.last.column, cell.key().column)};
        return used;
    }
    QDateTime now() const override { return {QDate(2003, 1, 5), QTime(18, 0)}; }

    void set(CellAddress cell, double number) { cells[cell] = number; }

    QHash<CellAddress, CellValue> cells;
    mutable qint64 reads = 0;
};

} // namespace kelvrane::testing
