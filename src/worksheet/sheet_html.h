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

/// Lines end in "\n"; the last line is "</html>" without one. Values of formulas are the cells'
/// last results; the visible text is under the cell's number format.
QString WriteSheetHtml(const SheetContents& contents);

inline constexpr qsizetype LargestSheetFile = 16 * 1024 * 1024; ///< bytes

/// Reads a file's bytes: UTF-8, UTF-16 with a mark, else what the page declares, else Windows-1252.
/// Never runs a script or touches the network. Cells beyond the sheet's ends are left out. A file
/// that is too large, or holds no table, raises BadArgument with a sentence for the user; formulas
/// come with the values they were saved with.
SheetContents ReadSheetHtml(const QByteArray& bytes);

} // namespace kelvrane
