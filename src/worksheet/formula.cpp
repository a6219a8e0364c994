#include "worksheet/formula.h"

#include "worksheet/formula_evaluator.h"
#include "worksheet/formula_program.h"

#include <utility>

namespace kelvrane {

struct Formula::Data {
    bool isValid = false;
    formulas::Program program;
};

Formula::Formula(const QString& text) : m_data(std::make_unique<Data>()) {
    if (std::optional<formulas::Program> program = formulas::ParseFormula(text)) {
        m_data->isValid = true;
        m_data->program = *std::move(program);
    }
}

Formula::~Formula() = default;
Formula::Formula(Formula&&) noexcept = default;
Formula& Formula::operator=(Formula&&) noexcept = default;

bool Formula::isValid() const {
    return m_data->isValid;
}

const QList<CellRange>& Formula::precedents() const {
    return m_data->program.precedents;
}

bool Formula::isVolatile() const {
    return m_data->program.isVolatile;
}

CellValue Formula::evaluate(const FormulaCells& cells) const {
    if (!m_data->isValid)
        return CellError::Name;
    return formulas::Evaluate(m_data->program, cells);
}

} // namespace kelvrane
