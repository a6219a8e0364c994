#include "worksheet/format_picture.h"

#include "worksheet/picture_settling.h"

#include <algorithm>
#include <array>

namespace kelvrane {

namespace {

using Kind = PictureToken::Kind;

struct LetterRow {
    char16_t letter;
    Kind plain;
    Kind elapsed; ///< in brackets; Literal: not there
    int mostLetters;
};
// "m" is a month until the tokens around it tell that it means minutes.
constexpr std::array<LetterRow, 5> letterRows = {{
    {u'y', Kind::Year, Kind::Literal, 4},
    {u'm', Kind::Month, Kind::ElapsedMinutes, 5},
    {u'd', Kind::Day, Kind::Literal, 4},
    {u'h', Kind::Hour, Kind::ElapsedHours, 2},
    {u's', Kind::Second, Kind::ElapsedSeconds, 2},
}};

struct WordRow {
    const char16_t* word;
    Kind kind;
};
constexpr std::array<WordRow, 4> wordRows = {{
    {u"General", Kind::General},
    {u"AM/PM", Kind::DayHalf},
    {u"AMPM", Kind::DayHalf},
    {u"A/P", Kind::DayHalf},
}};

constexpr std::array<const char16_t*, 8> colorNames = {u"Black",   u"Blue", u"Cyan",  u"Green",
                                                       u"Magenta", u"Red",  u"White", u"Yellow"};

/// The longer ones first.
constexpr std::array<const char16_t*, 6> comparisons = {u">=", u"<=", u"<>", u">", u"<", u"="};

const LetterRow* rowOfLetter(QChar c) {
    const auto row = std::ranges::find(letterRows, c.toLower().unicode(), &LetterRow::letter);
    return row == letterRows.end() ? nullptr : &*row;
}

/// Reads one section after the other.
class PictureReader {
  public:
    explicit PictureReader(QStringView format) : m_format(format) {}

    bool atEnd() const { return m_at >= m_format.size(); }
    /// Steps over the ";" between two sections.
    void takeSemicolon() { ++m_at; }
    /// Takes the section; false when it can't be read.
    bool takeSection(PictureSection& section);

  private:
    QChar peek(qsizetype ahead = 0) const {
        return m_at + ahead < m_format.size() ? m_format[m_at + ahead] : QChar();
    }
    bool takeToken(PictureSection& section);
    bool takeQuoted(PictureSection& section);
    bool takeEscaped(PictureSection& section);
    bool takeBracket(PictureSection& section);
    bool takeWord(PictureSection& section);
    bool takeLetters(PictureSection& section);
    void takeSign(PictureSection& section);

