// Formulas with their references as steps from the cell ("=R[-1]C*2"), the form in which pages
// carry them from one spreadsheet program to another.
#pragma once

#include "worksheet/cell_address.h"

#include <QString>

namespace kelvrane {

/// "=B1*2" in B2 as "=R[-1]C[0]*2"; "$B$1" as "R1C2". An empty text for a formula with references
/// to whole columns or rows, which has no such form here.
QString ToRelativeNotation(const QString& formula, CellAddress cell);

/// The formula with addresses, for the cell that it stands in. References that leave the sheet
/// become #REF!.
QString FromRelativeNotation(const QString& formula, CellAddress cell);

} // namespace kelvrane
