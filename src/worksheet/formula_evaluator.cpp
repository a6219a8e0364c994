#include "worksheet/formula_evaluator.h"

#include "worksheet/formula_functions.h"

#include <QVarLengthArray>

#include <algorithm>
#include <span>

namespace kelvrane::formulas {

namespace {

/// Several cells or values, for which an operator is run one by one.
bool isMany(const Operand& operand) {
    if (std::holds_alternative<CellValue>(operand))
        return false;
    const auto* range = std::get_if<CellRange>(&operand);
    return !range || range->first != range->last;
}

class Evaluation {
  public:
    Evaluation(const Program& program, const FormulaCells& cells)
        : m_program(program), m_context(cells) {}

    CellValue run() {
        run(0, static_cast<int>(m_program.steps.size()));
        const CellValue result = SingleValue(m_stack.last(), m_context);
        if (const auto* number = std::get_if<double>(&result))
            return NumberResult(*number);
        return IsEmpty(result) ? CellValue(0.0) : result;
    }

  private:
    /// Runs the steps from begin to before end, which leave one operand more.
    void run(int begin, int end) {
        for (int at = begin; at < end;) {
            const Step& step = m_program.steps[static_cast<size_t>(at)];
            const auto index = static_cast<size_t>(step.index);
            ++at;
            switch (step.code) {
            case Step::Code::Constant:
                m_stack.append(m_program.constants[index]);
                break;
            case Step::Code::Reference:
                m_stack.append(m_program.references[index]);
                break;
            case Step::Code::Operator:
                reduce(2, applied(static_cast<Operator>(step.index)));
                break;
            case Step::Code::Call:
                reduce(step.count, called(Functions()[index], top(step.count)));
                break;
            case Step::Code::Unknown:
                reduce(step.count, CellValue(CellError::Name));
                break;
            case Step::Code::IfBranch:
                at = branched(at, step.index);
                break;
            case Step::Code::ErrorBranch:
                at = errorBranched(at, step.index);
                break;
            case Step::Code::Jump:
                at = step.index;
                break;
            }
        }
    }

    std::span<const Operand> top(int count) const {
        return {m_stack.constEnd() - count, static_cast<size_t>(count)};
    }
    void reduce(int count, Operand result) {
        m_stack.resize(m_stack.size() - count);
        m_stack.append(std::move(result));
    }
    Operand pop() {
        Operand operand = m_stack.last();
        m_stack.removeLast();
        return operand;
    }

    Operand applied(Operator op) {
        const std::span<const Operand> pair = top(2);
        if (!isMany(pair[0]) && !isMany(pair[1]))
            return Apply(op, SingleValue(pair[0], m_context), SingleValue(pair[1], m_context));
        return valueByValue(pair, [op](std::span<const Operand> values) {
            return Apply(op, std::get<CellValue>(values[0]), std::get<CellValue>(values[1]));
        });
    }

    Operand called(const FunctionRow& row, std::span<const Operand> arguments) {
        if (row.form == FunctionForm::Single && std::ranges::any_of(arguments, isMany))
            return valueByValue(arguments, [&](std::span<const Operand> values) {
                return std::get<CellValue>(calledOnce(row, values));
            });
        return calledOnce(row, arguments);
    }

    Operand calledOnce(const FunctionRow& row, std::span<const Operand> arguments) {
        FunctionCall call(arguments, m_context);
        Operand result = row.routine(call);
        return call.error() ? Operand(CellValue(*call.error())) : result;
    }

    /// The block of the results for the operands' values at each place; it reaches as far as the
    /// largest of them.
    template <typename Compute>
    Operand valueByValue(std::span<const Operand> operands, Compute compute) {
        std::vector<Area> areas;
        int rows = 1;
        int columns = 1;
        for (const Operand& operand : operands) {
            const Area& area = areas.emplace_back(operand, m_context);
            rows = std::max(rows, area.rows());
            columns = std::max(columns, area.columns());
        }
        const std::shared_ptr<Block> block = m_context.newBlock(rows, columns);
        if (!block)
            return CellValue(CellError::Value);
        std::vector<Operand> values(operands.size());
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column) {
                std::ranges::transform(areas, values.begin(), [&](const Area& area) {
                    return Operand(area.spread(row, column));
                });
                block->values.push_back(compute(values));
                if (!m_context.affordText(block->values.back()))
                    return CellValue(CellError::Value);
            }
        return std::shared_ptr<const Block>(block);
    }

    /// The operand of a branch that stands on its own.
    Operand branch(int begin, int end) {
        run(begin, end);
        return pop();
    }

    /// Where to go on. Of a single condition only one branch is run; of several, both are.
    int branched(int then, int otherwise) {
        const Operand condition = pop();
        if (!isMany(condition)) {
            bool truth = false;
            if (const auto error = TakeTruth(SingleValue(condition, m_context), truth)) {
                m_stack.append(CellValue(*error));
                return endOf(otherwise);
            }
            return truth ? then : otherwise;
        }
        const Operand three[] = {condition, branch(then, otherwise - 1),
                                 branch(otherwise, endOf(otherwise))};
        m_stack.append(valueByValue(three, [](std::span<const Operand> values) {
            bool truth = false;
            if (const auto error = TakeTruth(std::get<CellValue>(values[0]), truth))
                return CellValue(*error);
            return std::get<CellValue>(values[truth ? 1 : 2]);
        }));
        return endOf(otherwise);
    }
    /// The step before the other branch jumps to the end.
    int endOf(int otherwise) const {
        return m_program.steps[static_cast<size_t>(otherwise) - 1].index;
    }

    int errorBranched(int otherwise, int end) {
        if (!isMany(m_stack.last())) {
            if (!IsError(SingleValue(m_stack.last(), m_context)))
                return end;
            m_stack.removeLast();
            return otherwise;
        }
        const Operand tried = pop();
        const Operand two[] = {tried, branch(otherwise, end)};
        m_stack.append(valueByValue(two, [](std::span<const Operand> values) {
            const bool failed = IsError(std::get<CellValue>(values[0]));
            return std::get<CellValue>(values[failed ? 1 : 0]);
        }));
        return end;
    }

    const Program& m_program;
    Context m_context;
    QVarLengthArray<Operand, 8> m_stack;
};

} // namespace

CellValue Evaluate(const Program& program, const FormulaCells& cells) {
    return Evaluation(program, cells).run();
}

} // namespace kelvrane::formulas
