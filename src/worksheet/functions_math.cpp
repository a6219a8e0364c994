#include "worksheet/formula_functions.h"

#include <cmath>

namespace kelvrane::formulas {

namespace {

CellValue rounded(FunctionCall& call, Rounding rounding) {
    const double number = call.number(0);
    return NumberResult(Rounded(number, call.whole(1), rounding));
}

} // namespace

Operand Abs(FunctionCall& call) {
    return NumberResult(std::abs(call.number(0)));
}

Operand Int(FunctionCall& call) {
    return NumberResult(Floor(call.number(0)));
}

/// Has the sign of the divisor. What is left by a quotient that is whole in decimals is nothing.
Operand Mod(FunctionCall& call) {
    const double number = call.number(0);
    const double divisor = call.number(1);
    if (divisor == 0)
        return call.fail(CellError::DivisionByZero);
    const double taken = Floor(number / divisor) * divisor;
    if (!std::isfinite(taken))
        return call.fail(CellError::Number);
    return Apply(Operator::Subtract, number, taken);
}

Operand Power(FunctionCall& call) {
    const double base = call.number(0);
    return Apply(Operator::Power, base, call.number(1));
}

Operand Round(FunctionCall& call) {
    return rounded(call, Rounding::HalfUp);
}

Operand RoundDown(FunctionCall& call) {
    return rounded(call, Rounding::Down);
}

Operand RoundUp(FunctionCall& call) {
    return rounded(call, Rounding::Up);
}

Operand Sqrt(FunctionCall& call) {
    return NumberResult(std::sqrt(call.number(0)));
}

} // namespace kelvrane::formulas
