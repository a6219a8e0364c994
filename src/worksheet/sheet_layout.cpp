#include "worksheet/sheet_layout.h"

#include <algorithm>

namespace kelvrane {

namespace {

int EdgeOf(const std::vector<int>& edges, int place) {
    return edges[static_cast<size_t>(std::clamp(place, 0, static_cast<int>(edges.size()) - 1))];
}

int PlaceAt(const std::vector<int>& edges, int position) {
    // Hidden ones share their edge with what follows; the search lands behind them.
    const auto inside = std::clamp(position, 0, std::max(0, edges.back() - 1));
    const auto next = std::ranges::upper_bound(edges, inside);
    const auto place = static_cast<int>(next - edges.begin()) - 1;
    return std::clamp(place, 0, std::max(0, static_cast<int>(edges.size()) - 2));
}

} // namespace

int ShownWidth(const SheetContents& contents, int column) {
    return std::clamp(contents.columnWidth(column), 0, LargestCellSide);
}

int ShownHeight(const SheetContents& contents, int row) {
    return std::clamp(contents.rowHeight(row), 0, LargestCellSide);
}

SheetLayout::SheetLayout(const SheetContents& contents, int rows, int columns) : SheetLayout() {
    for (int column = 0; column < columns; ++column)
        m_lefts.push_back(m_lefts.back() + ShownWidth(contents, column));
    for (int row = 0; row < rows; ++row)
        m_tops.push_back(m_tops.back() + ShownHeight(contents, row));
}

int SheetLayout::left(int column) const {
    return EdgeOf(m_lefts, column);
}
int SheetLayout::top(int row) const {
    return EdgeOf(m_tops, row);
}

QRect SheetLayout::rect(const CellRange& range) const {
    const QPoint first(left(range.first.column), top(range.first.row));
    return {first.x(), first.y(), left(range.last.column + 1) - first.x(),
            top(range.last.row + 1) - first.y()};
}

int SheetLayout::columnAt(int x) const {
    return PlaceAt(m_lefts, x);
}
int SheetLayout::rowAt(int y) const {
    return PlaceAt(m_tops, y);
}

CellRange SheetLayout::rangeIn(const QRect& rect) const {
    return {cellAt(rect.topLeft()), cellAt(rect.bottomRight())};
}

} // namespace kelvrane
