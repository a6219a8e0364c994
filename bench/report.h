// Turns the runs of the benchmarks into one table: each figure, the floor measured in the same run,
// their ratio, and whether it keeps its limit.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace kelvrane::bench {

/// One measured thing. Its runs are named "<name>/<rows>", its floor's "<name> floor/<rows>".
struct Limit {
    const char* name;
    double ratio;        ///< at most so many times the floor; 0: no floor
    double milliseconds; ///< at most so long; 0: no such limit
    bool mayGrow;        ///< its time may follow the length of the history
};

/// From the shortest to the longest history.
inline constexpr double largestGrowth = 1.5;

class TableReporter final : public benchmark::BenchmarkReporter {
  public:
    explicit TableReporter(std::vector<Limit> limits) : m_limits(std::move(limits)) {}
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    /// Prints the table.
    void Finalize() override;
    bool allKept() const { return m_over == 0; }

  private:
    double median(const std::string& name) const; ///< seconds; 0 when it wasn't measured
    void printRow(const Limit& limit, long rows);
    void printGrowth(const Limit& limit, long shortest, long longest);
    const char* verdict(bool kept);

    std::vector<Limit> m_limits;
    std::map<std::string, std::vector<double>> m_seconds;
    int m_over = 0;
};

} // namespace kelvrane::bench
