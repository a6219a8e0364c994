#include "report.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

namespace kelvrane::bench {

namespace {

std::string withoutSuffix(const std::string& name) {
    // "save/12500/repeats:9/real_time": name and rows are the first two parts.
    const size_t rows = name.find('/');
    return rows == std::string::npos ? name : name.substr(0, name.find('/', rows + 1));
}

std::string timeText(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, seconds < 1 ? "%.3f ms" : "%.0f ms", seconds * 1000);
    return text;
}

} // namespace

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.iterations == 0)
            continue;
        m_seconds[withoutSuffix(run.benchmark_name())].push_back(
            run.real_accumulated_time / static_cast<double>(run.iterations));
    }
}

double TableReporter::median(const std::string& name) const {
    const auto found = m_seconds.find(name);
    if (found == m_seconds.end())
        return 0;
    std::vector<double> sorted = found->second;
    std::ranges::sort(sorted);
    return sorted[sorted.size() / 2];
}

const char* TableReporter::verdict(bool kept) {
    m_over += kept ? 0 : 1;
    return kept ? "ok" : "OVER";
}

void TableReporter::printRow(const Limit& limit, long rows) {
    const double time = median(std::string(limit.name) + '/' + std::to_string(rows));
    const double floor = median(std::string(limit.name) + " floor/" + std::to_string(rows));
    if (time <= 0)
        return;
    if (limit.ratio > 0 && floor > 0) {
        std::printf("%-26s %9ld %12s %12s %7.2f %9.2f  %s\n", limit.name, rows,
                    timeText(time).c_str(), timeText(floor).c_str(), time / floor, limit.ratio,
                    verdict(time / floor <= limit.ratio));
    } else if (limit.milliseconds > 0) {
        std::printf("%-26s %9ld %12s %12s %7s %6.0f ms  %s\n", limit.name, rows,
                    timeText(time).c_str(), "-", "-", limit.milliseconds,
                    verdict(time * 1000 <= limit.milliseconds));
    }
}

void TableReporter::printGrowth(const Limit& limit, long shortest, long longest) {
    const double small = median(std::string(limit.name) + '/' + std::to_string(shortest));
    const double large = median(std::string(limit.name) + '/' + std::to_string(longest));
    if (limit.mayGrow || small <= 0 || large <= 0)
        return;
    const std::string name = std::string("  growth: ") + limit.name;
    std::printf("%-36s %12s %12s %7.2f %9.2f  %s\n", name.c_str(), timeText(large).c_str(),
                timeText(small).c_str(), large / small, largestGrowth,
                verdict(large / small <= largestGrowth));
}

void TableReporter::Finalize() {
    std::printf("%-26s %9s %12s %12s %7s %9s\n", "name", "rows", "median", "floor", "ratio",
                "limit");
    for (const Limit& limit : m_limits) {
        std::set<long> rows;
        const std::string prefix = std::string(limit.name) + '/';
        for (const auto& [name, seconds] : m_seconds)
            if (name.starts_with(prefix))
                rows.insert(std::atol(name.substr(prefix.size()).c_str()));
        for (const long count : rows)
            printRow(limit, count);
        if (rows.size() > 1)
            printGrowth(limit, *rows.begin(), *rows.rbegin());
    }
}

} // namespace kelvrane::bench
