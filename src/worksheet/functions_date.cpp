#include "worksheet/formula_functions.h"

#include <algorithm>
#include <cmath>

namespace kelvrane::formulas {

namespace {

QTime timeAt(FunctionCall& call, int i) {
    const double number = call.number(i);
    if (number < 0)
        call.fail(CellError::Number);
    return MomentOfSerial(number - std::floor(number)).time();
}

struct WeekRow {
    int type;
    Qt::DayOfWeek first;
    int firstNumber;
};
constexpr WeekRow weekRows[] = {
    {1, Qt::Sunday, 1},    {2, Qt::Monday, 1},     {3, Qt::Monday, 0},    {11, Qt::Monday, 1},
    {12, Qt::Tuesday, 1},  {13, Qt::Wednesday, 1}, {14, Qt::Thursday, 1}, {15, Qt::Friday, 1},
    {16, Qt::Saturday, 1}, {17, Qt::Sunday, 1},
};

} // namespace

/// Months and days past their ends run on into the next ones. Years below 1900 count from there.
Operand Date(FunctionCall& call) {
    const int year = call.whole(0);
    const int month = call.whole(1);
    const int day = call.whole(2);
    constexpr int farthest = 10'000'000;
    if (year < 0 || year > 9999 || std::abs(month) > farthest || std::abs(day) > farthest)
        return call.fail(CellError::Number);
    const QDate date =
        QDate(year < 1900 ? year + 1900 : year, 1, 1).addMonths(month - 1).addDays(day - 1);
    if (date.year() < 1 || date.year() > 9999)
        return call.fail(CellError::Number);
    return CellValue(DateSerial(date));
}

Operand Day(FunctionCall& call) {
    return CellValue(double(call.date(0).day()));
}

Operand Hour(FunctionCall& call) {
    return CellValue(double(timeAt(call, 0).hour()));
}

Operand Minute(FunctionCall& call) {
    return CellValue(double(timeAt(call, 0).minute()));
}

Operand Month(FunctionCall& call) {
    return CellValue(double(call.date(0).month()));
}

Operand Now(FunctionCall& call) {
    return CellValue(MomentSerial(call.context().cells().now()));
}

Operand Today(FunctionCall& call) {
    return CellValue(DateSerial(call.context().cells().now().date()));
}

Operand Weekday(FunctionCall& call) {
    const QDate date = call.date(0);
    const auto week = std::ranges::find(weekRows, call.whole(1, 1), &WeekRow::type);
    if (week == std::end(weekRows))
        return call.fail(CellError::Number);
    return CellValue(double((date.dayOfWeek() - week->first + 7) % 7 + week->firstNumber));
}

Operand Year(FunctionCall& call) {
    return CellValue(double(call.date(0).year()));
}

} // namespace kelvrane::formulas
