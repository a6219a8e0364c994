#include "worksheet/date_picture.h"

#include "worksheet/date_names.h"

#include <QDate>

#include <algorithm>
#include <cmath>

namespace kelvrane {

namespace {

using Kind = PictureToken::Kind;

constexpr double lastSerial = 2'958'466;   // 10000-01-01, which is the first one too many
constexpr qint64 firstJulianDay = 2415019; // 1899-12-30
constexpr int mostFractionDigits = 3;

/// A serial number taken apart, all parts from one rounded figure.
struct MomentParts {
    QDate date;
    qint64 seconds = 0; ///< since serial 0
    int hour = 0;
    int minute = 0;
    int second = 0;
    QString fraction; ///< three digits
};

MomentParts partsOf(double serial, int fractionDigits) {
    const int digits = qMin(fractionDigits, mostFractionDigits);
    const double unit = std::pow(10.0, mostFractionDigits - digits);
    const double exact = serial * 86'400'000.0;
    const auto milliseconds = qint64(std::round(exact / unit) * unit);
    MomentParts parts;
    parts.seconds = milliseconds / 1000;
    parts.date = QDate::fromJulianDay(firstJulianDay + parts.seconds / 86400);
    parts.hour = int(parts.seconds / 3600 % 24);
    parts.minute = int(parts.seconds / 60 % 60);
    parts.second = int(parts.seconds % 60);
    parts.fraction = QString::number(milliseconds % 1000).rightJustified(3, u'0');
    return parts;
}

QString padded(qint64 number, int digits) {
    return QString::number(number).rightJustified(digits, u'0');
}

/// One or two letters: the number; three: "Jan"; four: "January"; five: "J".
QString named(const char16_t* name, int number, int letters) {
    if (letters <= 2)
        return padded(number, letters);
    const QString whole = QString::fromUtf16(name);
    return letters == 4 ? whole : whole.left(letters == 5 ? 1 : 3);
}

/// "AM" or "PM" for "AM/PM" in any case; "A/P" keeps its case.
QString dayHalf(const PictureToken& token, int hour) {
    const bool isShort = token.text.size() == 3;
    if (isShort)
        return hour < 12 ? token.text.left(1) : token.text.right(1);
    return hour < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
}

QString tokenText(const PictureToken& token, const MomentParts& parts, bool hasDayHalf) {
    const int half = parts.hour % 12;
    switch (token.kind) {
    case Kind::Year:
        return token.count <= 2 ? padded(parts.date.year() % 100, 2) : padded(parts.date.year(), 4);
    case Kind::Month:
        return named(MonthNames[size_t(parts.date.month() - 1)], parts.date.month(), token.count);
    case Kind::Day:
        return named(DayNames[size_t(parts.date.dayOfWeek() - 1)], parts.date.day(), token.count);
    case Kind::Hour:
        return padded(!hasDayHalf ? parts.hour : half == 0 ? 12 : half, token.count);
    case Kind::Minute:
        return padded(parts.minute, token.count);
    case Kind::Second:
        return padded(parts.second, token.count);
    case Kind::SecondFraction:
        return u'.' + parts.fraction.leftJustified(token.count, u'0').left(token.count);
    case Kind::ElapsedHours:
        return padded(parts.seconds / 3600, token.count);
    case Kind::ElapsedMinutes:
        return padded(parts.seconds / 60, token.count);
    case Kind::ElapsedSeconds:
        return padded(parts.seconds, token.count);
    case Kind::DayHalf:
        return dayHalf(token, parts.hour);
    default:
        return token.text;
    }
}

bool countsElapsedTime(const PictureSection& section) {
    return section.has(Kind::ElapsedHours) || section.has(Kind::ElapsedMinutes) ||
           section.has(Kind::ElapsedSeconds);
}

} // namespace

QString DatePictureText(const PictureSection& section, double serial) {
    const bool isElapsed = countsElapsedTime(section);
    const bool isInRange = std::abs(serial) < lastSerial && (serial >= 0 || isElapsed);
    if (!isInRange)
        return QStringLiteral("###");
    const MomentParts parts = partsOf(std::abs(serial), section.fractionDigits);
    QString text;
    for (const PictureToken& token : section.tokens)
        text += tokenText(token, parts, section.hasDayHalf);
    const bool showsNegative =
        serial < 0 && std::ranges::any_of(text, [](QChar c) { return c >= u'1' && c <= u'9'; });
    return showsNegative ? u'-' + text : text;
}

} // namespace kelvrane
