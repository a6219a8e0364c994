// A sheet as HTML: the program's own files without loss, and what other spreadsheet programs save.
//
// The writer's line structure is fixed, since the comparison of saved sheets reads it: "<head>" and
// "</head>" alone on their lines, style rules on lines that begin with ".", a line that begins with
// "</xml>", then the cells, each with its class=. The same contents give the same text on every
// machine, whatever fonts it has.
#pragma once

#include "worksheet/sheet_contents.h"

#include <QByteArray>
#include <QString>

namespace kelvrane {

inline constexpr qsizetype LargestSheetFile = 16 * 1024 * 1024; ///< bytes
inline constexpr qsizetype MostSheetCells = 250'000; ///< with content or style, of a file

/// Lines end in "\n"; the last line is "</html>" without one. Values of formulas are the cells'
/// last results; the visible text is under the cell's number format. What couldn't be read again
/// since it is too large raises BadArgument.
QString WriteSheetHtml(const SheetContents& contents);

/// Reads a file's bytes: UTF-8, UTF-16 with a mark, else what the page declares, else Windows-1252.
/// Never runs a script or touches the network. Formulas come with the values they were saved with.
/// Cells beyond the sheet's ends are left out. A file that is too large, holds too many cells,
/// nests too deeply or holds no table raises BadArgument with a sentence for the user.
///
/// Of a page with several tables the first that holds a value is taken. A table within a cell is
/// part of the cell's text, unless nothing stood before it: then the outer one was only layout, and
/// the inner one is taken. Cells that say nothing of their type are read as if they were typed.
SheetContents ReadSheetHtml(const QByteArray& bytes);

} // namespace kelvrane
