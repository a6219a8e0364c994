// Runs the steps of a formula.
#pragma once

#include "worksheet/formula.h"
#include "worksheet/formula_program.h"

namespace kelvrane::formulas {

/// Ranges under operators and functions of single values give blocks, value by value: what
/// SUMPRODUCT((A1:A9="x")*B1:B9) lives on. A block as the result of the whole formula is #VALUE!.
CellValue Evaluate(const Program& program, const FormulaCells& cells);

} // namespace kelvrane::formulas
