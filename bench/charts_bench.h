// The chart screen over ten years: its data and its tree, held against one pass over the same rows,
// and what it takes to draw a chart of ten thousand projects.
#pragma once

#include "report.h"

#include <QDate>

#include <vector>

namespace kelvrane::bench {

class QuietPorts;

/// Registers the benchmarks; their folder goes with them. Gives their limits.
std::vector<Limit> AddChartBenchmarks(QuietPorts& quiet, QDate present);

} // namespace kelvrane::bench
