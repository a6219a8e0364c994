#include "worksheet/criterion.h"
#include "worksheet/formula_functions.h"
#include "worksheet/typed_value.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace kelvrane::formulas {

namespace {

/// A sum keeps more digits than a number has, so that ten times 0.1 is 1, and what is left of
/// numbers that cancel out is nothing.
class Total {
  public:
    void add(double number) {
        m_sum += number;
        m_largest = std::max(m_largest, std::abs(number));
        ++m_count;
    }
    double count() const { return m_count; }
    double sum() const {
        const auto sum = static_cast<double>(m_sum);
        return NearlyEqual(m_largest, m_largest + sum) ? 0 : sum;
    }

  private:
    long double m_sum = 0;
    double m_largest = 0;
    double m_count = 0;
};

Total totalOf(FunctionCall& call) {
    Total total;
    call.eachNumber([&](double number) { total.add(number); });
    return total;
}

/// The number that stays against all others; 0 when there is none.
template <typename IsBetter>
CellValue best(FunctionCall& call, IsBetter isBetter) {
    std::optional<double> found;
    call.eachNumber([&](double number) {
        if (!found || isBetter(number, *found))
            found = number;
    });
    return NumberResult(found.value_or(0));
}

/// How many cells a range has, in a whole column those below the sheet's contents too.
double sizeOf(const Operand& operand, const Area& area) {
    const auto* range = std::get_if<CellRange>(&operand);
    return range ? double(range->rows()) * range->columns() : double(area.rows()) * area.columns();
}

bool isTooLong(const CellValue& criterion) {
    return IsText(criterion) && std::get<QString>(criterion).size() > LongestPattern;
}

double factorOf(const CellValue& value, bool isComputed) {
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    const auto* truth = std::get_if<bool>(&value);
    return truth && isComputed && *truth ? 1 : 0;
}

} // namespace

Operand Average(FunctionCall& call) {
    const Total total = totalOf(call);
    if (total.count() == 0)
        return call.fail(CellError::DivisionByZero);
    return NumberResult(total.sum() / total.count());
}

/// Errors aren't numbers, and spread no further. An argument that is left out counts.
Operand Count(FunctionCall& call) {
    double count = 0;
    for (int i = 0; i < call.count(); ++i) {
        const bool isDirect = std::holds_alternative<CellValue>(call.operand(i));
        call.area(i).each([&](const CellValue& value) {
            double number = 0;
            count += isDirect ? !TakeNumber(value, number) : IsNumber(value);
            return true;
        });
    }
    return CellValue(count);
}

Operand CountA(FunctionCall& call) {
    double count = 0;
    for (int i = 0; i < call.count(); ++i) {
        const bool isDirect = std::holds_alternative<CellValue>(call.operand(i));
        call.area(i).each([&](const CellValue& value) {
            count += isDirect || !IsEmpty(value);
            return true;
        });
    }
    return CellValue(count);
}

Operand CountIf(FunctionCall& call) {
    const CellValue wanted = call.anyValue(1);
    if (isTooLong(wanted))
        return call.fail(CellError::Value);
    const Criterion criterion(wanted);
    const Area area = call.area(0);
    double count = 0;
    double seen = 0;
    area.each([&](const CellValue& value) {
        ++seen;
        count += criterion.matches(value);
        return true;
    });
    if (criterion.matches({}))
        count += sizeOf(call.operand(0), area) - seen;
    return CellValue(count);
}

Operand Max(FunctionCall& call) {
    return best(call, std::greater<>());
}

Operand Median(FunctionCall& call) {
    std::vector<double> numbers;
    call.eachNumber([&](double number) { numbers.push_back(number); });
    if (numbers.empty())
        return call.fail(CellError::Number);
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::ranges::nth_element(numbers, middle);
    if (numbers.size() % 2 == 1)
        return NumberResult(*middle);
    return NumberResult((*std::max_element(numbers.begin(), middle) + *middle) / 2);
}

Operand Min(FunctionCall& call) {
    return best(call, std::less<>());
}

Operand Product(FunctionCall& call) {
    double product = 1;
    bool isEmpty = true;
    call.eachNumber([&](double number) {
        product *= number;
        isEmpty = false;
    });
    return NumberResult(isEmpty ? 0 : product);
}

Operand Sum(FunctionCall& call) {
    return NumberResult(totalOf(call).sum());
}

Operand SumIf(FunctionCall& call) {
    const CellValue wanted = call.anyValue(1);
    if (isTooLong(wanted))
        return call.fail(CellError::Value);
    const Criterion criterion(wanted);
    const Area tested = call.area(0);
    const Area summed = call.area(call.count() - 1 == 2 ? 2 : 0);
    Total total;
    const int rows = std::min(tested.rows(), summed.rows());
    const int columns = std::min(tested.columns(), summed.columns());
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            if (!criterion.matches(tested.at(row, column)))
                continue;
            const CellValue value = summed.at(row, column);
            if (const auto* error = std::get_if<CellError>(&value))
                return call.fail(*error);
            total.add(factorOf(value, false));
        }
    return NumberResult(total.sum());
}

/// What is no number counts as 0, but for a truth value that a comparison gave.
Operand SumProduct(FunctionCall& call) {
    std::vector<Area> areas;
    for (int i = 0; i < call.count(); ++i)
        areas.push_back(call.area(i));
    Total total;
    for (int row = 0; row < areas.front().rows(); ++row)
        for (int column = 0; column < areas.front().columns(); ++column) {
            double product = 1;
            for (int i = 0; i < call.count(); ++i) {
                const Area& area = areas[static_cast<size_t>(i)];
                if (area.rows() != areas.front().rows() ||
                    area.columns() != areas.front().columns())
                    return call.fail(CellError::Value);
                const CellValue value = area.at(row, column);
                if (const auto* error = std::get_if<CellError>(&value))
                    return call.fail(*error);
                product *= factorOf(value, !std::holds_alternative<CellRange>(call.operand(i)));
            }
            total.add(product);
        }
    return NumberResult(total.sum());
}

} // namespace kelvrane::formulas
