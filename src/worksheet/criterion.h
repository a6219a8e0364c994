// What COUNTIF and SUMIF ask of a cell, and the wildcards of the lookups: "*" for any text, "?" for
// one character, "~" before one that is meant itself.
#pragma once

#include "worksheet/cell_value.h"
#include "worksheet/formula_tokens.h"

#include <QString>

namespace kelvrane::formulas {

/// Wildcards in a longer pattern aren't looked for, so that no pattern takes long.
inline constexpr qsizetype LongestPattern = 255;

bool HasWildcards(QStringView pattern);
/// The whole text, without regard to case. Takes text times pattern steps at most.
bool MatchesPattern(QStringView text, QStringView pattern);
/// The same for a pattern that may hold no wildcards, or be too long for them.
bool MatchesText(QStringView text, QStringView pattern);

class Criterion {
  public:
    /// A number, "Rent", "R*", ">=10", "<>", "=", "<>x". An empty value asks for 0.
    explicit Criterion(const CellValue& wanted);

    bool matches(const CellValue& value) const;

  private:
    bool equals(const CellValue& value) const;

    Operator m_op = Operator::Equal;
    CellValue m_operand; ///< empty: asks for empty cells
    bool m_takesEmptyText = false;
};

} // namespace kelvrane::formulas
