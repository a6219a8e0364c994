#include "worksheet/sheet_css.h"

#include <QLocale>
#include <QStringList>

namespace kelvrane {

namespace {

bool isPlain(char16_t letter) {
    return (letter >= u'a' && letter <= u'z') || (letter >= u'A' && letter <= u'Z') ||
           (letter >= u'0' && letter <= u'9') || letter == u' ' || letter == u'-' || letter == u'_';
}

QString hexCode(char16_t letter) {
    return QStringLiteral("\\%1").arg(static_cast<int>(letter), 4, 16, QLatin1Char('0'));
}

/// A quoted text; the blank ends the code of a letter.
QString cssString(const QString& text) {
    QString quoted = QStringLiteral("\"");
    for (const QChar letter : text)
        quoted += isPlain(letter.unicode()) ? QString(letter)
                                            : hexCode(letter.unicode()) + QLatin1Char(' ');
    return quoted + QLatin1Char('"');
}

/// As spreadsheet programs write it: codes have four digits and no blank. Marks stand behind a
/// backslash. The first letter of a word is a code, as words name formats ("Fixed", "Percent").
QString numberFormatString(const QString& format) {
    QString quoted = QStringLiteral("\"");
    for (qsizetype at = 0; at < format.size(); ++at) {
        const char16_t letter = format[at].unicode();
        if (isPlain(letter) && (at > 0 || !format[at].isLetter()))
            quoted += QChar(letter);
        else if (letter > u' ' && letter < 0x7f && letter != u'"' && letter != u'<' &&
                 letter != u'{' && letter != u'}' && !format[at].isLetter())
            quoted += QLatin1Char('\\') + QChar(letter);
        else
            quoted += hexCode(letter);
    }
    return quoted + QLatin1Char('"');
}

QString points(double size) {
    return QString::number(size, 'g', QLocale::FloatingPointShortest) + QLatin1String("pt");
}

constexpr const char* lineNames[] = {"none", "solid", "dashed", "dotted", "double"};

QString borderText(const CellBorder& border) {
    return QString::number(border.width) + QLatin1String("px ") +
           QLatin1String(lineNames[static_cast<int>(border.line)]) + QLatin1Char(' ') +
           CssColor(border.color);
}

void addBorders(QStringList& all, const CellStyle& style) {
    const struct {
        const char* name;
        const CellBorder& border;
    } sides[] = {{"border-left:", style.left},
                 {"border-top:", style.top},
                 {"border-right:", style.right},
                 {"border-bottom:", style.bottom}};
    for (const auto& side : sides)
        if (side.border != CellBorder{})
            all += QLatin1String(side.name) + borderText(side.border);
}

void addPlacing(QStringList& all, const CellStyle& style) {
    constexpr const char* horizontal[] = {nullptr, "left", "center", "right"};
    if (const char* name = horizontal[static_cast<int>(style.horizontal)])
        all += QLatin1String("text-align:") + QLatin1String(name);
    constexpr const char* vertical[] = {"top", "middle", nullptr};
    if (const char* name = vertical[static_cast<int>(style.vertical)])
        all += QLatin1String("vertical-align:") + QLatin1String(name);
    if (style.wraps)
        all += QStringLiteral("white-space:pre-wrap");
    if (style.indent != 0)
        all += QLatin1String(style.horizontal == HorizontalAlign::Right ? "padding-right:"
                                                                        : "padding-left:") +
               QString::number(style.indent) + QLatin1String("px");
}

} // namespace

QString CssColor(QRgb color) {
    const QString opaque = QStringLiteral("#%1").arg(color & 0xffffffU, 6, 16, QLatin1Char('0'));
    return qAlpha(color) == 0xff
               ? opaque
               : opaque + QStringLiteral("%1").arg(qAlpha(color), 2, 16, QLatin1Char('0'));
}

QString FontDeclarations(const QString& family, double pointSize) {
    return QLatin1String("font-family:") + cssString(family) + QLatin1String(";font-size:") +
           points(pointSize);
}

QString StyleDeclarations(const CellStyle& style) {
    QStringList all;
    if (!style.fontFamily.isEmpty())
        all += QLatin1String("font-family:") + cssString(style.fontFamily);
    if (style.pointSize != 0)
        all += QLatin1String("font-size:") + points(style.pointSize);
    if (style.bold)
        all += QStringLiteral("font-weight:bold");
    if (style.italic)
        all += QStringLiteral("font-style:italic");
    if (style.underline)
        all += QStringLiteral("text-decoration:underline");
    if (style.ink != CellStyle::NoColor)
        all += QLatin1String("color:") + CssColor(style.ink);
    if (style.fill != CellStyle::NoColor)
        all += QLatin1String("background:") + CssColor(style.fill);
    addPlacing(all, style);
    addBorders(all, style);
    if (!style.numberFormat.isEmpty())
        all += QLatin1String("mso-number-format:") + numberFormatString(style.numberFormat);
    return all.join(QLatin1Char(';'));
}

} // namespace kelvrane
