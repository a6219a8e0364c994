// The looks of an HTML table's cells, from style rules, inline styles, presentational attributes
// and elements such as <b> and <font>, inherited from body, table and row.
#pragma once

#include "worksheet/html_page.h"
#include "worksheet/sheet_contents.h"
#include "worksheet/sheet_css.h"

#include <QByteArray>
#include <QHash>

#include <optional>

namespace kelvrane {

enum class Side { Width, Height };

class HtmlTableStyle {
  public:
    void addRules(QByteArrayView css) { m_rules.add(css); }

    void beginBody(const HtmlTag& tag);
    /// Of a page of our own only the rules of classes count, and nothing is inherited.
    void beginTable(const HtmlTag& tag, bool isOurs);
    void beginRow(const HtmlTag& tag);
    CellStyle cellStyle(const HtmlTag& tag);
    /// An element within the cell, before its text.
    void addInline(const HtmlTag& tag, CellStyle& style) const;

    /// Leaves out of a cell what it says without need: the sheet's font, black ink, white fill, the
    /// alignment that its value has anyway. Spreadsheet programs spell these out for every cell.
    void tidy(Cell& cell) const;
    void giveFont(SheetContents& sheet) const;

    /// The width or height that a column, row or cell asks for, 0 when it is hidden. On a page of
    /// our own only the style attribute counts.
    std::optional<int> sideOf(const HtmlTag& tag, Side side) const;

  private:
    CellStyle classStyle(QByteArrayView element, QByteArrayView classes);
    void addAttributes(const HtmlTag& tag, CellStyle& style) const;
    void keepFont(const CellStyle& style);

    StyleSheet m_rules;
    bool m_isOurs = false;
    CellStyle m_body;
    CellStyle m_table; ///< what cells inherit, the body's included
    CellStyle m_row;   ///< what the row adds
    bool m_rowHasStyle = false;
    std::optional<CellStyle> m_bareCell; ///< of a cell without attributes
    QString m_fontFamily;                ///< the sheet's
    double m_pointSize = 0;
    QHash<QByteArray, CellStyle> m_classStyles; ///< by element and class attribute
};

} // namespace kelvrane
