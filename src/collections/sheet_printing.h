// Filed sheets read as the viewer shows them, and printed one after the other.
#pragma once

#include "worksheet/sheet_contents.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace kelvrane {

/// Raises PathAccess for a link, and what the file store and ReadSheetHtml raise.
SheetContents ReadCollectionSheet(const QString& path);

/// Prints the files on the printer chosen last, each shown before it is printed. Those that can't
/// be read or printed are told in one box at the end; the others are printed.
void PrintSheets(const QStringList& paths,
                 const std::function<void(const SheetContents&)>& showSheet);

} // namespace kelvrane
