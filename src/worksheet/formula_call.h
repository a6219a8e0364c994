// The arguments of a function that is being called, indexes from 0. Taking one that is an error, or
// of the wrong kind, gives 0 or "" and notes the error, which is then the function's result: a
// routine reads straight on, and only has to be safe for any number.
//
//     Operand Left(FunctionCall& call) { return TextResult(call.text(0).left(call.whole(1, 1))); }
#pragma once

#include "worksheet/formula_operands.h"
#include "worksheet/formula_values.h"

#include <QDate>

#include <optional>
#include <span>

namespace kelvrane::formulas {

class FunctionCall {
  public:
    FunctionCall(std::span<const Operand> arguments, Context& context)
        : m_arguments(arguments), m_context(context) {}

    int count() const { return static_cast<int>(m_arguments.size()); }
    Context& context() const { return m_context; }
    const Operand& operand(int i) const { return m_arguments[static_cast<size_t>(i)]; }
    Area area(int i) const { return Area(operand(i), m_context); }

    /// One value, an error among them.
    CellValue anyValue(int i) const { return SingleValue(operand(i), m_context); }
    CellValue value(int i);
    double number(int i);
    double number(int i, double ifAbsent) { return i < count() ? number(i) : ifAbsent; }
    /// Without its fraction, and within a billion.
    int whole(int i);
    int whole(int i, int ifAbsent) { return i < count() ? whole(i) : ifAbsent; }
    bool truth(int i);
    bool truth(int i, bool ifAbsent) { return i < count() ? truth(i) : ifAbsent; }
    QString text(int i);
    /// The day of a serial number, whatever its time.
    QDate date(int i);

    /// The numbers of all arguments: those in ranges, where texts and truth values are passed
    /// over, and those that a single value stands for.
    template <typename Visitor>
    void eachNumber(Visitor visitor) {
        for (int i = 0; i < count() && !m_error; ++i) {
            if (std::holds_alternative<CellValue>(operand(i)))
                visitor(number(i));
            else
                area(i).each([&](const CellValue& cell) {
                    if (const auto* plain = std::get_if<double>(&cell))
                        visitor(*plain);
                    else if (const auto* error = std::get_if<CellError>(&cell))
                        fail(*error);
                    return !m_error;
                });
        }
    }

    /// The first error is the result.
    CellValue fail(CellError error) {
        if (!m_error)
            m_error = error;
        return error;
    }
    const std::optional<CellError>& error() const { return m_error; }

  private:
    std::span<const Operand> m_arguments;
    Context& m_context;
    std::optional<CellError> m_error;
};

} // namespace kelvrane::formulas
