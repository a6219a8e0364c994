// What the steps of a formula work on: single values, ranges of the sheet, and blocks of values
// that were computed ("A1:A3*2").
#pragma once

#include "worksheet/cell_address.h"
#include "worksheet/cell_value.h"
#include "worksheet/formula.h"

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace kelvrane::formulas {

struct Block {
    int rows = 0;
    int columns = 0;
    std::vector<CellValue> values; ///< row by row
};

using Operand = std::variant<CellValue, CellRange, std::shared_ptr<const Block>>;

/// One evaluation: where its cells come from, and how much it may still compute.
class Context {
  public:
    explicit Context(const FormulaCells& cells) : m_cells(cells) {}

    const FormulaCells& cells() const { return m_cells; }
    /// The part of a range beyond which there is nothing, or nothing at all. A small range comes
    /// back as it is: asking for the used one costs more.
    std::optional<CellRange> filledPart(const CellRange& range);
    /// Room for a block, or nothing: blocks may take a million values in one evaluation.
    std::shared_ptr<Block> newBlock(int rows, int columns);
    /// Takes room for the text of a value; false when there is none left.
    bool affordText(const CellValue& value);

  private:
    const CellRange& usedRange();

    const FormulaCells& m_cells;
    std::optional<CellRange> m_used;
    qint64 m_room = 1'000'000;
};

/// The value of a single operand; #VALUE! for several cells.
CellValue SingleValue(const Operand& operand, const Context& context);

/// An operand as rows and columns of values. Whole columns and rows end where the sheet's contents
/// do.
class Area {
  public:
    Area(const Operand& operand, Context& context);

    int rows() const { return m_rows; }
    int columns() const { return m_columns; }
    /// Empty outside of it.
    CellValue at(int row, int column) const;
    /// As at(), but a single row or column counts for all of them; #N/A outside.
    CellValue spread(int row, int column) const;
    /// Visits the values that there may be, row by row, until the visitor gives false.
    template <typename Visitor>
    void each(Visitor visitor) const {
        for (int row = m_firstRow; row < m_filledRows; ++row)
            for (int column = m_firstColumn; column < m_filledColumns; ++column)
                if (!visitor(at(row, column)))
                    return;
    }

  private:
    const FormulaCells& m_cells;
    const CellValue* m_value = nullptr;
    const Block* m_block = nullptr;
    CellAddress m_corner;
    int m_rows = 1;
    int m_columns = 1;
    int m_firstRow = 0; ///< only these are filled
    int m_firstColumn = 0;
    int m_filledRows = 1;
    int m_filledColumns = 1;
};

} // namespace kelvrane::formulas
