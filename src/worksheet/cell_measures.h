// How much room the texts of cells need, by the fonts in which they are painted.
#pragma once

#include "worksheet/sheet_contents.h"

namespace kelvrane {

/// How far the text of a cell reaches, blanks aside: from its column's left edge to the right end,
/// CSS pixels. 0 for empty cells, and for wrapped ones, which stay in their column.
int TextReach(const SheetContents& contents, CellAddress cell);

/// Sizes at which all that stands in a row or column is seen, merged cells aside; the default size
/// where nothing stands. CSS pixels.
int WantedColumnWidth(const SheetContents& contents, int column);
int WantedRowHeight(const SheetContents& contents, int row);

/// The height at which a row is laid out: its own, else the default, or more where its texts need
/// it. CSS pixels.
int FittedRowHeight(const SheetContents& contents, int row);
/// The sheet with those heights: what screens and pages show, so that no line of a text is cut.
SheetContents WithFittedRows(const SheetContents& contents);

} // namespace kelvrane
