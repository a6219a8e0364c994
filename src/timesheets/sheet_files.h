// The temporary files of the spreadsheet screen, all in the program's folder, and how a sheet is
// written to one.
#pragma once

#include <QByteArray>

namespace kelvrane {

class Spreadsheet;

namespace sheet_files {
inline constexpr char ScannedTemplate[] = "ssMP_Template.htm"; ///< each database begins on it
inline constexpr char CustomerCopy[] = "tCustfile.htm";        ///< a copy that nothing reads
inline constexpr char PrintData[] = "TPrintData.htm";
} // namespace sheet_files

/// HTMLData as a file holds it: one line end behind it.
QByteArray SheetFileBytes(const Spreadsheet& sheet);

/// Removes all temporary files, the one of the comparison among them; failures are ignored.
void RemoveSheetFiles();

} // namespace kelvrane
