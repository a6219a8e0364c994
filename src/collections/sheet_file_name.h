// Names of sheets as file names, and a collection's path taken apart. What a list file, a customer
// or a user calls a sheet never leads out of the collection's folder.
#pragma once

#include <QString>

namespace kelvrane {

/// True for a plain name of a file: no separator of either kind, no ":" or control character, not
/// empty, "." or "..", and none of the names that stand for devices ("NUL", "com1.htm").
bool IsBareFileName(const QString& name);

/// The name with _ for each \ / : * ? " < > | and control character; a name that still couldn't be
/// a file's ("..", "nul.htm", blanks) gets _ too. Always bare.
QString SafeSheetName(const QString& name);

/// Splits the path of a file at the last separator, of either kind, whose folder exists. The root
/// of the file system or of a drive isn't taken for a separator; it is the folder when there is no
/// other.
void SepPathAndFilenames(const QString& path, QString& folder, QString& file);

} // namespace kelvrane
