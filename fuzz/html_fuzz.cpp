// The input is a page. What is read from it stays within the sheet and its bounds, and is written
// and read again without loss; what isn't read is refused as a bad argument.
#include "platform/error.h"
#include "worksheet/sheet_compare.h"
#include "worksheet/sheet_html.h"

#include <cstdlib>

using namespace kelvrane;

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

void checkBounds(const SheetContents& sheet) {
    const CellRange used = sheet.usedRange();
    require(used.last.row < SheetRows && used.last.column < SheetColumns);
    for (const Cell& cell : sheet.cells)
        require(!cell.isBare());
    for (qsizetype one = 0; one < sheet.merges.size(); ++one) {
        require(sheet.merges[one].first != sheet.merges[one].last);
        for (qsizetype other = 0; other < one; ++other)
            require(!sheet.merges[one].intersects(sheet.merges[other]));
    }
    if (!sheet.columnWidths.isEmpty())
        require(sheet.columnWidths.firstKey() >= 0 && sheet.columnWidths.lastKey() < SheetColumns);
    if (!sheet.rowHeights.isEmpty())
        require(sheet.rowHeights.firstKey() >= 0 && sheet.rowHeights.lastKey() < SheetRows);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    SheetContents sheet;
    try {
        sheet = ReadSheetHtml({reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
    } catch (const RuntimeError& error) {
        require(error.number == errors::BadArgument && !error.description.isEmpty());
        return 0;
    }
    checkBounds(sheet);
    const QString text = WriteSheetHtml(sheet);
    const SheetContents again = ReadSheetHtml(text.toUtf8());
    require(again == sheet);
    require(WriteSheetHtml(again) == text);
    require(!SavedSheetsDiffer(text + u'\n', text));
    return 0;
}
