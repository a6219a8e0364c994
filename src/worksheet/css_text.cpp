#include "worksheet/css_text.h"

#include <algorithm>

namespace kelvrane {

namespace {

bool isBlank(char letter) {
    return letter == ' ' || letter == '\n' || letter == '\t' || letter == '\r' || letter == '\f';
}

/// The length up to a mark that stands outside quotes, brackets and escapes.
qsizetype lengthTo(char mark, QByteArrayView text) {
    char quote = 0;
    int brackets = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char letter = text[at];
        if (letter == '\\')
            ++at;
        else if (quote)
            quote = letter == quote ? '\0' : quote;
        else if (letter == '"' || letter == '\'')
            quote = letter;
        else if (letter == mark && brackets <= 0)
            return at;
        else
            brackets += (letter == '(') - (letter == ')');
    }
    return text.size();
}

void appendCode(QString& text, char32_t code) {
    if (code <= 0xffff)
        text += QChar(static_cast<char16_t>(code));
    else
        text += QString::fromUcs4(&code, 1);
}

/// What stands behind a backslash, which is cut off.
void unescape(QString& text, QByteArrayView& rest, EscapeCodes codes) {
    const qsizetype most = codes == EscapeCodes::Four ? 4 : 6;
    qsizetype digits = 0;
    char32_t code = 0;
    while (digits < most && digits < rest.size() && HexDigit(rest[digits]) >= 0)
        code = code * 16 + static_cast<char32_t>(HexDigit(rest[digits++]));
    if (digits == 0 || (codes == EscapeCodes::Four && digits < most))
        return; // the letter behind it stands for itself
    appendCode(text, code > 0x10ffff ? U'\ufffd' : code);
    rest = rest.sliced(digits);
    if (codes == EscapeCodes::UpToSix && !rest.isEmpty() && isBlank(rest[0]))
        rest = rest.sliced(1);
}

} // namespace

int HexDigit(char letter) {
    if (letter >= '0' && letter <= '9')
        return letter - '0';
    const char lower = static_cast<char>(letter | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool IsWord(QByteArrayView text, QByteArrayView word) {
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

QByteArrayView TakeTo(char mark, QByteArrayView& text) {
    const qsizetype length = lengthTo(mark, text);
    const QByteArrayView taken = text.first(length);
    text = text.sliced(std::min(length + 1, text.size()));
    return taken.trimmed();
}

QByteArrayView TakeWord(QByteArrayView& text) {
    text = text.trimmed();
    qsizetype length = 0;
    int brackets = 0;
    for (; length < text.size() && (brackets > 0 || !isBlank(text[length])); ++length)
        brackets += (text[length] == '(') - (text[length] == ')');
    const QByteArrayView word = text.first(length);
    text = text.sliced(length);
    return word;
}

void SkipAtRule(QByteArrayView& css) {
    int depth = 0;
    qsizetype at = 0;
    for (bool isOver = false; !isOver && at < css.size(); ++at) {
        depth += (css[at] == '{') - (css[at] == '}');
        isOver = depth <= 0 && (css[at] == ';' || css[at] == '}');
    }
    css = css.sliced(at);
}

QString StringOf(QByteArrayView value, EscapeCodes codes) {
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front())
        value = value.sliced(1, value.size() - 2);
    QString text;
    while (!value.isEmpty()) {
        const qsizetype plain = value.indexOf('\\');
        text += QString::fromUtf8(value.first(plain < 0 ? value.size() : plain));
        if (plain < 0)
            break;
        value = value.sliced(plain + 1);
        const qsizetype before = text.size();
        unescape(text, value, codes);
        if (text.size() == before && !value.isEmpty() && value[0] == '\\') {
            text += u'\\';
            value = value.sliced(1);
        }
    }
    return text;
}

} // namespace kelvrane
