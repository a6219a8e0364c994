#include "worksheet/formula_call.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::formulas {

CellValue FunctionCall::value(int i) {
    CellValue value = anyValue(i);
    if (const auto* error = std::get_if<CellError>(&value))
        fail(*error);
    return value;
}

double FunctionCall::number(int i) {
    double number = 0;
    if (const auto error = TakeNumber(anyValue(i), number))
        fail(*error);
    return number;
}

int FunctionCall::whole(int i) {
    constexpr double billion = 1e9;
    return static_cast<int>(std::clamp(std::trunc(number(i)), -billion, billion));
}

bool FunctionCall::truth(int i) {
    bool truth = false;
    if (const auto error = TakeTruth(anyValue(i), truth))
        fail(*error);
    return truth;
}

QString FunctionCall::text(int i) {
    const CellValue one = value(i);
    return IsError(one) ? QString() : TextOf(one);
}

QDate FunctionCall::date(int i) {
    constexpr double farthest = 4e6; // days, past the year 9999
    const double serial = std::floor(number(i));
    const QDate date =
        QDate(1899, 12, 30).addDays(static_cast<qint64>(std::clamp(serial, -farthest, farthest)));
    if (date.year() < 1 || date.year() > 9999)
        fail(CellError::Number);
    return date;
}

} // namespace kelvrane::formulas
