#include "worksheet/typed_value.h"

#include "worksheet/typed_date.h"

#include <charconv>

namespace kelvrane {

namespace {

struct TypedNumber {
    double number = 0;
    QString format;
};

/// Reads the forms of a number from left to right.
class NumberReader {
  public:
    explicit NumberReader(QStringView text) : m_text(text) {}
    std::optional<TypedNumber> read();

  private:
    char16_t peek() const { return m_at < m_text.size() ? m_text[m_at].unicode() : u'\0'; }
    bool take(char16_t sign);
    void skipBlanks();
    bool takeSigns();
    bool takeDigits();
    bool takeExponent();
    bool takeWhole();
    QString format() const;

    QStringView m_text;
    qsizetype m_at = 0;
    QByteArray m_plain; ///< digits, point and exponent as C writes them
    bool m_isNegative = false;
    bool m_isInBrackets = false;
    bool m_hasCurrency = false;
    bool m_hasCommas = false;
    bool m_hasDecimals = false;
    bool m_hasExponent = false;
    bool m_isPercent = false;
};

bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool NumberReader::take(char16_t sign) {
    if (peek() != sign || m_at >= m_text.size())
        return false;
    ++m_at;
    return true;
}

void NumberReader::skipBlanks() {
    while (take(u' '))
        ;
}

/// "(", "-" or "+", and "$", which may stand before or behind the sign.
bool NumberReader::takeSigns() {
    m_isInBrackets = take(u'(');
    const auto takeSign = [this] {
        const bool isMinus = take(u'-');
        m_isNegative = m_isNegative || isMinus;
        return isMinus || take(u'+');
    };
    const bool hasSign = takeSign();
    m_hasCurrency = take(u'$');
    if (m_hasCurrency)
        skipBlanks();
    const bool hasSecondSign = m_hasCurrency && takeSign();
    return !(hasSign && hasSecondSign) && !(m_isInBrackets && (hasSign || hasSecondSign));
}

/// Digits up to the point; commas only with three digits behind them.
bool NumberReader::takeWhole() {
    int sinceComma = 0;
    for (;; ++m_at) {
        if (isDigit(peek())) {
            m_plain += char(peek());
            ++sinceComma;
        } else if (peek() == u',') {
            const bool isFirst = !m_hasCommas;
            if (isFirst ? sinceComma == 0 : sinceComma != 3)
                return false;
            m_hasCommas = true;
            sinceComma = 0;
        } else {
            return !m_hasCommas || sinceComma == 3;
        }
    }
}

bool NumberReader::takeDigits() {
    if (!takeWhole())
        return false;
    const qsizetype whole = m_plain.size();
    qsizetype decimals = 0;
    if (take(u'.')) {
        m_plain += '.';
        for (; isDigit(peek()); ++m_at, ++decimals)
            m_plain += char(peek());
        m_hasDecimals = decimals > 0;
    }
    return whole > 0 || m_hasDecimals;
}

bool NumberReader::takeExponent() {
    if (peek() != u'e' && peek() != u'E')
        return true;
    ++m_at;
    m_plain += 'e';
    if (take(u'-'))
        m_plain += '-';
    else
        take(u'+');
    if (!isDigit(peek()))
        return false;
    for (; isDigit(peek()); ++m_at)
        m_plain += char(peek());
    m_hasExponent = true;
    return true;
}

QString NumberReader::format() const {
    if (m_isPercent)
        return m_hasDecimals ? QStringLiteral("0.00%") : QStringLiteral("0%");
    if (m_hasExponent)
        return QStringLiteral("0.00E+00");
    if (!m_hasCurrency && !m_hasCommas)
        return {};
    QString format = m_hasCommas ? QStringLiteral("#,##0") : QStringLiteral("0");
    if (m_hasDecimals)
        format += u".00";
    return m_hasCurrency ? u'$' + format : format;
}

std::optional<TypedNumber> NumberReader::read() {
    if (!takeSigns() || !takeDigits() || !takeExponent())
        return {};
    skipBlanks();
    m_isPercent = !m_hasCurrency && !m_hasExponent && take(u'%');
    if (m_isInBrackets && !take(u')'))
        return {};
    if (m_at < m_text.size())
        return {};
    if (m_isPercent)
        m_plain += "e-2"; // exact, where a division is not
    double number = 0;
    const auto end = m_plain.constData() + m_plain.size();
    if (std::from_chars(m_plain.constData(), end, number).ec != std::errc())
        return {}; // no double is that large or that small
    if (m_isNegative || m_isInBrackets)
        number = -number;
    return TypedNumber{number + 0.0, format()}; // "-0" is 0
}

std::optional<TypedNumber> numberOf(QStringView text) {
    if (std::optional<TypedNumber> number = NumberReader(text).read())
        return number;
    if (const std::optional<TypedMoment> moment = ReadTypedMoment(text))
        return TypedNumber{moment->serial, moment->format};
    return {};
}

} // namespace

TypedValue ParseTyped(const QString& text) {
    if (text.isEmpty())
        return {};
    if (text.startsWith(u'\''))
        return {text.mid(1), {}};
    const QStringView trimmed = QStringView(text).trimmed();
    for (const bool truth : {true, false})
        if (trimmed.compare(truth ? u"TRUE" : u"FALSE", Qt::CaseInsensitive) == 0)
            return {truth, {}};
    if (CellError error{}; ParseCellError(trimmed, error))
        return {error, {}};
    if (const std::optional<TypedNumber> number = numberOf(trimmed))
        return {number->number, number->format};
    return {text, {}};
}

std::optional<double> NumberOfText(const QString& text) {
    const std::optional<TypedNumber> number = numberOf(QStringView(text).trimmed());
    if (!number)
        return {};
    return number->number;
}

} // namespace kelvrane
