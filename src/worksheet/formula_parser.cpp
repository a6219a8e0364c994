#include "worksheet/formula_functions.h"
#include "worksheet/formula_program.h"
#include "worksheet/formula_tokens.h"

#include <algorithm>

namespace kelvrane::formulas {

namespace {

constexpr int tightest = 5;

/// How tight an operator binds. Signs and "%" bind tighter than all of these: -2^2 is 4.
constexpr int bindingOf(Operator op) {
    switch (op) {
    case Operator::Power:
        return tightest;
    case Operator::Multiply:
    case Operator::Divide:
        return 4;
    case Operator::Add:
    case Operator::Subtract:
        return 3;
    case Operator::Concatenate:
        return 2;
    default:
        return 1;
    }
}

class Parser {
  public:
    explicit Parser(const QString& text) : m_tokens(FormulaTokens(text)) {}

    std::optional<Program> run() {
        if (!takeExpression(1) || kind() != Token::Kind::End)
            return {};
        for (const CellRange& range : m_program.references)
            if (!m_program.precedents.contains(range))
                m_program.precedents.append(range);
        return std::move(m_program);
    }

  private:
    using Kind = Token::Kind;

    const Token& token() const { return m_tokens[m_at]; }
    Kind kind() const { return token().kind; }
    bool isOperator(Operator op) const { return kind() == Kind::Operator && token().op == op; }
    /// Where the next step goes.
    int here() const { return static_cast<int>(m_program.steps.size()); }

    void emitStep(Step step) { m_program.steps.push_back(step); }
    void emitConstant(const CellValue& value) {
        emitStep({Step::Code::Constant, 0, static_cast<int>(m_program.constants.size())});
        m_program.constants.push_back(value);
    }
    void emitOperator(Operator op) { emitStep({Step::Code::Operator, 0, static_cast<int>(op)}); }
    /// A jump whose target isn't known yet; its place.
    int emitJump(Step::Code code) {
        emitStep({code});
        return here() - 1;
    }
    void landHere(int jump) { m_program.steps[static_cast<size_t>(jump)].index = here(); }

    /// Operators that bind at least so tight, each from left to right.
    bool takeExpression(int binding) {
        if (binding > tightest)
            return takeSigned();
        if (!takeExpression(binding + 1))
            return false;
        while (kind() == Kind::Operator && token().op != Operator::Percent &&
               bindingOf(token().op) == binding) {
            const Operator op = token().op;
            ++m_at;
            if (!takeExpression(binding + 1))
                return false;
            emitOperator(op);
        }
        return true;
    }

    bool takeSigned() {
        int minuses = 0;
        for (; isOperator(Operator::Subtract) || isOperator(Operator::Add); ++m_at)
            minuses += token().op == Operator::Subtract;
        if (!takeOperand())
            return false;
        for (; isOperator(Operator::Percent); ++m_at) {
            emitConstant(100.0);
            emitOperator(Operator::Divide);
        }
        // "--A1" makes a number of a truth value or a text: twice is not the same as never.
        for (int i = minuses > 2 ? minuses % 2 + 2 : minuses; i > 0; --i) {
            emitConstant(-1.0);
            emitOperator(Operator::Multiply);
        }
        return true;
    }

    bool takeOperand() {
        const Token& operand = token();
        if (kind() == Kind::End)
            return false;
        ++m_at;
        switch (operand.kind) {
        case Kind::Number:
            emitConstant(operand.number);
            return true;
        case Kind::Text:
            emitConstant(operand.text);
            return true;
        case Kind::Error:
            emitConstant(operand.error);
            return true;
        case Kind::Name:
            emitConstant(valueOfName(operand.text));
            return true;
        case Kind::Reference:
            emitStep({Step::Code::Reference, 0, static_cast<int>(m_program.references.size())});
            m_program.references.push_back(ReferencedRange(operand.reference));
            return true;
        case Kind::Open:
            return enter() && takeExpression(1) && leave();
        case Kind::Function:
            ++m_at; // its bracket
            return enter() && takeFunction(operand.text) && leave();
        default:
            return false;
        }
    }

