// Where rows and columns lie: edges in CSS pixels from the corner of A1, and what is at a point.
//
//     const SheetLayout layout(contents, 50, 26);
//     QRect box = layout.rect(range);
//     int column = layout.columnAt(x);
#pragma once

#include "worksheet/sheet_contents.h"

#include <QRect>

#include <vector>

namespace kelvrane {

/// Rows and columns are never larger than this, whatever a file says. CSS pixels.
inline constexpr int LargestCellSide = 4096;

/// Width and height as they are laid out.
int ShownWidth(const SheetContents& contents, int column);
int ShownHeight(const SheetContents& contents, int row);

class SheetLayout {
  public:
    SheetLayout() : m_lefts{0}, m_tops{0} {}
    SheetLayout(const SheetContents& contents, int rows, int columns);

    int rows() const { return static_cast<int>(m_tops.size()) - 1; }
    int columns() const { return static_cast<int>(m_lefts.size()) - 1; }
    QSize size() const { return {m_lefts.back(), m_tops.back()}; }

    /// Edges; a place past the end has the far edge of the last.
    int left(int column) const;
    int top(int row) const;
    QRect rect(const CellRange& range) const;

    /// What lies there, the nearest one outside. Hidden rows and columns are never hit.
    int columnAt(int x) const;
    int rowAt(int y) const;
    CellAddress cellAt(QPoint point) const { return {rowAt(point.y()), columnAt(point.x())}; }
    /// The cells that a rectangle touches.
    CellRange rangeIn(const QRect& rect) const;

  private:
    std::vector<int> m_lefts;
    std::vector<int> m_tops;
};

} // namespace kelvrane
