// A sheet that computes itself: contents, formulas and what depends on them. Changes come up as
// signals; one change recomputes what depends on it and nothing else.
//
//     Worksheet sheet;
//     sheet.enter({0, 0}, "1.5");
//     sheet.enter({0, 1}, "=A1*2");
//     sheet.text({0, 1});            // "3"
#pragma once

#include "worksheet/dependency_graph.h"
#include "worksheet/formula.h"
#include "worksheet/sheet_contents.h"

#include <QObject>

#include <functional>
#include <unordered_map>

namespace kelvrane {

class Worksheet : public QObject, private FormulaCells {
    Q_OBJECT
  public:
    explicit Worksheet(QObject* parent = nullptr);
    ~Worksheet() override;

    const SheetContents& contents() const { return m_contents; }
    /// Replaces everything and computes all formulas. Emits Reset.
    void setContents(const SheetContents& contents);

    CellValue value(CellAddress cell) const override;
    /// As the cell shows it.
    QString text(CellAddress cell) const;
    /// As the formula bar shows it: "=A1+1", "75", "1/5/2003", "'02134".
    QString input(CellAddress cell) const;
    const CellStyle& style(CellAddress cell) const;

    /// As typing does: a formula after "=", else what the text means; an implied number format is
    /// taken where the cell is General, and under "@" everything is text.
    void enter(CellAddress cell, const QString& text);
    void setValue(CellAddress cell, const CellValue& value); ///< a constant; the style stays
    void setStyle(CellAddress cell, const CellStyle& style);
    /// Changes the styles of a range; the change gets each cell's own.
    void changeStyle(const CellRange& range, const std::function<void(CellStyle&)>& change);
    /// Values and formulas go, styles stay.
    void clearValues(const CellRange& range);
    /// A whole cell, style included; a bare one removes it.
    void setCell(CellAddress cell, const Cell& contents);

    /// One cell of the range keeps its value, the first one. Undoes merges that overlap.
    void merge(const CellRange& range);
    void unmerge(const CellRange& range);
    void setColumnWidth(int column, int pixels); ///< 0 hides
    void setRowHeight(int row, int pixels);
    void changeStructure(const StructureChange& change);

    /// Collects the changes made while it lives into one recomputation and one signal. They come
    /// at its end, an exception's way out included; what they raise themselves then gives way to
    /// it.
    class Changes {
      public:
        explicit Changes(Worksheet& sheet);
        ~Changes() noexcept(false);
        Q_DISABLE_COPY_MOVE(Changes)

      private:
        Worksheet& m_sheet;
        int m_exceptions;
    };

  signals:
    void Changed(const kelvrane::CellRange& range); ///< values or styles, dependents included
    void LayoutChanged();                           ///< widths, heights, merges, structure
    void Reset();

  private:
    CellRange usedRange() const override;
    QDateTime now() const override;
    void touch(CellAddress cell);
    void takeFormula(CellAddress cell, const QString& formula);
    void recompute(const DependencyGraph::Order& order);
    void flush();

    SheetContents m_contents;
    std::unordered_map<CellAddress, Formula, size_t (*)(CellAddress)> m_formulas;
    DependencyGraph m_graph;
    QList<CellAddress> m_touched;
    bool m_layoutTouched = false;
    int m_openChanges = 0;
};

} // namespace kelvrane
