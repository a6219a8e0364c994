#include "platform/texts.h"

#include <QByteArray>
#include <QStringDecoder>

#include <array>
#include <cmath>
#include <locale>
#include <sstream>

namespace kelvrane {

namespace {

/// The number of a text of at most `digits` decimal digits; -1 for anything else.
int digitsOf(QStringView text, int digits) {
    if (text.isEmpty() || text.size() > digits)
        return -1;
    int number = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return -1;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number;
}

QString clockText(QTime time, bool withSeconds) {
    const int hour = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    QString text =
        QString::number(hour) + u':' + QString::number(time.minute()).rightJustified(2, u'0');
    if (withSeconds)
        text += u':' + QString::number(time.second()).rightJustified(2, u'0');
    return text + (time.hour() < 12 ? u" AM" : u" PM");
}

QString significantText(double value, int digits) {
    if (value == 0)
        return QStringLiteral("0"); // also for -0
    return QString::fromLatin1(QByteArray::number(value, 'G', digits));
}

/// The number text without blanks, "$", commas and closing NULs, as a C parser takes it; empty when
/// the text isn't numeric.
QByteArray plainNumber(QStringView text) {
    while (text.endsWith(QChar::Null))
        text.chop(1);
    text = text.trimmed();

    QByteArray plain;
    qsizetype at = 0;
    const auto peek = [&] { return at < text.size() ? text[at].unicode() : char16_t(0); };
    const auto isDigit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
    const auto takeSign = [&] {
        if (peek() != u'+' && peek() != u'-')
            return false;
        plain += static_cast<char>(peek());
        ++at;
        return true;
    };

    bool hasSign = takeSign();
    if (peek() == u'$') {
        ++at;
        hasSign = hasSign || takeSign();
    }
    bool hasDigits = false;
    for (; isDigit(peek()) || (hasDigits && peek() == u','); ++at) {
        if (peek() == u',')
            continue;
        plain += static_cast<char>(peek());
        hasDigits = true;
    }
    if (peek() == u'.') {
        plain += '.';
        for (++at; isDigit(peek()); ++at) {
            plain += static_cast<char>(peek());
            hasDigits = true;
        }
    }
    if (hasDigits && (peek() == u'e' || peek() == u'E')) {
        plain += 'e';
        ++at;
        takeSign();
        if (!isDigit(peek()))
            return {};
        for (; isDigit(peek()); ++at)
            plain += static_cast<char>(peek());
    }
    return hasDigits && at == text.size() ? plain : QByteArray();
}

/// Windows-1252 for the bytes 0x80 to 0x9F; the five that it leaves open map to themselves.
constexpr std::array<char16_t, 32> windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

QString DateText(QDate date) {
    if (!date.isValid())
        return {};
    return QString::number(date.month()) + u'/' + QString::number(date.day()) + u'/' +
           QString::number(date.year()).rightJustified(4, u'0');
}

QDate DateFromText(const QString& text) {
    const QStringView whole = QStringView(text).trimmed();
    const bool stored = whole.contains(u'-');
    const QList<QStringView> parts = whole.split(stored ? u'-' : u'/');
    if (parts.size() != 3)
        return {};
    const QStringView yearPart = parts[stored ? 0 : 2];
    const int month = digitsOf(parts[stored ? 1 : 0], 2);
    const int day = digitsOf(parts[stored ? 2 : 1], 2);
    if (yearPart.size() != 4)
        return {};
    return QDate(digitsOf(yearPart, 4), month, day);
}

QString StoredDateText(QDate date) {
    return date.toString(Qt::ISODate);
}

QString ClockText(QTime time) {
    return clockText(time, false);
}

QString SystemTimeText(QTime time) {
    return clockText(time, true);
}

QString DoubleText(double value) {
    return significantText(value, 15);
}

QString SingleText(float value) {
    return significantText(static_cast<double>(value), 7);
}

QString TwoDecimalsText(double value) {
    if (!std::isfinite(value))
        Raise(errors::Overflow);
    // "d.dddddddddddddde+xx": the decimal text decides, not the binary fraction behind it.
    const QByteArray scientific = QByteArray::number(std::abs(value), 'e', 14);
    const int exponent = scientific.mid(scientific.indexOf('e') + 1).toInt();
    QByteArray digits = scientific.left(1) + scientific.mid(2, 14);

    // Now 0.digits times ten to the power of (exponent + 1). Keep two places behind the point.
    qsizetype kept = exponent + 1 + 2;
    if (kept < 0) {
        digits = "000";
        kept = 3;
    } else {
        digits = "000" + digits; // room for a carry, and for "0.0"
        kept += 3;
        if (kept > digits.size())
            digits += QByteArray(kept - digits.size(), '0');
        const bool up = kept < digits.size() && digits[kept] >= '5';
        digits.truncate(kept);
        for (qsizetype i = kept - 1; up && i >= 0; --i) {
            if (digits[i] != '9') {
                ++digits[i];
                break;
            }
            digits[i] = '0';
        }
    }
    QByteArray whole = digits.left(digits.size() - 2);
    while (whole.size() > 1 && whole.startsWith('0'))
        whole.remove(0, 1);
    const QByteArray text = whole + '.' + digits.right(2);
    return QString::fromLatin1(value < 0 && text != "0.00" ? '-' + text : text);
}

QString BooleanText(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

bool IsNumeric(const QString& text) {
    return !plainNumber(text).isEmpty();
}

double ToDouble(const QString& text) {
    const QByteArray plain = plainNumber(text);
    if (plain.isEmpty())
        Raise(errors::TypeMismatch);
    bool inRange = false;
    double value = plain.toDouble(&inRange);
    if (!inRange) { // too large or too small, which this reader tells apart
        std::istringstream reader(plain.toStdString());
        reader.imbue(std::locale::classic());
        if (!(reader >> value))
            Raise(errors::Overflow);
    }
    return value;
}

Int16 ToInt16(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= -32768.0 && rounded <= 32767.0))
        Raise(errors::Overflow);
    return static_cast<qint64>(rounded);
}

Int16 ToInt16(const QString& text) {
    return ToInt16(ToDouble(text));
}

QByteArray ToFileBytes(const QString& text) {
    return text.toUtf8();
}

QString FromFileBytes(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    if (!decoder.hasError())
        return text;
    text = QString::fromLatin1(bytes);
    for (QChar& c : text)
        if (c >= QChar(0x80) && c < QChar(0xA0))
            c = windows1252[c.unicode() - 0x80];
    return text;
}

} // namespace kelvrane
