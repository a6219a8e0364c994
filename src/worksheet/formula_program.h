// A formula as steps on a stack of operands, in the order in which they are run. A branch that
// isn't taken is jumped over.
//
//     =IF(A1>0,A1*2,"none")
//         Reference 0   Constant 0   Operator Greater   IfBranch 7
//         Reference 0   Constant 1   Operator Multiply   (Jump 8 at 6)
//         Constant 2
#pragma once

#include "worksheet/cell_address.h"
#include "worksheet/cell_value.h"

#include <QList>
#include <QString>

#include <optional>
#include <vector>

namespace kelvrane::formulas {

struct Step {
    enum class Code : quint8 {
        Constant,    ///< pushes constants[index]
        Reference,   ///< pushes references[index]
        Operator,    ///< the two uppermost operands; index is the Operator
        Call,        ///< functions[index] on the count uppermost operands
        Unknown,     ///< an unknown function on the count uppermost operands
        IfBranch,    ///< takes a truth value: on, or at index where it is false
        ErrorBranch, ///< takes a value: on where it is an error, else it stays, and at index
        Jump,        ///< to index
    };
    Code code;
    quint8 count = 0;
    int index = 0;
};

struct Program {
    std::vector<Step> steps;
    std::vector<CellValue> constants;
    std::vector<CellRange> references;
    QList<CellRange> precedents; ///< each once
    bool isVolatile = false;
};

inline constexpr int DeepestNesting = 64;
inline constexpr qsizetype LongestFormula = 8'192;

/// Nothing for a text that is no formula. Brackets left open at the end are closed there.
std::optional<Program> ParseFormula(const QString& text);

} // namespace kelvrane::formulas
