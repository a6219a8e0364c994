// Paints cells onto any painter, a CSS pixel a unit. Texts are laid out at a multiple of their size
// without hinting, so that lines break and numbers find room alike on screen, paper and PDF.
#pragma once

#include "worksheet/sheet_contents.h"

#include <QRgb>

class QPainter;

namespace kelvrane {

/// Paints the cells of a range, the range's corner at (0, 0), a CSS pixel a unit: fills, borders,
/// text under its number format, text that runs over empty neighbours (into the range from outside
/// too), merges, "###" for numbers that have no room. A General number drops decimals first. Ink
/// as the sheet says; the paper is the caller's.
void PaintCells(QPainter& painter, const SheetContents& contents, const CellRange& range);

/// Hair lines between the cells of a range, none within merges; before PaintCells.
void PaintGuides(QPainter& painter, const SheetContents& contents, const CellRange& range,
                 QRgb color, QRgb paper);

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
