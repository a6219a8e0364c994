#include "chartspace/values.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kelvrane::chartspace {

namespace {

// Sums of many such numbers still are finite.
constexpr double highestShown = 1e290;

double Drawable(double value) {
    return std::isfinite(value) ? std::clamp(value, 0.0, highestShown) : 0.0;
}

} // namespace

Values::Values(const Chart& chart)
    : m_series(static_cast<int>(chart.series.size())),
      m_categories(static_cast<int>(chart.categories.size())),
      m_shown(static_cast<size_t>(m_series) * static_cast<size_t>(m_categories)),
      m_totals(static_cast<size_t>(m_categories)) {
    for (int s = 0; s < m_series; ++s) {
        const QList<double>& values = chart.series[s].values;
        const int count = std::min(m_categories, static_cast<int>(values.size()));
        for (int c = 0; c < count; ++c) {
            const double shown = Drawable(values[c]);
            m_shown[index(s, c)] = shown;
            m_totals[static_cast<size_t>(c)] += shown;
        }
    }
}

double Values::seriesTotal(int series) const {
    const auto first = m_shown.begin() + static_cast<std::ptrdiff_t>(index(series, 0));
    return std::accumulate(first, first + m_categories, 0.0);
}

double Values::highestValue() const {
    return m_shown.empty() ? 0.0 : *std::max_element(m_shown.begin(), m_shown.end());
}

double Values::highestTotal() const {
    return m_totals.empty() ? 0.0 : *std::max_element(m_totals.begin(), m_totals.end());
}

} // namespace kelvrane::chartspace
