// Invoices: one sheet for each customer worked for in the period, a line for each project and day
// with rate and amount. The rows are dealt out into one temporary file for each customer; then the
// template is loaded anew for each and filled from that file.
#pragma once

#include <QDate>
#include <QString>

namespace kelvrane {

struct SheetContext;

/// Deals the rows of all accepted databases out, then builds and files the sheets. Nothing in the
/// period sets noData. Errors are told; a database that can't be opened ends the calculation.
void SetUpByCustomerCalculations(SheetContext& context, QDate endDate, const QString& increment);

/// The second half, for CustomerIDs. Raises what goes wrong; the sheets filed before stay.
void BuildCustomerSheets(SheetContext& context, const QString& increment);

} // namespace kelvrane
