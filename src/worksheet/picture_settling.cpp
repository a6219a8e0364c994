#include "worksheet/picture_settling.h"

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

using Kind = PictureToken::Kind;

bool isDatePart(Kind kind) {
    return kind >= Kind::Year;
}

/// "s.00" has a fraction of the second.
void settleFractions(PictureSection& section) {
    const QList<PictureToken> tokens = std::exchange(section.tokens, {});
    const auto isZero = [&](qsizetype i) { return i < tokens.size() && tokens[i].letter == u'0'; };
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const Kind before = section.tokens.isEmpty() ? Kind::Literal : section.tokens.last().kind;
        const bool isAfterSeconds = before == Kind::Second || before == Kind::ElapsedSeconds;
        if (before == Kind::SecondFraction && isZero(i)) {
            const int count = ++section.tokens.last().count;
            section.fractionDigits = qMax(section.fractionDigits, count);
        } else if (isAfterSeconds && tokens[i].kind == Kind::Point && isZero(i + 1)) {
            section.tokens.append({.kind = Kind::SecondFraction});
        } else {
            section.tokens.append(tokens[i]);
        }
    }
}

/// "m" after hours or before seconds means minutes; what only numbers know is literal.
void settleDate(PictureSection& section) {
    settleFractions(section);
    PictureToken* last = nullptr;
    const auto isShortMonth = [](const PictureToken& token) {
        return token.kind == Kind::Month && token.count <= 2;
    };
    for (PictureToken& token : section.tokens) {
        if (token.kind == Kind::DayHalf)
            section.hasDayHalf = true;
        if (!isDatePart(token.kind))
            token.kind = Kind::Literal;
        if (token.kind == Kind::DayHalf || token.kind == Kind::Literal)
            continue;
        const bool isAfterHours =
            last && (last->kind == Kind::Hour || last->kind == Kind::ElapsedHours);
        if (isAfterHours && isShortMonth(token))
            token.kind = Kind::Minute;
        if (token.kind == Kind::Second && last && isShortMonth(*last))
            last->kind = Kind::Minute;
        last = &token;
    }
}

/// The place of the last token of a kind before an end; -1 for none.
qsizetype lastOf(Kind kind, const QList<PictureToken>& tokens, qsizetype end) {
    while (--end >= 0 && tokens[end].kind != kind)
        ;
    return end;
}

/// A comma between two places parts thousands; commas behind the last place before the point, or
/// behind the last one of all, divide by a thousand each; any other is literal.
void settleCommas(PictureSection& section) {
    const QList<PictureToken> tokens = std::exchange(section.tokens, {});
    const auto endOfRun = [&](auto... kinds) {
        const auto isEnd = [&](Kind kind) { return ((kind == kinds) || ...); };
        return std::ranges::find_if(tokens, isEnd, &PictureToken::kind) - tokens.begin();
    };
    const qsizetype point = endOfRun(Kind::Point, Kind::Exponent);
    const qsizetype lastWhole = lastOf(Kind::Digit, tokens, point);
    const qsizetype lastPlace = lastOf(Kind::Digit, tokens, endOfRun(Kind::Exponent));
    const qsizetype firstPlace = endOfRun(Kind::Digit);
    bool isClosing = false;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const bool isComma = tokens[i].kind == Kind::Comma;
        isClosing = i == lastWhole || i == lastPlace || (isClosing && isComma);
        if (!isComma)
            section.tokens.append(tokens[i]);
        else if (i > firstPlace && i < lastWhole)
            section.groups = true;
        else if (isClosing)
            section.shift -= 3;
        else
            section.tokens.append({.kind = Kind::Literal, .text = QStringLiteral(",")});
    }
}

/// Gives the places of one run of digits their powers of ten, and makes every place inside of a "0"
/// a "0".
void settlePlaces(QList<PictureToken*>& places, int highest) {
    for (qsizetype i = 0; i < places.size(); ++i)
        places[i]->place = highest - int(i);
    const bool isDecimal = highest < 0;
    if (isDecimal)
        std::ranges::reverse(places);
    bool isInside = false;
    for (PictureToken* place : places) {
        isInside = isInside || place->letter == u'0';
        if (isInside)
            place->letter = u'0';
    }
}

/// False for fractions.
bool settleNumber(PictureSection& section) {
    settleCommas(section);
    QList<PictureToken*> whole;
    QList<PictureToken*> decimals;
    QList<PictureToken*> exponent;
    bool hasPoint = false;
    bool hasSlash = false;
    for (PictureToken& token : section.tokens) {
        if (token.kind == Kind::Digit && section.hasExponent) {
            token.kind = Kind::ExponentDigit;
            exponent.append(&token);
        } else if (token.kind == Kind::Digit) {
            if (hasSlash)
                return false;
            (hasPoint ? decimals : whole).append(&token);
        } else if (token.kind == Kind::Slash) {
            hasSlash = hasSlash || !whole.isEmpty();
            token.kind = Kind::Literal;
        } else if (token.kind == Kind::Point) {
            if (std::exchange(hasPoint, true) || section.hasExponent)
                token.kind = Kind::Literal;
        } else if (token.kind == Kind::Exponent) {
            if (std::exchange(section.hasExponent, true))
                token.kind = Kind::Literal;
        }
    }
    section.wholePlaces = int(whole.size());
    section.decimalPlaces = int(decimals.size());
    settlePlaces(whole, section.wholePlaces - 1);
    settlePlaces(decimals, -1);
    settlePlaces(exponent, int(exponent.size()) - 1);
    return !section.hasExponent || !exponent.isEmpty();
}

} // namespace

bool SettlePicture(PictureSection& section) {
    const auto counts = [&](auto&& test) {
        return std::ranges::count_if(section.tokens, test, &PictureToken::kind);
    };
    if (counts(isDatePart) > 0) {
        section.kind = PictureSection::Kind::Date;
        settleDate(section);
        return true;
    }
    const auto texts = counts([](Kind kind) { return kind == Kind::Text; });
    if (texts > 0)
        section.kind = PictureSection::Kind::Text;
    return texts <= MostTextPlaces && settleNumber(section);
}

} // namespace kelvrane
