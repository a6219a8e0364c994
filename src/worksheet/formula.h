// A formula as it was typed: read once, evaluated as often as its cells change.
//
//     const Formula formula("=SUM(A1:A3)*2");
//     for (const CellRange& range : formula.precedents()) ...
//     CellValue result = formula.evaluate(cells);
#pragma once

#include "worksheet/cell_address.h"
#include "worksheet/cell_value.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>

namespace kelvrane {

/// Where a formula gets its cells from.
class FormulaCells {
  public:
    virtual ~FormulaCells() = default;
    virtual CellValue value(CellAddress cell) const = 0;
    /// Nothing stands outside of it: whole columns are read as far as this.
    virtual CellRange usedRange() const = 0;
    virtual QDateTime now() const = 0;
};

class Formula {
  public:
    /// Text with or without its "=". A text that is no formula gives one that isn't valid. Never
    /// raises; nesting deeper than 64 and texts over 8,192 characters aren't valid.
    explicit Formula(const QString& text);
    ~Formula();
    Formula(Formula&&) noexcept;
    Formula& operator=(Formula&&) noexcept;

    bool isValid() const;
    /// The ranges that it reads, without regard to which branch is taken.
    const QList<CellRange>& precedents() const;
    /// True when it calls TODAY or NOW.
    bool isVolatile() const;
    /// An invalid formula gives #NAME?.
    CellValue evaluate(const FormulaCells& cells) const;

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

/// The formula after its cell was copied by so many rows and columns: relative references move,
/// $ references stay; one that leaves the sheet becomes #REF!. "=..." in, "=..." out.
QString ShiftedFormula(const QString& formula, int rows, int columns);

/// A change of the sheet's structure: count rows (or columns) inserted before a place, or removed
/// from it on when count is negative.
struct StructureChange {
    bool rows = true;
    int at = 0;
    int count = 0;
};
/// The formula after that change: references move with their cells, ranges grow and shrink, and one
/// whose cells are gone becomes #REF!.
QString AdjustedFormula(const QString& formula, const StructureChange& change);

} // namespace kelvrane
