// Cells on their way through the clipboard: as text with tabs and as HTML for every program, and
// with their formulas between sheets of this one.
//
//     SheetClip clip = CopyCells(sheet.worksheet(), selected);
//     CellRange filled = PasteCells(sheet, selected, clip);
#pragma once

#include "worksheet/spreadsheet.h"

#include <QByteArray>

namespace kelvrane {

struct SheetClip {
    /// Type of the cells' own form: the range's name on a line ("B2:C3", "B2:C3 cut"), then a sheet
    /// whose A1 is its first cell, with formulas as they stood.
    static constexpr const char* CellsType = "application/x-kelvrane-cells";

    QString text; ///< rows end in "\n", cells are parted by tabs; quoted where a text holds either
    QByteArray html;  ///< values under their formats, no formulas: their cells stay behind
    QByteArray cells; ///< see CellsType
    bool isEmpty() const { return text.isEmpty() && html.isEmpty() && cells.isEmpty(); }
};

SheetClip CopyCells(const Worksheet& sheet, const CellRange& range);
/// As CopyCells, then bares the cells in one step of undo.
SheetClip CutCells(Spreadsheet& sheet, const CellRange& range);

/// Pastes the best form that the clip has, over the selection: again and again where the selection
/// is a multiple of what comes, or a single row or column, else once from its first cell. Formulas
/// of copied cells move with their place; those of cut cells keep what they read, but for cells
/// that were cut with them. What would lie outside the sheet is left out. Returns what was filled.
/// Raises BadArgument, with a sentence for the user, for a clip that can't be read; the sheet is
/// then as it was.
CellRange PasteCells(Spreadsheet& sheet, const CellRange& selection, const SheetClip& clip);

/// Rows of a text with tabs; "\r\n" and quoted cells understood, a last line feed without a row.
QList<QStringList> TableOfText(const QString& text);

} // namespace kelvrane
