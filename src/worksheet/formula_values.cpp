#include "worksheet/formula_values.h"

#include "worksheet/typed_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace kelvrane::formulas {

namespace {

constexpr int significantDigits = 15;

constexpr auto powersOfTen = [] {
    std::array<qint64, significantDigits + 1> powers{1};
    for (size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// magnitude = digits * 10 ^ (exponent - 14), with 15 digits.
struct Decimal {
    qint64 digits = 0;
    int exponent = 0;
};

Decimal decimalOf(double magnitude) {
    char text[32];
    const auto end = std::to_chars(text, std::end(text), magnitude, std::chars_format::scientific,
                                   significantDigits - 1)
                         .ptr;
    Decimal decimal;
    const char* at = text; // "d.dddddddddddddde+xx"
    for (; *at != 'e'; ++at)
        if (*at != '.')
            decimal.digits = decimal.digits * 10 + (*at - '0');
    ++at;
    std::from_chars(*at == '+' ? at + 1 : at, end, decimal.exponent);
    return decimal;
}

double scaled(qint64 digits, int exponent) {
    char text[40];
    char* at = std::to_chars(text, text + 24, digits).ptr;
    *at++ = 'e';
    at = std::to_chars(at, std::end(text), exponent).ptr;
    double number = 0;
    const bool tooLarge = std::from_chars(text, at, number).ec != std::errc() && exponent > 0;
    return tooLarge ? std::numeric_limits<double>::infinity() : number;
}

QString numberText(double number) {
    if (number == 0 || !std::isfinite(number))
        return QStringLiteral("0");
    const Decimal decimal = decimalOf(std::abs(number));
    QString digits = QString::number(decimal.digits);
    while (digits.endsWith(u'0'))
        digits.chop(1);
    const qsizetype point = decimal.exponent + 1; // digits before it
    QString text;
    if (point > 21 || point < -8) {
        text = digits.left(1);
        if (digits.size() > 1)
            text += u'.' + digits.mid(1);
        text += decimal.exponent < 0 ? u"E-" : u"E+";
        text += QString::number(std::abs(decimal.exponent)).rightJustified(2, u'0');
    } else if (point <= 0) {
        text = u"0." + QString(-point, u'0') + digits;
    } else if (point >= digits.size()) {
        text = digits.leftJustified(point, u'0');
    } else {
        text = digits.left(point) + u'.' + digits.mid(point);
    }
    return number < 0 ? QString(u'-' + text) : text;
}

/// What is left when nearly equal numbers are taken from each other is nothing.
double sum(double left, double right) {
    return NearlyEqual(left, -right) ? 0 : left + right;
}

CellValue add(double left, double right) {
    return NumberResult(sum(left, right));
}
CellValue subtract(double left, double right) {
    return NumberResult(sum(left, -right));
}
CellValue multiply(double left, double right) {
    return NumberResult(left * right);
}
CellValue divide(double left, double right) {
    return right == 0 ? CellValue(CellError::DivisionByZero) : NumberResult(left / right);
}
CellValue power(double left, double right) {
    if (left == 0 && right < 0)
        return CellError::DivisionByZero;
    if (left == 0 && right == 0)
        return CellError::Number;
    return NumberResult(std::pow(left, right));
}

constexpr CellValue (*arithmetic[])(double, double) = {add, subtract, multiply, divide, power};
static_assert(static_cast<int>(Operator::Power) + 1 == std::size(arithmetic));

bool compares(Operator op, int order) {
    switch (op) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

/// Numbers before texts before truth values.
int rankOf(const CellValue& value) {
    return IsText(value) ? 1 : std::holds_alternative<bool>(value) ? 2 : 0;
}

/// The empty value of the other one's kind.
CellValue emptyLike(const CellValue& other) {
    if (IsText(other))
        return QString();
    if (std::holds_alternative<bool>(other))
        return false;
    return 0.0;
}

} // namespace

CellValue NumberResult(double number) {
    if (!std::isfinite(number))
        return CellError::Number;
    return number == 0 ? 0.0 : number;
}

CellValue TextResult(const QString& text) {
    if (text.size() > LongestText)
        return CellError::Value;
    return text;
}

std::optional<CellError> TakeNumber(const CellValue& value, double& number) {
    number = 0;
    if (const auto* direct = std::get_if<double>(&value))
        number = *direct;
    else if (const auto* truth = std::get_if<bool>(&value))
        number = *truth ? 1 : 0;
    else if (const auto* error = std::get_if<CellError>(&value))
        return *error;
    else if (const auto* text = std::get_if<QString>(&value)) {
        const std::optional<double> meant = NumberOfText(*text);
        if (!meant)
            return CellError::Value;
        number = *meant;
    }
    return {};
}

std::optional<CellError> TakeTruth(const CellValue& value, bool& truth) {
    truth = false;
    if (const auto* text = std::get_if<QString>(&value)) {
        truth = text->compare(u"TRUE", Qt::CaseInsensitive) == 0;
        if (!truth && text->compare(u"FALSE", Qt::CaseInsensitive) != 0)
            return CellError::Value;
        return {};
    }
    double number = 0;
    const std::optional<CellError> error = TakeNumber(value, number);
    truth = number != 0;
    return error;
}

QString TextOf(const CellValue& value) {
    if (const auto* number = std::get_if<double>(&value))
        return numberText(*number);
    if (const auto* truth = std::get_if<bool>(&value))
        return *truth ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    if (const auto* error = std::get_if<CellError>(&value))
        return CellErrorText(*error);
    const auto* text = std::get_if<QString>(&value);
    return text ? *text : QString();
}

bool NearlyEqual(double one, double other) {
    constexpr double lastBits = 0x1p-48;
    return one == other || std::abs(one - other) < std::abs(one) * lastBits;
}

int CompareValues(const CellValue& one, const CellValue& other) {
    if (IsEmpty(one))
        return IsEmpty(other) ? 0 : CompareValues(emptyLike(other), other);
    if (IsEmpty(other))
        return CompareValues(one, emptyLike(one));
    if (const int ranks = rankOf(one) - rankOf(other); ranks != 0)
        return ranks;
    if (const auto* text = std::get_if<QString>(&one))
        return text->compare(std::get<QString>(other), Qt::CaseInsensitive);
    double left = 0;
    double right = 0;
    TakeNumber(one, left);
    TakeNumber(other, right);
    return NearlyEqual(left, right) ? 0 : left < right ? -1 : 1;
}

double Rounded(double number, int places, Rounding rounding) {
    const double magnitude = std::abs(number);
    if (magnitude == 0 || !std::isfinite(number))
        return number;
    const Decimal decimal = decimalOf(magnitude);
    const int dropped = significantDigits - 1 - decimal.exponent - places;
    if (dropped <= 0)
        return number;
    qint64 kept = 0;
    bool up = rounding == Rounding::Up; // where nothing is kept, something is dropped
    if (dropped <= significantDigits) {
        const qint64 unit = powersOfTen[static_cast<size_t>(dropped)];
        kept = decimal.digits / unit;
        const qint64 rest = decimal.digits % unit;
        up = rounding == Rounding::HalfUp ? rest * 2 >= unit : up && rest > 0;
    }
    return std::copysign(scaled(kept + up, -places), number);
}

double Floor(double number) {
    if (std::abs(number) >= 1e15)
        return std::floor(number);
    return Rounded(number, 0, number < 0 ? Rounding::Up : Rounding::Down);
}

CellValue Apply(Operator op, const CellValue& left, const CellValue& right) {
    if (IsError(left))
        return left;
    if (IsError(right))
        return right;
    if (op <= Operator::Power) {
        double one = 0;
        double other = 0;
        if (const auto error = TakeNumber(left, one))
            return *error;
        if (const auto error = TakeNumber(right, other))
            return *error;
        return arithmetic[static_cast<size_t>(op)](one, other);
    }
    if (op == Operator::Concatenate)
        return TextResult(TextOf(left) + TextOf(right));
    return compares(op, CompareValues(left, right));
}

} // namespace kelvrane::formulas
