#include "worksheet/sheet_contents.h"

#include <algorithm>

namespace kelvrane {

namespace {
void growTo(CellAddress& last, CellAddress cell) {
    last.row = std::max(last.row, cell.row);
    last.column = std::max(last.column, cell.column);
}
} // namespace

CellRange SheetContents::usedRange() const {
    CellRange used;
    for (auto cell = cells.keyBegin(); cell != cells.keyEnd(); ++cell)
        growTo(used.last, *cell);
    for (const CellRange& merge : merges)
        growTo(used.last, merge.last);
    return used;
}

std::optional<CellRange> SheetContents::filledRange() const {
    std::optional<CellRange> filled;
    for (auto cell = cells.cbegin(); cell != cells.cend(); ++cell) {
        if (IsEmpty(cell->value) && cell->formula.isEmpty())
            continue;
        if (!filled)
            filled.emplace();
        growTo(filled->last, cell.key());
    }
    return filled;
}

CellRange SheetContents::spanAt(CellAddress cell) const {
    const auto merge =
        std::ranges::find_if(merges, [&](const CellRange& range) { return range.contains(cell); });
    return merge == merges.end() ? CellRange{.first = cell, .last = cell} : *merge;
}

} // namespace kelvrane