    QStringView m_format;
    qsizetype m_at = 0;
};

void addLiteral(PictureSection& section, const QString& text) {
    section.tokens.append({.kind = Kind::Literal, .text = text});
}

bool PictureReader::takeSection(PictureSection& section) {
    while (!atEnd() && peek() != u';')
        if (!takeToken(section))
            return false;
    return true;
}

bool PictureReader::takeToken(PictureSection& section) {
    switch (peek().unicode()) {
    case u'"':
        return takeQuoted(section);
    case u'\\':
    case u'_':
    case u'*':
        return takeEscaped(section);
    case u'[':
        return takeBracket(section);
    default:
        if (!takeWord(section) && !takeLetters(section))
            takeSign(section);
        return true;
    }
}

bool PictureReader::takeQuoted(PictureSection& section) {
    const qsizetype end = m_format.indexOf(u'"', m_at + 1);
    if (end < 0)
        return false;
    addLiteral(section, m_format.mid(m_at + 1, end - m_at - 1).toString());
    m_at = end + 1;
    return true;
}

/// "\x" is x, "_x" the room of an x, which is a blank here, and "*x" fills a cell with x, which
/// text alone can't.
bool PictureReader::takeEscaped(PictureSection& section) {
    if (m_at + 1 >= m_format.size())
        return false;
    const QChar sign = peek();
    if (sign != u'*')
        addLiteral(section, sign == u'_' ? QStringLiteral(" ") : QString(peek(1)));
    m_at += 2;
    return true;
}

std::optional<PictureCondition> conditionOf(QStringView text) {
    for (const char16_t* comparison : comparisons) {
        const QStringView sign(comparison);
        if (!text.startsWith(sign))
            continue;
        bool isNumber = false;
        const double limit = text.mid(sign.size()).trimmed().toDouble(&isNumber);
        if (!isNumber)
            return {};
        return PictureCondition{sign.toString(), limit};
    }
    return {};
}

/// "[Red]", "[>=100]", "[h]", "[$€-407]"; any other bracket says nothing here.
bool PictureReader::takeBracket(PictureSection& section) {
    const qsizetype end = m_format.indexOf(u']', m_at + 1);
    if (end < 0)
        return false;
    const QStringView inside = m_format.mid(m_at + 1, end - m_at - 1);
    m_at = end + 1;

    if (inside.startsWith(u'$')) {
        const QStringView symbol = inside.mid(1);
        const qsizetype locale = symbol.lastIndexOf(u'-');
        addLiteral(section, (locale < 0 ? symbol : symbol.left(locale)).toString());
        return true;
    }
    if (const std::optional<PictureCondition> condition = conditionOf(inside)) {
        section.condition = condition;
        return true;
    }
    for (const char16_t* name : colorNames)
        if (inside.compare(QStringView(name), Qt::CaseInsensitive) == 0)
            section.color = QString::fromUtf16(name);
    const LetterRow* row = inside.isEmpty() ? nullptr : rowOfLetter(inside.front());
    const auto isSameLetter = [&](QChar c) { return c.toLower() == inside.front().toLower(); };
    if (row && row->elapsed != Kind::Literal && std::ranges::all_of(inside, isSameLetter))
        section.tokens.append({.kind = row->elapsed, .count = int(inside.size())});
    return true;
}

bool PictureReader::takeWord(PictureSection& section) {
    const QStringView rest = m_format.mid(m_at);
    for (const WordRow& row : wordRows) {
        const QStringView word(row.word);
        if (!rest.startsWith(word, Qt::CaseInsensitive))
            continue;
        section.tokens.append({.kind = row.kind, .text = rest.left(word.size()).toString()});
        m_at += word.size();
        return true;
    }
    return false;
}

bool PictureReader::takeLetters(PictureSection& section) {
    const LetterRow* row = rowOfLetter(peek());
    if (!row)
        return false;
    int count = 0;
    while (!atEnd() && peek().toLower() == row->letter) {
        ++m_at;
        ++count;
    }
    section.tokens.append({.kind = row->plain, .count = qMin(count, row->mostLetters)});
    return true;
}

void PictureReader::takeSign(PictureSection& section) {
    const QChar c = peek();
    PictureToken token{.kind = Kind::Literal, .text = QString(c), .letter = c.unicode()};
    ++m_at;
    if (c == u'0' || c == u'#' || c == u'?') {
        token.kind = Kind::Digit;
    } else if (c == u'.') {
        token.kind = Kind::Point;
    } else if (c == u',') {
        token.kind = Kind::Comma;
    } else if (c == u'/') {
        token.kind = Kind::Slash;
    } else if (c == u'@') {
        token.kind = Kind::Text;
    } else if (c == u'%') {
        section.shift += 2;
    } else if ((c == u'E' || c == u'e') && (peek() == u'+' || peek() == u'-')) {
        token.kind = Kind::Exponent;
        token.text += peek();
        ++m_at;
    }
    section.tokens.append(token);
}

} // namespace

bool PictureCondition::holds(double value) const {
    if (comparison == u">=")
        return value >= limit;
    if (comparison == u"<=")
        return value <= limit;
    if (comparison == u"<>")
        return value != limit;
    if (comparison == u">")
        return value > limit;
    return comparison == u"<" ? value < limit : value == limit;
}

bool PictureCondition::admitsOnlyNegatives() const {
    return (comparison == u"<" && limit <= 0) ||
           ((comparison == u"<=" || comparison == u"=") && limit < 0);
}

bool PictureSection::has(PictureToken::Kind wanted) const {
    return std::ranges::find(tokens, wanted, &PictureToken::kind) != tokens.end();
}

std::optional<QList<PictureSection>> ReadPicture(QStringView format) {
    if (format.size() > LongestPicture)
        return {};
    QList<PictureSection> sections;
    PictureReader reader(format);
    for (;;) {
        PictureSection section;
        const bool isRead = reader.takeSection(section) && SettlePicture(section);
        if (!isRead || sections.size() == 4)
            return {};
        sections.append(section);
        if (reader.atEnd())
            return sections;
        reader.takeSemicolon(); // a closing one opens one more, empty section
    }
}

} // namespace kelvrane
