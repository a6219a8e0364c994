// The numbers of a chart as they can be drawn: a full grid of series and categories in which every
// number is finite and not below zero. What can't be drawn stands on the base line as zero.
#pragma once

#include "chartspace/chart.h"

#include <vector>

namespace kelvrane::chartspace {

class Values {
  public:
    explicit Values(const Chart& chart);

    int series() const { return m_series; }
    int categories() const { return m_categories; }
    /// Nothing to draw an axis for: no series or no categories.
    bool isEmpty() const { return m_series == 0 || m_categories == 0; }

    /// 0-based; both indexes must be within the counts.
    double at(int series, int category) const { return m_shown[index(series, category)]; }
    double categoryTotal(int category) const { return m_totals[static_cast<size_t>(category)]; }
    double seriesTotal(int series) const;
    double highestValue() const;
    double highestTotal() const;

  private:
    size_t index(int series, int category) const {
        return static_cast<size_t>(series) * static_cast<size_t>(m_categories) +
               static_cast<size_t>(category);
    }

    int m_series = 0;
    int m_categories = 0;
    std::vector<double> m_shown;
    std::vector<double> m_totals;
};

} // namespace kelvrane::chartspace
