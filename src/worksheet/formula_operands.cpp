#include "worksheet/formula_operands.h"

#include <algorithm>

namespace kelvrane::formulas {

namespace {

constexpr qint64 smallRange = 256; ///< cells

qint64 cellsOf(const CellRange& range) {
    return qint64(range.rows()) * range.columns();
}

} // namespace

const CellRange& Context::usedRange() {
    if (!m_used)
        m_used = m_cells.usedRange();
    return *m_used;
}

std::optional<CellRange> Context::filledPart(const CellRange& range) {
    if (cellsOf(range) <= smallRange)
        return range;
    const CellRange& used = usedRange();
    if (!range.intersects(used))
        return {};
    return CellRange{
        {std::max(range.first.row, used.first.row),
         std::max(range.first.column, used.first.column)},
        {std::min(range.last.row, used.last.row), std::min(range.last.column, used.last.column)}};
}

std::shared_ptr<Block> Context::newBlock(int rows, int columns) {
    const qint64 count = qint64(rows) * columns;
    if (count > m_room)
        return {};
    m_room -= count;
    auto block = std::make_shared<Block>();
    block->rows = rows;
    block->columns = columns;
    block->values.reserve(static_cast<size_t>(count));
    return block;
}

bool Context::affordText(const CellValue& value) {
    constexpr qsizetype charactersPerValue = 16;
    if (const auto* text = std::get_if<QString>(&value))
        m_room -= text->size() / charactersPerValue;
    return m_room >= 0;
}

CellValue SingleValue(const Operand& operand, const Context& context) {
    if (const auto* value = std::get_if<CellValue>(&operand))
        return *value;
    if (const auto* range = std::get_if<CellRange>(&operand))
        return range->first == range->last ? context.cells().value(range->first)
                                           : CellValue(CellError::Value);
    const Block& block = *std::get<std::shared_ptr<const Block>>(operand);
    return block.values.size() == 1 ? block.values.front() : CellValue(CellError::Value);
}

Area::Area(const Operand& operand, Context& context) : m_cells(context.cells()) {
    if (const auto* value = std::get_if<CellValue>(&operand)) {
        m_value = value;
    } else if (const auto* block = std::get_if<std::shared_ptr<const Block>>(&operand)) {
        m_block = block->get();
        m_rows = m_filledRows = m_block->rows;
        m_columns = m_filledColumns = m_block->columns;
    } else {
        const CellRange& range = std::get<CellRange>(operand);
        m_corner = range.first;
        m_rows = range.rows();
        m_columns = range.columns();
        const std::optional<CellRange> filled = context.filledPart(range);
        m_firstRow = filled ? filled->first.row - m_corner.row : 0;
        m_firstColumn = filled ? filled->first.column - m_corner.column : 0;
        m_filledRows = filled ? filled->last.row - m_corner.row + 1 : 0;
        m_filledColumns = filled ? filled->last.column - m_corner.column + 1 : 0;
        if (m_rows == SheetRows)
            m_rows = std::max(m_filledRows, 1);
        if (m_columns == SheetColumns)
            m_columns = std::max(m_filledColumns, 1);
    }
}

CellValue Area::at(int row, int column) const {
    if (m_value)
        return *m_value;
    if (m_block)
        return m_block->values[static_cast<size_t>(row) * static_cast<size_t>(m_columns) +
                               static_cast<size_t>(column)];
    return m_cells.value({m_corner.row + row, m_corner.column + column});
}

CellValue Area::spread(int row, int column) const {
    const int from = m_rows == 1 ? 0 : row;
    const int fromColumn = m_columns == 1 ? 0 : column;
    if (from >= m_rows || fromColumn >= m_columns)
        return CellError::NotAvailable;
    return at(from, fromColumn);
}

} // namespace kelvrane::formulas
