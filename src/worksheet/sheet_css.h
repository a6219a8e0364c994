// Cell styles as the style rules of a page, out and in. The properties are those of CSS 2.1, and
// mso-number-format, in which spreadsheet programs keep the number format.
//
//     StyleSheet rules;
//     rules.add(".s1{font-weight:bold;mso-number-format:\"0\\.00\"}");
//     CssBox box;
//     rules.apply("td", "s1", box);
#pragma once

#include "worksheet/cell_style.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>

#include <optional>

namespace kelvrane {

/// "font-weight:bold;color:#ff0000", what a bare style has left out; "" for a bare style. Nothing
/// in it ends a style element, a rule, or a line. ReadDeclarations gives the style back.
QString StyleDeclarations(const CellStyle& style);
/// "font-family:\"Arial\";font-size:10pt".
QString FontDeclarations(const QString& family, double pointSize);
/// "#ff0000"; with two more digits where the colour isn't opaque.
QString CssColor(QRgb color);

/// What declarations say of an element.
struct CssBox {
    CellStyle style;
    std::optional<int> width; ///< CSS pixels, like the height
    std::optional<int> height;
    bool isHidden = false;
};

/// Changes what the declarations name; anything that can't be read is passed over.
void ReadDeclarations(QByteArrayView declarations, CssBox& box);
/// "#f00", "#ff0000", "rgb(255, 0, 0)", "red"; NoColor for "transparent" and for what is no colour.
QRgb ReadCssColor(QByteArrayView text);
/// "12pt", "16px", "1in", "16" in CSS pixels; nothing for a percentage and what is no length.
std::optional<double> ReadCssLength(QByteArrayView text);

/// What one rule changes, read once: applying it costs the same however long its text is.
class CssChanges {
  public:
    CssChanges() = default;
    explicit CssChanges(QByteArrayView declarations);
    void apply(CssBox& box) const;
    void add(const CssChanges& later);

  private:
    quint32 m_changed = 0; ///< bit by bit the members that m_box holds
    CssBox m_box;
};

/// The rules of a page for single elements and classes; rules for anything else are passed over.
/// Reading takes time by the length of the text, applying by the number of classes.
class StyleSheet {
  public:
    /// The text of a style element.
    void add(QByteArrayView css);
    /// The rules of the element, of its classes, and of both together, in this order. The classes
    /// are those of the attribute, separated by blanks.
    void apply(QByteArrayView element, QByteArrayView classes, CssBox& box) const;

  private:
    void addRule(QByteArrayView selectors, QByteArrayView declarations);
    void applyRule(const QByteArray& selector, CssBox& box) const;

    QHash<QByteArray, CssChanges> m_rules; ///< by "td", ".s1", "td.s1"
};

} // namespace kelvrane
