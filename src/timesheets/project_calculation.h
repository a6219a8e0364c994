// The timesheet: a row a project worked on in the period, a column a day, hours in the cells, row
// and column totals as formulas. It begins on the sheet that was scanned for its anchors.
#pragma once

#include <QDate>
#include <QString>

namespace kelvrane {

struct SheetContext;

/// Fills the sheet from each accepted database, beginning anew on the scanned template for each;
/// with more than one accepted, files it after each project (so the name is in the collection from
/// the second project on; that is wanted). Increment as RoundToIncrement takes it. Errors are told;
/// a database that can't be opened ends the calculation.
void SetUpByProjectCalculations(SheetContext& context, QDate endDate, const QString& increment);

/// "=SUM(C5:I5)" into each row of the grid, seven columns right of the totals' row anchor; a row
/// without hours stays blank. Nothing without that anchor.
void WriteRowTotals(SheetContext& context);
/// "=SUM(C5:C11)" under each day column. Nothing without the anchor of the totals' column.
void WriteColumnTotals(SheetContext& context);

} // namespace kelvrane
