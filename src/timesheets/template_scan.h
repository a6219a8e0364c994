// The passes over the cells of a template: finding the anchors, and filling in variables that stand
// within a cell's text. A cell with "=" in its formula or text keeps its variables as typed.
#pragma once

#include "timesheets/template_variables.h"

namespace kelvrane {

class Spreadsheet;

/// Goes through A1 to P50, column by column: expands the date variables, notes in SSVariables where
/// each anchor stands (the last one counts) and blanks its cell. Of several anchors in a cell only
/// the first of the table is seen. ResetSSVariables comes before.
void ScanTemplate(Spreadsheet& ss1, const SheetPeriod& period);

/// Expands the customer variables of A1 to K50.
void FillCustomerVariables(Spreadsheet& ss1, const CustomerSheetFields& fields);

} // namespace kelvrane
