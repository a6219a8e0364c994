#include "worksheet/typed_date.h"

#include "worksheet/cell_value.h"
#include "worksheet/date_names.h"

#include <QList>

#include <array>

namespace kelvrane {

namespace {

/// No date and time is longer; longer texts aren't looked at.
constexpr qsizetype longestText = 64;

/// A run of digits, a run of letters, or a sign; blanks lie between.
struct Piece {
    enum class Kind { Number, Word, Sign };
    Kind kind = Kind::Sign;
    QStringView text;
    int number = -1;
};

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Nothing for a number of more than six digits.
std::optional<QList<Piece>> piecesOf(QStringView text) {
    QList<Piece> pieces;
    for (qsizetype at = 0; at < text.size();) {
        if (text[at].isSpace()) {
            ++at;
            continue;
        }
        qsizetype end = at + 1;
        Piece piece;
        if (isDigit(text[at])) {
            piece.kind = Piece::Kind::Number;
            while (end < text.size() && isDigit(text[end]))
                ++end;
        } else if (text[at].isLetter()) {
            piece.kind = Piece::Kind::Word;
            while (end < text.size() && text[end].isLetter())
                ++end;
        }
        piece.text = text.mid(at, end - at);
        if (piece.kind == Piece::Kind::Number) {
            if (piece.text.size() > 6)
                return {};
            piece.number = piece.text.toInt();
        }
        pieces.append(piece);
        at = end;
    }
    return pieces;
}

/// The 1-based place of a name or its first three letters, "Sept" too; 0 for any other word.
template <size_t Count>
int placeOfName(const std::array<const char16_t*, Count>& names, QStringView word) {
    for (size_t i = 0; i < Count && word.size() >= 3; ++i) {
        const QStringView name(names[i]);
        const bool isShort = word.size() == 3 || (word.size() == 4 && name.size() == 9);
        if ((isShort || word.size() == name.size()) && name.startsWith(word, Qt::CaseInsensitive))
            return int(i) + 1;
    }
    return 0;
}

/// Reads the pieces from left to right.
class MomentReader {
  public:
    explicit MomentReader(const QList<Piece>& pieces) : m_pieces(pieces) {}
    std::optional<TypedMoment> read();

  private:
    const Piece& peek(int ahead = 0) const {
        static const Piece none;
        return m_at + ahead < m_pieces.size() ? m_pieces[m_at + ahead] : none;
    }
    bool isSign(char16_t sign, int ahead = 0) const {
        const Piece& piece = peek(ahead);
        return piece.kind == Piece::Kind::Sign && piece.text == QChar(sign);
    }
    bool isNumber(int ahead, qsizetype mostDigits) const {
        const Piece& piece = peek(ahead);
        return piece.kind == Piece::Kind::Number && piece.text.size() <= mostDigits;
    }
    bool take(char16_t sign);
    void takeDayName();
    bool takeDate();
    bool takeNumericDate(char16_t separator);
    bool takeDayFirst();
    bool takeMonthFirst();
    bool takeYear(int month, int day, const QString& dayAndMonth);
    bool setDate(int year, int month, int day, const QString& format);
    bool takeTime();
    bool takeFraction();
    bool takeDayHalf();

