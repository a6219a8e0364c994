// The Database Manager on 10,000 projects: opening, filling and sorting its list, and one find over
// all of them in both views.
#pragma once

#include "report.h"

#include <QDate>

#include <vector>

namespace kelvrane::bench {

class QuietPorts;

/// Registers the benchmarks; their folder goes with them. Gives their limits.
std::vector<Limit> AddProjectBenchmarks(QuietPorts& quiet, QDate present);

} // namespace kelvrane::bench
