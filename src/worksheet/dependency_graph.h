// Which formulas need which cells, and the order in which they are computed after a change.
#pragma once

#include "worksheet/cell_address.h"

#include <QList>

#include <memory>

namespace kelvrane {

class DependencyGraph {
  public:
    DependencyGraph();
    ~DependencyGraph();

    void clear();
    /// The formula of a cell reads these ranges; replaces what was known of it.
    void setPrecedents(CellAddress cell, const QList<CellRange>& ranges);
    void remove(CellAddress cell);

    struct Order {
        QList<CellAddress> cells;  ///< each after all that it needs
        QList<CellAddress> cycles; ///< need themselves, or something that does so: no order
    };
    /// The formulas that the changed cells reach, themselves included where they are formulas.
    /// Costs no more than what is reached.
    Order affectedBy(const QList<CellAddress>& changed) const;
    Order all() const;

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace kelvrane