    QList<Piece> m_pieces;
    int m_at = 0;
    std::optional<QDate> m_date;
    QString m_dateFormat;
    double m_seconds = 0;
    int m_hours = 0;
    QString m_timeFormat;
};

bool MomentReader::take(char16_t sign) {
    if (!isSign(sign))
        return false;
    ++m_at;
    return true;
}

QString monthPicture(QStringView word) {
    return word.size() > 4 ? QStringLiteral("mmmm") : QStringLiteral("mmm");
}

void MomentReader::takeDayName() {
    if (placeOfName(DayNames, peek().text) == 0)
        return;
    ++m_at;
    take(u',');
}

bool MomentReader::setDate(int year, int month, int day, const QString& format) {
    const QDate date(year, month, day);
    if (!date.isValid() || DateSerial(date) < 0)
        return false;
    m_date = date;
    m_dateFormat = format;
    return true;
}

/// The year at the reader's place ends the date.
bool MomentReader::takeYear(int month, int day, const QString& dayAndMonth) {
    const Piece year = peek();
    const bool isShort = year.text.size() == 2;
    if (year.kind != Piece::Kind::Number || !(isShort || year.text.size() == 4))
        return false;
    ++m_at;
    const int century = !isShort ? 0 : year.number < 30 ? 2000 : 1900;
    return setDate(century + year.number, month, day, dayAndMonth + (isShort ? u"yy" : u"yyyy"));
}

/// "1/5/2003" or, with the year first, "2003-01-05".
bool MomentReader::takeNumericDate(char16_t separator) {
    if (!isSign(separator, 1) || !isSign(separator, 3) || !isNumber(0, 4) || !isNumber(2, 2) ||
        !isNumber(4, 4))
        return false;
    const int first = peek(0).number;
    const int second = peek(2).number;
    const QChar sign(separator);
    if (peek().text.size() == 4) {
        const int third = peek(4).number;
        m_at += 5;
        return setDate(first, second, third, u"yyyy" % sign % u"mm" % sign % u"dd");
    }
    if (!isNumber(0, 2))
        return false;
    m_at += 4;
    return takeYear(first, second, u"m" % sign % u"d" % sign);
}

/// "5-Jan-2003", "5 January 2003", "5 Jan, 2003".
bool MomentReader::takeDayFirst() {
    if (!isNumber(0, 2))
        return false;
    const int day = peek().number;
    const bool hasSigns = isSign(u'-', 1);
    const Piece word = peek(hasSigns ? 2 : 1);
    const int month = placeOfName(MonthNames, word.text);
    if (month == 0)
        return false;
    m_at += hasSigns ? 3 : 2;
    if (hasSigns && !take(u'-'))
        return false;
    take(u',');
    const QString sign = hasSigns ? QStringLiteral("-") : QStringLiteral(" ");
    return takeYear(month, day, u'd' + sign + monthPicture(word.text) + sign);
}

/// "January 5, 2003".
bool MomentReader::takeMonthFirst() {
    const Piece word = peek();
    const int month = placeOfName(MonthNames, word.text);
    if (month == 0 || !isNumber(1, 2))
        return false;
    const int day = peek(1).number;
    m_at += 2;
    take(u',');
    return takeYear(month, day, monthPicture(word.text) + u" d, ");
}

bool MomentReader::takeDate() {
    takeDayName();
    const int start = m_at;
    const auto tried = [&](bool isTaken) {
        if (!isTaken)
            m_at = start;
        return isTaken;
    };
    return tried(takeNumericDate(u'/')) || tried(takeNumericDate(u'-')) || tried(takeDayFirst()) ||
           tried(takeMonthFirst());
}

bool MomentReader::takeDayHalf() {
    const QStringView word = peek().text;
    const auto is = [&](const char16_t* name) {
        return word.compare(QStringView(name), Qt::CaseInsensitive) == 0;
    };
    const bool isMorning = is(u"AM") || is(u"A");
    if (!isMorning && !is(u"PM") && !is(u"P"))
        return true;
    if (m_hours > 12)
        return false;
    ++m_at;
    m_seconds += 3600.0 * ((m_hours % 12) + (isMorning ? 0 : 12) - m_hours);
    m_timeFormat += u" AM/PM";
    return true;
}

/// ".5" behind the seconds.
bool MomentReader::takeFraction() {
    if (!take(u'.'))
        return true;
    const Piece fraction = peek();
    if (fraction.kind != Piece::Kind::Number)
        return false;
    ++m_at;
    m_seconds += QString(u"0." + fraction.text).toDouble();
    m_timeFormat += u'.' + QString(qMin(fraction.text.size(), qsizetype(3)), u'0');
    return true;
}

bool MomentReader::takeTime() {
    if (!isNumber(0, 4))
        return false;
    m_hours = peek().number;
    ++m_at;
    m_seconds = m_hours * 3600.0;
    const bool hasMinutes = isSign(u':');
    m_timeFormat = m_hours >= 24 && !m_date ? QStringLiteral("[h]:mm") : QStringLiteral("h:mm");
    if (m_hours >= 24 && m_date)
        return false;
    for (const int unit : {60, 1}) {
        if (!take(u':'))
            break;
        if (!isNumber(0, 2) || peek().number > 59)
            return false;
        m_seconds += peek().number * unit;
        ++m_at;
        if (unit == 1) {
            m_timeFormat += u":ss";
            if (!takeFraction())
                return false;
        }
    }
    const int beforeHalf = m_at;
    return takeDayHalf() && (hasMinutes || m_at > beforeHalf);
}

std::optional<TypedMoment> MomentReader::read() {
    const bool hasDate = takeDate();
    if (!hasDate && m_at > 0)
        return {};
    const bool hasTime = m_at < m_pieces.size();
    if (hasTime && !takeTime())
        return {};
    if (m_at < m_pieces.size() || !(hasDate || hasTime))
        return {};
    TypedMoment moment;
    moment.serial = (hasDate ? DateSerial(*m_date) : 0) + m_seconds / 86400.0;
    moment.format = m_dateFormat + (hasDate && hasTime ? u" " : u"") + m_timeFormat;
    return moment;
}

} // namespace

std::optional<TypedMoment> ReadTypedMoment(QStringView text) {
    const bool isPossible = text.size() <= longestText && !text.isEmpty();
    if (!isPossible)
        return {};
    const std::optional<QList<Piece>> pieces = piecesOf(text);
    if (!pieces)
        return {};
    return MomentReader(*pieces).read();
}

} // namespace kelvrane
