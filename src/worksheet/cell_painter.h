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

} // namespace kelvrane
