#include "timesheets/template_scan.h"

#include "worksheet/spreadsheet.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int anchorColumns = 16;   ///< A to P
constexpr int customerColumns = 11; ///< A to K
constexpr int rows = 50;

/// Calls visit(cell, column, row) column by column; column 0-based, row 1-based.
template <typename Visit>
void forEachCell(Spreadsheet& ss1, int columns, Visit&& visit) {
    for (int column = 0; column < columns; ++column)
        for (int row = 1; row <= rows; ++row)
            visit(ss1.Range(CellName(column, row)), column, row);
}

bool isFormula(const SheetRange& cell) {
    return cell.Formula().contains(u'=');
}

/// The first in table order whose name the text holds; null when it holds none.
SSVariable* anchorIn(const QString& text) {
    if (!text.contains(u'#'))
        return nullptr;
    const auto found = std::ranges::find_if(SSVariables, [&](const SSVariable& variable) {
        return !variable.Name.isEmpty() && text.contains(variable.Name);
    });
    return found == SSVariables.end() ? nullptr : &*found;
}

} // namespace

void ScanTemplate(Spreadsheet& ss1, const SheetPeriod& period) {
    forEachCell(ss1, anchorColumns, [&](const SheetRange& cell, int column, int row) {
        const QString value = cell.Value();
        if (!isFormula(cell))
            cell.setValue(ExpandDateVariables(value, period));
        if (SSVariable* variable = anchorIn(value)) {
            variable->Row = row;
            variable->Col = column;
            cell.setValue(QString());
        }
    });
}

void FillCustomerVariables(Spreadsheet& ss1, const CustomerSheetFields& fields) {
    forEachCell(ss1, customerColumns, [&](const SheetRange& cell, int, int) {
        if (!isFormula(cell))
            cell.setValue(ExpandCustomerVariables(cell.Value(), fields));
    });
}

} // namespace kelvrane
