// Writes a sheet cell by cell, in the look that the ready templates share.
//
//     SheetMaker sheet("Invoice");
//     sheet.put("B2", "Invoice", Title());
//     sheet.ruleBelow("B13:F13", Accent, 2);
//     file.write(sheet.html());
#pragma once

#include "worksheet/sheet_contents.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace kelvrane::templates {

inline constexpr QRgb Accent = 0xff2a5b9c;
inline constexpr QRgb AccentWash = 0xffeef3fa;
inline constexpr QRgb QuietInk = 0xff5c6673;
inline constexpr QRgb Hairline = 0xffd5dbe3;

CellStyle Text(double pointSize = 10, HorizontalAlign align = HorizontalAlign::General);
CellStyle Strong(double pointSize = 10, HorizontalAlign align = HorizontalAlign::General);
CellStyle Title();
/// Small, above what it names.
CellStyle Label(HorizontalAlign align = HorizontalAlign::General);
/// The same style under a number format.
CellStyle Formatted(CellStyle style, const char* numberFormat);

class SheetMaker {
  public:
    explicit SheetMaker(const QString& title);

    void setWidths(std::initializer_list<int> pixels); ///< from column A on
    void setHeight(int row, int pixels);               ///< row 1-based
    /// A text as it stands, a formula when it begins with "=".
    void put(const QString& cell, const QString& text, const CellStyle& style);
    void style(const QString& range, const std::function<void(CellStyle&)>& change);
    void ruleBelow(const QString& range, QRgb color, int width = 1);
    void ruleAbove(const QString& range, QRgb color, int width = 1);
    void merge(const QString& range);

    /// The file, its formulas computed.
    QByteArray html() const;

  private:
    SheetContents m_contents;
};

} // namespace kelvrane::templates
