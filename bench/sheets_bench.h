// Timesheets and invoices: a weekly sheet of 25 projects, a year's invoices of 40 customers, the
// recalculation of 1,000 formulas, and a collection of 500 sheets.
#pragma once

#include "report.h"

#include <QDate>

#include <vector>

namespace kelvrane::bench {

class QuietPorts;

/// Registers the benchmarks; their folder goes with them. Gives their limits.
std::vector<Limit> AddSheetBenchmarks(QuietPorts& quiet, QDate present);

} // namespace kelvrane::bench
