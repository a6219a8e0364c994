#include "worksheet/dependency_graph.h"
#include "worksheet/formula_cells.h"

#include <QMap>
#include <QRandomGenerator>
#include <QSet>

#include <gtest/gtest.h>

#include <algorithm>

namespace kelvrane::testing {
namespace {

class DependencyGraphTest : public ::testing::Test {
  protected:
    static CellAddress at(const char* name) { return *ParseAddress(QString::fromLatin1(name)); }
    void formula(const char* cell, const char* text) {
        graph.setPrecedents(at(cell), Formula(QString::fromLatin1(text)).precedents());
    }
    static QString names(const QList<CellAddress>& cells) {
        QStringList list;
        for (const CellAddress cell : cells)
            list.append(AddressText(cell));
        return list.join(u' ');
    }
    /// "B1 C1 / D1": the order, and the cycles behind the stroke.
    QString affected(const char* cell) const { return told(graph.affectedBy({at(cell)})); }
    static QString told(const DependencyGraph::Order& order) {
        return order.cycles.isEmpty() ? names(order.cells)
                                      : names(order.cells) + " / " + names(order.cycles);
    }

    DependencyGraph graph;
};

TEST_F(DependencyGraphTest, OrdersWhatAChangeReachesAndNothingElse) {
    formula("D1", "=B1+C1+SUM(A1:A9)");
    formula("C1", "=B1*2");
    formula("B1", "=A1");
    formula("E1", "=SUM(D:D)");
    formula("F1", "=SUM(20:20)");
    EXPECT_EQ(affected("A1"), "B1 C1 D1 E1");
    EXPECT_EQ(affected("C1"), "C1 D1 E1") << "a formula that changed is computed itself";
    EXPECT_EQ(affected("A9"), "D1 E1");
    EXPECT_EQ(affected("A10"), "");
    EXPECT_EQ(affected("D10000"), "E1");
    EXPECT_EQ(affected("ZZ20"), "F1");
    EXPECT_EQ(told(graph.affectedBy({at("A9"), at("ZZ20"), at("A9")})), "D1 F1 E1");

    formula("D1", "=A5");
    EXPECT_EQ(affected("A1"), "B1 C1");
    graph.remove(at("B1"));
    EXPECT_EQ(affected("A1"), "");
    EXPECT_EQ(affected("B1"), "C1");
    graph.remove(at("B1"));
    EXPECT_EQ(graph.all().cells.size(), 4);
    graph.clear();
    EXPECT_EQ(affected("A5") + told(graph.all()), "");
}

TEST_F(DependencyGraphTest, CyclesAndWhatNeedsThemHaveNoOrder) {
    formula("A1", "=A1");
    EXPECT_EQ(affected("A1"), " / A1");
    formula("A1", "=B1+Z9");
    formula("B1", "=SUM(A:A)");
    formula("C1", "=B1");
    formula("D1", "=Z9");
    EXPECT_EQ(affected("Z9"), "D1 / A1 B1 C1");
    EXPECT_EQ(told(graph.all()), "D1 / A1 B1 C1");
    EXPECT_EQ(affected("C1"), "C1") << "reads a cycle, but is no part of what changed it";
    graph.remove(at("A1"));
    EXPECT_EQ(affected("A1"), "B1 C1");
}

TEST_F(DependencyGraphTest, AgreesWithAPlainSearchOnRandomSheets) {
    QRandomGenerator random(7);
    const auto below = [&](int limit) { return int(random.bounded(limit)); };
    QMap<CellAddress, CellRange> formulas;
    for (int step = 0; step < 400; ++step) {
        const CellAddress cell{below(40), below(12)};
        const CellRange read = RangeBetween({below(40), below(12)}, {below(40), below(12)});
        if (below(4) == 0) {
            formulas.remove(cell);
            graph.remove(cell);
        } else {
            const CellRange few{read.first,
                                {std::min(read.first.row + below(3), read.last.row),
                                 std::min(read.first.column + below(2), read.last.column)}};
            formulas.insert(cell, few);
            graph.setPrecedents(cell, {few});
        }
        const CellAddress changed{below(40), below(12)};
        QSet<CellAddress> reached{changed};
        for (bool grows = true; std::exchange(grows, false);)
            for (auto it = formulas.begin(); it != formulas.end(); ++it)
                if (!reached.contains(it.key()) &&
                    std::ranges::any_of(reached, [&](CellAddress c) { return it->contains(c); })) {
                    reached.insert(it.key());
                    grows = true;
                }
        if (!formulas.contains(changed))
            reached.remove(changed);
        const DependencyGraph::Order order = graph.affectedBy({changed});
        const QList<CellAddress> all = order.cells + order.cycles;
        ASSERT_EQ(QSet<CellAddress>(all.begin(), all.end()), reached);
        ASSERT_EQ(all.size(), reached.size());
        for (qsizetype i = 0; i < order.cells.size(); ++i) {
            for (qsizetype later = i; later < order.cells.size(); ++later)
                ASSERT_FALSE(formulas.value(order.cells[i]).contains(order.cells[later]));
            for (const CellAddress cycle : order.cycles)
                ASSERT_FALSE(formulas.value(order.cells[i]).contains(cycle));
        }
    }
}

TEST_F(DependencyGraphTest, LongChainsAndWideReadersAreFollowed) {
    for (int row = 1; row < SheetRows; ++row)
        graph.setPrecedents({row, 0}, {{{row - 1, 0}, {row - 1, 0}}});
    for (int row = 0; row < SheetRows; ++row)
        graph.setPrecedents({row, 2}, {{{0, 3}, {SheetRows - 1, 5}}});
    const DependencyGraph::Order order = graph.affectedBy({{0, 0}});
    EXPECT_EQ(order.cells.size(), SheetRows - 1);
    EXPECT_EQ(order.cells.last(), (CellAddress{SheetRows - 1, 0}));
    EXPECT_EQ(graph.affectedBy({{500, 4}}).cells.size(), SheetRows);
    EXPECT_EQ(graph.affectedBy({{9998, 0}}).cells.size(), 2);
}

/// 1,000 formulas in a chain of totals and products, as an invoice has them.
TEST_F(DependencyGraphTest, AThousandFormulasAreRecomputedOnceEach) {
    FormulaTestCells sheet;
    std::vector<Formula> formulas;
    for (int row = 0; row < 1000; ++row) {
        sheet.set({row, 0}, row + 0.5);
        sheet.set({row, 1}, 72.0);
        formulas.emplace_back(
            row == 0 ? QStringLiteral("=A1*B1")
                     : QStringLiteral("=ROUND(SUM(A%1:B%1)*$B$1,2)+C%2").arg(row + 1).arg(row));
        graph.setPrecedents({row, 2}, formulas.back().precedents());
    }
    const DependencyGraph::Order order = graph.affectedBy({{0, 1}});
    ASSERT_EQ(order.cells.size(), 1000);
    double total = 0;
    for (int row = 0; row < 1000; ++row) {
        EXPECT_EQ(order.cells[row], (CellAddress{row, 2}));
        total += row == 0 ? 0.5 * 72 : (row + 0.5 + 72) * 72;
        sheet.cells[{row, 2}] = formulas[static_cast<size_t>(row)].evaluate(sheet);
    }
    EXPECT_EQ(sheet.cells.value({999, 2}), CellValue(total));
}

} // namespace
} // namespace kelvrane::testing