    static CellValue valueOfName(const QString& name) {
        if (name.compare(u"TRUE", Qt::CaseInsensitive) == 0)
            return true;
        if (name.compare(u"FALSE", Qt::CaseInsensitive) == 0)
            return false;
        return CellError::Name;
    }

    bool enter() { return ++m_depth <= DeepestNesting; }
    bool leave() {
        --m_depth;
        if (kind() == Kind::End)
            return true;
        ++m_at;
        return m_tokens[m_at - 1].kind == Kind::Close;
    }

    bool takeFunction(const QString& name) {
        const int function = FunctionIndex(name);
        if (function < 0)
            return takeCall({Step::Code::Unknown}, 0, MostArguments);
        const FunctionRow& row = Functions()[static_cast<size_t>(function)];
        m_program.isVolatile = m_program.isVolatile || row.isVolatile;
        if (row.form == FunctionForm::If)
            return takeIf();
        if (row.form == FunctionForm::IfError)
            return takeIfError();
        const int firstStep = here();
        if (!takeCall({Step::Code::Call, 0, function}, row.least, row.most))
            return false;
        if (row.form == FunctionForm::SumIf)
            fitSummedRange(firstStep);
        return true;
    }

    bool takeCall(Step step, int least, int most) {
        int count = 0;
        if (kind() != Kind::Close && kind() != Kind::End)
            do {
                if (++count > most || !takeArgument())
                    return false;
            } while (takeSeparator());
        step.count = static_cast<quint8>(count);
        emitStep(step);
        return count >= least;
    }

    bool takeSeparator() {
        const bool taken = kind() == Kind::Separator;
        m_at += taken;
        return taken;
    }

    /// An argument that is left out is empty.
    bool takeArgument() {
        if (kind() == Kind::Separator || kind() == Kind::Close || kind() == Kind::End) {
            emitConstant({});
            return true;
        }
        return takeExpression(1);
    }

    bool takeIf() {
        if (!takeArgument())
            return false;
        const int branch = emitJump(Step::Code::IfBranch);
        if (!takeSeparator() || !takeArgument())
            return false;
        const int end = emitJump(Step::Code::Jump);
        landHere(branch);
        if (!takeSeparator())
            emitConstant(false);
        else if (!takeArgument())
            return false;
        landHere(end);
        return true;
    }

    bool takeIfError() {
        if (!takeArgument())
            return false;
        const int branch = emitJump(Step::Code::ErrorBranch);
        if (!takeSeparator() || !takeArgument())
            return false;
        landHere(branch);
        return true;
    }

    /// SUMIF sums a range of the first one's shape, however large the summed one was written: that
    /// is what the formula depends on.
    void fitSummedRange(int firstStep) {
        const auto step = [&](int i) {
            return m_program.steps[static_cast<size_t>(firstStep + i)];
        };
        const bool isPlain = here() - firstStep == 4 && step(3).count == 3 &&
                             step(0).code == Step::Code::Reference &&
                             step(2).code == Step::Code::Reference;
        if (!isPlain)
            return;
        const CellRange tested = m_program.references[static_cast<size_t>(step(0).index)];
        CellRange& summed = m_program.references[static_cast<size_t>(step(2).index)];
        summed.last.row = std::min(summed.first.row + tested.rows(), SheetRows) - 1;
        summed.last.column = std::min(summed.first.column + tested.columns(), SheetColumns) - 1;
    }

    QList<Token> m_tokens;
    qsizetype m_at = 0;
    int m_depth = 0;
    Program m_program;
};

} // namespace

std::optional<Program> ParseFormula(const QString& text) {
    if (text.size() > LongestFormula)
        return {};
    return Parser(text).run();
}

} // namespace kelvrane::formulas
