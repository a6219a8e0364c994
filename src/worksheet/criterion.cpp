#include "worksheet/criterion.h"

#include "worksheet/formula_values.h"
#include "worksheet/typed_value.h"

#include <optional>

namespace kelvrane::formulas {

namespace {

bool isWildcard(QChar c) {
    return c == u'*' || c == u'?';
}

/// One place of a pattern: a character, or a wildcard.
struct PatternPlace {
    QChar character;
    bool isWild = false;
    qsizetype next = 0;
};

PatternPlace placeAt(QStringView pattern, qsizetype at) {
    const QChar c = pattern[at];
    const bool escapes = c == u'~' && at + 1 < pattern.size() &&
                         (isWildcard(pattern[at + 1]) || pattern[at + 1] == u'~');
    if (escapes)
        return {pattern[at + 1], false, at + 2};
    return {c, isWildcard(c), at + 1};
}

CellValue operandOf(const QString& text) {
    if (text.isEmpty())
        return {};
    if (const std::optional<double> number = NumberOfText(text))
        return *number;
    if (text.compare(u"TRUE", Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"FALSE", Qt::CaseInsensitive) == 0)
        return false;
    if (CellError error{}; ParseCellError(text, error))
        return error;
    return text;
}

} // namespace

bool HasWildcards(QStringView pattern) {
    return pattern.contains(u'*') || pattern.contains(u'?') || pattern.contains(u'~');
}

bool MatchesPattern(QStringView text, QStringView pattern) {
    qsizetype at = 0;
    qsizetype in = 0;
    qsizetype starIn = -1; // behind the last "*", and what it has taken so far
    qsizetype starAt = 0;
    while (at < text.size()) {
        if (in < pattern.size()) {
            const PatternPlace place = placeAt(pattern, in);
            if (place.isWild && place.character == u'*') {
                starIn = in = place.next;
                starAt = at;
                continue;
            }
            if (place.isWild || place.character.toCaseFolded() == text[at].toCaseFolded()) {
                in = place.next;
                ++at;
                continue;
            }
        }
        if (starIn < 0)
            return false;
        in = starIn;
        at = ++starAt;
    }
    while (in < pattern.size() && pattern[in] == u'*')
        ++in;
    return in == pattern.size();
}

bool MatchesText(QStringView text, QStringView pattern) {
    return pattern.size() <= LongestPattern && HasWildcards(pattern)
               ? MatchesPattern(text, pattern)
               : text.compare(pattern, Qt::CaseInsensitive) == 0;
}

Criterion::Criterion(const CellValue& wanted) : m_operand(wanted) {
    if (IsEmpty(wanted))
        m_operand = 0.0;
    const auto* text = std::get_if<QString>(&wanted);
    if (!text)
        return;
    const QList<Token> tokens = FormulaTokens(u'=' + text->left(2));
    QString operand = *text;
    if (tokens.first().kind == Token::Kind::Operator && tokens.first().op >= Operator::Equal &&
        tokens.first().op <= Operator::GreaterEqual && tokens.first().begin == 1) {
        m_op = tokens.first().op;
        operand = text->sliced(tokens.first().end - 1);
    }
    m_operand = operandOf(operand);
    m_takesEmptyText = text->isEmpty();
}

bool Criterion::equals(const CellValue& value) const {
    if (IsEmpty(m_operand))
        return IsEmpty(value) ||
               (m_takesEmptyText && IsText(value) && std::get<QString>(value).isEmpty());
    if (const auto* error = std::get_if<CellError>(&m_operand))
        return IsError(value) && std::get<CellError>(value) == *error;
    if (IsError(value) || IsEmpty(value))
        return false;
    const auto* text = std::get_if<QString>(&value);
    if (const auto* pattern = std::get_if<QString>(&m_operand))
        return text && MatchesText(*text, *pattern);
    if (text && IsNumber(m_operand)) {
        const std::optional<double> number = NumberOfText(*text);
        return number && NearlyEqual(*number, std::get<double>(m_operand));
    }
    return CompareValues(value, m_operand) == 0;
}

bool Criterion::matches(const CellValue& value) const {
    if (m_op == Operator::Equal)
        return equals(value);
    if (m_op == Operator::NotEqual)
        return !equals(value);
    // An order is one among values of a kind.
    if (value.index() != m_operand.index() || IsError(value) || IsEmpty(value))
        return false;
    const CellValue holds = Apply(m_op, value, m_operand);
    return std::get<bool>(holds);
}

} // namespace kelvrane::formulas
