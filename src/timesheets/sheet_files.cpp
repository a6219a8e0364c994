#include "timesheets/sheet_files.h"

#include "platform/texts.h"
#include "worksheet/spreadsheet.h"

namespace kelvrane {

QByteArray SheetFileBytes(const Spreadsheet& sheet) {
    return ToFileBytes(sheet.HTMLData() + QLatin1Char('\n'));
}

} // namespace kelvrane
