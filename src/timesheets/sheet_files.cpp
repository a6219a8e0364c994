#include "timesheets/sheet_files.h"

#include "collections/collection_file.h"
#include "collections/sheet_check.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "worksheet/spreadsheet.h"

namespace kelvrane {

QByteArray SheetFileBytes(const Spreadsheet& sheet) {
    return SheetBytes(sheet.HTMLData());
}

void RemoveSheetFiles() {
    SkipErrors step(QStringLiteral("frmSpreadsheet_Unload"));
    for (const char* name : {sheet_files::ScannedTemplate, SheetCheckFile, sheet_files::PrintData,
                             sheet_files::CustomerCopy})
        step([&] { ports.files->remove(InAppPath(QString::fromLatin1(name)), true); });
}

} // namespace kelvrane
