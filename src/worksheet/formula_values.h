// Values as operators and functions take them: conversions, comparison, rounding. "The decimal text
// decides" means 15 significant digits, as users see a number, not the binary fraction behind it.
#pragma once

#include "worksheet/cell_value.h"
#include "worksheet/formula_tokens.h"

#include <QString>

#include <optional>

namespace kelvrane::formulas {

/// A longer text is no result of a formula, so that formulas that double a text stay bounded.
inline constexpr qsizetype LongestText = 32'767;

/// #NUM! for what is no finite number; 0 for -0.
CellValue NumberResult(double number);
/// #VALUE! for a text over LongestText.
CellValue TextResult(const QString& text);

/// The number of a value: an empty one is 0, TRUE 1, a text what it stands for. The error when
/// there is none; number is then 0.
std::optional<CellError> TakeNumber(const CellValue& value, double& number);
/// A number is true unless 0; of the texts only "TRUE" and "FALSE" are truth values.
std::optional<CellError> TakeTruth(const CellValue& value, bool& truth);
/// As "&" joins it: 15 significant digits, "TRUE"; an error as its text.
QString TextOf(const CellValue& value);

/// Equal but for the last bits, which a sum of decimal fractions leaves behind.
bool NearlyEqual(double one, double other);
/// Below, equal or above as a number under 0, 0 or over 0: numbers before texts before truth
/// values, texts without regard to case; an empty value is like 0, "" and FALSE. No errors.
int CompareValues(const CellValue& one, const CellValue& other);

enum class Rounding { HalfUp, Up, Down }; ///< away from zero, towards zero
/// Rounds the decimal text to so many places behind the point, before it when negative.
double Rounded(double number, int places, Rounding rounding);
/// The next lower whole number of the decimal text.
double Floor(double number);

/// Any operator but Percent, on values that are single.
CellValue Apply(Operator op, const CellValue& left, const CellValue& right);

} // namespace kelvrane::formulas
