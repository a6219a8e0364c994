// How a cell looks. A default CellStyle is a bare cell.
#pragma once

#include <QColor>
#include <QString>

namespace kelvrane {

enum class HorizontalAlign { General, Left, Center, Right }; ///< General: numbers right, text left
enum class VerticalAlign { Top, Middle, Bottom };

struct CellBorder {
    enum class Line { None, Solid, Dashed, Dotted, Double };
    Line line = Line::None;
    int width = 1; ///< CSS pixels, 1 to 9
    QRgb color = 0xff000000;
    bool operator==(const CellBorder&) const = default;
};

struct CellStyle {
    static constexpr QRgb NoColor = 0; ///< ink: black on paper; fill: none

    QString fontFamily;   ///< "": the sheet's own
    double pointSize = 0; ///< 0: the sheet's own
    bool bold = false;
    bool italic = false;
    bool underline = false;
    QRgb ink = NoColor;
    QRgb fill = NoColor;
    HorizontalAlign horizontal = HorizontalAlign::General;
    VerticalAlign vertical = VerticalAlign::Bottom;
    bool wraps = false;
    int indent = 0; ///< CSS pixels
    CellBorder left, top, right, bottom;
    QString numberFormat; ///< "": General. As in NumberFormat: "0.00", "d mmm", "@"

    bool operator==(const CellStyle&) const = default;
};

} // namespace kelvrane
