// A number format taken apart: sections, and in each the tokens from left to right. Knows nothing
// of values; number_format.h fills the tokens.
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace kelvrane {

struct PictureToken {
    enum class Kind {
        Literal,       ///< text as it stands, the "%" included
        Slash,         ///< "/" outside of quotes: of a date, or of a fraction
        Digit,         ///< letter is '0', '#' or '?', place its power of ten
        Point,         ///< the first one outside of quotes
        Comma,         ///< only while a section is read
        Exponent,      ///< "E+" or "E-"
        ExponentDigit, ///< place as of Digit
        Text,          ///< "@"
        General,       ///< the number as General shows it
        Year,          ///< the date's parts: count letters
        Month,
        Day,
        Hour,
        Minute,
        Second,
        SecondFraction, ///< count digits, the point included in the picture
        ElapsedHours,   ///< "[h]": all hours, not those of the day
        ElapsedMinutes,
        ElapsedSeconds,
        DayHalf, ///< "AM/PM", "A/P" or "AMPM" as written
    };
    Kind kind = Kind::Literal;
    QString text = {};
    char16_t letter = 0;
    int count = 0;
    int place = 0;
};

struct PictureCondition {
    QString comparison; ///< ">=", "<", "<>", ...
    double limit = 0;
    bool holds(double value) const;
    bool admitsOnlyNegatives() const;
};

struct PictureSection {
    enum class Kind { Number, Date, Text };
    Kind kind = Kind::Number;
    QList<PictureToken> tokens;
    std::optional<PictureCondition> condition;
    QString color; ///< "Red", or "" for none

    // Of numbers.
    bool groups = false; ///< thousands are parted by commas
    int shift = 0;       ///< the number is shown times ten to this power: "%" 2, a closing comma -3
    int wholePlaces = 0;
    int decimalPlaces = 0;
    bool hasExponent = false;

    // Of dates.
    bool hasDayHalf = false;
    int fractionDigits = 0; ///< of the second
    bool has(PictureToken::Kind wanted) const;
};

/// A format of more characters, or with more "@", is none: what a cell shows stays bounded.
inline constexpr qsizetype LongestPicture = 1024;
inline constexpr int MostTextPlaces = 8;

/// The sections of a format, one to four; nothing for a format that can't be read: unclosed quotes
/// or brackets, fractions, five sections. Not for "" and "General".
std::optional<QList<PictureSection>> ReadPicture(QStringView format);

} // namespace kelvrane
