// Has a sheet been changed since it was saved? The style classes are numbered anew at each save, so
// two texts of the same sheet may differ; what renumbering touches is left out of the comparison.
#pragma once

#include <QString>

namespace kelvrane {

/// Compares two sheets as files hold them, with either line end. Style rules (lines of the head
/// that begin with ".") don't count, nor does a cell's class= up to the next blank, nor do lines
/// after the end of the shorter text. Raises EndOfFile for a text that ends before its "</head>" or
/// its line "</xml>".
bool SavedSheetsDiffer(const QString& saved, const QString& current);

} // namespace kelvrane
