#include "worksheet/cell_text.h"

#include "worksheet/number_format.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kelvrane {

namespace {

/// Text is laid out this many times larger, where hinting and rounding no longer tell; twelve gives
/// whole pixels to every sixteenth of a point.
constexpr double layoutScale = 12;
constexpr double pixelsPerPoint = 96.0 / 72.0;
constexpr double endlessLine = 1e7;
constexpr double leastPointSize = 1;
constexpr double largestPointSize = 400;
constexpr int longestText = 2000; ///< characters; no page is wide enough for more
constexpr int longestWrappedText = 10'000;

bool IsGeneral(const QString& format) {
    return format.isEmpty() || format.compare(QLatin1String("General"), Qt::CaseInsensitive) == 0;
}

/// Above and below the base line; of a stand-in in sizes of the font, else in its pixels.
struct LineMetrics {
    double ascent;
    double descent;
};

/// A family that is always there: the program depends on it. Its metrics are those of its file.
struct StandIn {
    QLatin1String family;
    LineMetrics metrics;
};
constexpr StandIn sans{QLatin1String("Liberation Sans"), {1854 / 2048.0, 434 / 2048.0}};
constexpr StandIn serif{QLatin1String("Liberation Serif"), {1825 / 2048.0, 443 / 2048.0}};
constexpr StandIn mono{QLatin1String("Liberation Mono"), {1705 / 2048.0, 615 / 2048.0}};

/// What is shown for a family that isn't there: another of the same widths, else the stand-in.
struct Substitute {
    QLatin1String family;
    const StandIn& standIn;
    QLatin1String sameWidths;
};
constexpr Substitute substitutes[] = {
    {QLatin1String("Calibri"), sans, QLatin1String("Carlito")},
    {QLatin1String("Cambria"), serif, QLatin1String("Caladea")},
    {QLatin1String("Courier"), mono, {}},
    {QLatin1String("Courier New"), mono, {}},
    {QLatin1String("Georgia"), serif, QLatin1String("Gelasio")},
    {QLatin1String("Times"), serif, {}},
    {QLatin1String("Times New Roman"), serif, {}},
    {QLatin1String("monospace"), mono, {}},
    {QLatin1String("serif"), serif, {}},
};

Substitute SubstituteOf(const QString& family) {
    for (const Substitute& row : substitutes)
        if (family.compare(row.family, Qt::CaseInsensitive) == 0)
            return row;
    return {{}, sans, {}};
}

/// The font's own; the stand-in's for every substitute, so that rows are equally high with all.
LineMetrics MetricsOf(const QFont& font) {
    const double size = font.pixelSize();
    if (QFontInfo(font).family().compare(font.family(), Qt::CaseInsensitive) != 0) {
        const auto& [ascent, descent] = SubstituteOf(font.family()).standIn.metrics;
        return {ascent * size, descent * size};
    }
    const QFontMetricsF metrics(font);
    return {metrics.ascent(), metrics.descent()};
}

double RoundedTo(double number, int digits) {
    return QString::number(number, 'g', digits).toDouble();
}

} // namespace

double ShownPointSize(const SheetContents& contents, const CellStyle& style) {
    const double size = style.pointSize > 0 ? style.pointSize : contents.pointSize;
    return std::clamp(size, leastPointSize, largestPointSize);
}

QFont SheetFont(const QString& family) {
    const Substitute substitute = SubstituteOf(family);
    QStringList families;
    if (!family.isEmpty())
        families << family;
    if (!substitute.sameWidths.isEmpty())
        families << substitute.sameWidths;
    families << substitute.standIn.family;
    QFont font;
    font.setFamilies(families);
    return font;
}

const QFont& CellFonts::font(const CellStyle& style) {
    const QString& family = style.fontFamily.isEmpty() ? m_contents.fontFamily : style.fontFamily;
    const int pixels = static_cast<int>(
        std::lround(ShownPointSize(m_contents, style) * pixelsPerPoint * layoutScale));
    const int marks = (style.bold ? 1 : 0) + (style.italic ? 2 : 0) + (style.underline ? 4 : 0);
    const QString key = family + QLatin1Char('/') + QString::number(pixels * 8 + marks);
    if (const auto known = m_fonts.constFind(key); known != m_fonts.cend())
        return *known;
    QFont font = SheetFont(family);
    font.setPixelSize(pixels);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setUnderline(style.underline);
    font.setHintingPreference(QFont::PreferNoHinting);
    return *m_fonts.insert(key, font);
}

CellText::CellText(const QString& text, const QFont& font, double width) {
    QString lines = text;
    lines.truncate(width < 0 ? longestText : longestWrappedText);
    lines.replace(QLatin1Char('\n'), QChar::LineSeparator);
    m_layout.setText(lines);
    m_layout.setFont(font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    option.setWrapMode(width < 0 ? QTextOption::NoWrap : QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    const double lineWidth = width < 0 ? endlessLine : std::max(width, 1.0) * layoutScale;
    const LineMetrics metrics = MetricsOf(font);
    double y = 0;
    m_layout.beginLayout();
    for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
        line.setLineWidth(lineWidth);
        line.setPosition({0, y + metrics.ascent - line.ascent()});
        y += metrics.ascent + metrics.descent;
        m_width = std::max(m_width, line.naturalTextWidth() / layoutScale);
    }
    m_layout.endLayout();
    m_height = y / layoutScale;
}

void CellText::draw(QPainter& painter, double x, double y, double room, HorizontalAlign align) {
    for (int i = 0; i < m_layout.lineCount(); ++i) {
        QTextLine line = m_layout.lineAt(i);
        const double left = room - line.naturalTextWidth() / layoutScale;
        const double share = align == HorizontalAlign::Right    ? 1
                             : align == HorizontalAlign::Center ? 0.5
                                                                : 0;
        line.setPosition({left * share * layoutScale, line.y()});
    }
    painter.save();
    painter.translate(x, y);
    painter.scale(1 / layoutScale, 1 / layoutScale);
    m_layout.draw(&painter, {0, 0});
    painter.restore();
}

HorizontalAlign NaturalAlign(const Cell& cell) {
    if (IsNumber(cell.value))
        return IsTextFormat(cell.style.numberFormat) ? HorizontalAlign::Left
                                                     : HorizontalAlign::Right;
    return IsEmpty(cell.value) || IsText(cell.value) ? HorizontalAlign::Left
                                                     : HorizontalAlign::Center;
}

HorizontalAlign ShownAlign(const Cell& cell) {
    return cell.style.horizontal == HorizontalAlign::General ? NaturalAlign(cell)
                                                             : cell.style.horizontal;
}

QString ShownText(const Cell& cell) {
    return IsEmpty(cell.value)
               ? QString()
               : FormatCellValue(cell.value, cell.style.numberFormat).left(longestWrappedText);
}

QString TextInRoom(const Cell& cell, const QFont& font, double room) {
    const auto fits = [&](const QString& text) { return CellText(text, font, -1).width() <= room; };
    const double number = std::get<double>(cell.value);
    const double size = std::abs(number);
    if (IsGeneral(cell.style.numberFormat) && size < 1e9) {
        const int whole = size < 1 ? 1 : static_cast<int>(std::floor(std::log10(size))) + 1;
        for (int digits = 9; digits >= whole; --digits)
            if (const QString text = FormatCellValue(RoundedTo(number, digits), {}); fits(text))
                return text;
    }
    QString hashes = QStringLiteral("###");
    while (hashes.size() < 64 && fits(hashes + QLatin1Char('#')))
        hashes += QLatin1Char('#');
    return hashes;
}

} // namespace kelvrane
