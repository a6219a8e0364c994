// Each line of the input is a formula in column H. All are read, ordered, computed, and rewritten
// as copying and inserting do. Besides the checks of the build: nothing is read that wasn't named,
// the same cells give the same value, and a rewritten formula is one exactly when it was one.
#include "worksheet/dependency_graph.h"
#include "worksheet/formula.h"
#include "worksheet/formula_cells.h"

#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <map>

using namespace kelvrane;

namespace {

constexpr int formulaColumn = 7; // H

void require(bool holds) {
    if (!holds)
        std::abort();
}

testing::FormulaTestCells filledCells() {
    testing::FormulaTestCells sheet;
    const CellValue values[] = {CellValue(2.5),        CellValue(-3.0),
                                CellValue("Rent"),     CellValue("$1,234.50"),
                                CellValue("1/5/2003"), CellValue(true),
                                CellValue(37626.75),   CellValue(CellError::NotAvailable),
                                CellValue(""),         CellValue("*a*b~?")};
    int place = 0;
    for (const CellValue& value : values) {
        sheet.cells.insert({place / 4, place % 4}, value);
        ++place;
    }
    return sheet;
}

/// Stands between a formula and its cells: only what it named may be read.
class NamedCells final : public FormulaCells {
  public:
    NamedCells(const FormulaCells& cells, const QList<CellRange>& ranges)
        : m_cells(cells), m_ranges(ranges) {}
    CellValue value(CellAddress cell) const override {
        require(std::ranges::any_of(m_ranges,
                                    [&](const CellRange& range) { return range.contains(cell); }));
        return m_cells.value(cell);
    }
    CellRange usedRange() const override { return m_cells.usedRange(); }
    QDateTime now() const override { return m_cells.now(); }

  private:
    const FormulaCells& m_cells;
    const QList<CellRange>& m_ranges;
};

void checkRewriting(const QString& line) {
    const QString text = u'=' + line;
    const bool isValid = Formula(text).isValid();
    require(ShiftedFormula(text, 0, 0) == text);
    constexpr int longEnough = 4096; // a rewritten text that grew may be too long to be valid
    if (text.size() > longEnough)
        return;
    for (const QString& after : {ShiftedFormula(text, 3, -2), AdjustedFormula(text, {true, 1, 5}),
                                 AdjustedFormula(text, {false, 0, -1})})
        require(Formula(after).isValid() == isValid);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr qsizetype mostLines = 12;
    const QStringList lines =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))
            .split(u'\n')
            .mid(0, mostLines);
    testing::FormulaTestCells sheet = filledCells();
    DependencyGraph graph;
    std::map<CellAddress, Formula> formulas;
    for (const QString& line : lines) {
        const CellAddress cell{static_cast<int>(formulas.size()), formulaColumn};
        const Formula& formula = formulas.emplace(cell, line).first->second;
        graph.setPrecedents(cell, formula.precedents());
        checkRewriting(line);
    }
    const DependencyGraph::Order order = graph.all();
    require(order.cells.size() + order.cycles.size() == lines.size());
    for (const CellAddress cell : order.cells) {
        const Formula& formula = formulas.at(cell);
        const NamedCells named(sheet, formula.precedents());
        const CellValue value = formula.evaluate(named);
        require(value == formula.evaluate(named));
        sheet.cells[cell] = value;
    }
    for (const CellAddress cell : order.cells)
        graph.remove(cell);
    return 0;
}
