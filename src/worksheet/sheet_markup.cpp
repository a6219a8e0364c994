#include "worksheet/sheet_markup.h"

#include <QLatin1String>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr qsizetype codeDigits = 4;

constexpr QLatin1String attributeMark("class=");

/// Stands for itself wherever it is; true for most letters of most texts.
bool isPlainLetter(QChar letter) {
    const char16_t code = letter.unicode();
    return code >= u' ' && code < 0xd800 && code != u'&' && code != u'<' && code != u'>' &&
           code != u'"';
}

bool isHtmlLetter(const QString& text, qsizetype at) {
    const QChar letter = text[at];
    if (letter.isHighSurrogate())
        return at + 1 < text.size() && text[at + 1].isLowSurrogate();
    if (letter.isLowSurrogate())
        return at > 0 && text[at - 1].isHighSurrogate();
    const char16_t code = letter.unicode();
    return (code >= u' ' && code < 0xfffe) || code == u'\n' || code == u'\t' || code == u'\r';
}

} // namespace

QString EscapedHtml(const QString& text) {
    if (std::ranges::all_of(text, isPlainLetter) && !text.contains(attributeMark))
        return text;
    QString escaped;
    escaped.reserve(text.size() + text.size() / 8);
    for (qsizetype at = 0; at < text.size(); ++at) {
        switch (text[at].unicode()) {
        case u'&':
            escaped += QLatin1String("&amp;");
            break;
        case u'<':
            escaped += QLatin1String("&lt;");
            break;
        case u'>':
            escaped += QLatin1String("&gt;");
            break;
        case u'"':
            escaped += QLatin1String("&quot;");
            break;
        case u'\n':
            escaped += QLatin1String("&#10;");
            break;
        case u'\r':
            escaped += QLatin1String("&#13;");
            break;
        default:
            escaped += isHtmlLetter(text, at) ? text[at] : QChar(QChar::ReplacementCharacter);
        }
    }
    return escaped.replace(attributeMark, QLatin1String("class&#61;"));
}

bool IsHtmlText(const QString& text) {
    if (std::ranges::all_of(text, isPlainLetter))
        return true;
    for (qsizetype at = 0; at < text.size(); ++at)
        if (!isHtmlLetter(text, at))
            return false;
    return true;
}

QString ExactText(const QString& text) {
    QString exact;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == u'\\')
            exact += QLatin1String("\\\\");
        else if (isHtmlLetter(text, at))
            exact += text[at];
        else
            exact += QStringLiteral("\\u%1").arg(static_cast<int>(text[at].unicode()), codeDigits,
                                                 16, QLatin1Char('0'));
    }
    return exact;
}

QString TextOfExact(const QString& exact) {
    QString text;
    for (qsizetype at = 0; at < exact.size(); ++at) {
        if (exact[at] != u'\\' || at + 1 >= exact.size()) {
            text += exact[at];
            continue;
        }
        ++at;
        bool isCode = exact[at] == u'u' && at + codeDigits < exact.size();
        const ushort code =
            isCode ? QStringView(exact).sliced(at + 1, codeDigits).toUShort(&isCode, 16) : ushort{};
        text += isCode ? QChar(code) : exact[at];
        at += isCode ? codeDigits : 0;
    }
    return text;
}

} // namespace kelvrane
