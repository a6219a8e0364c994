#include "worksheet/formula_functions.h"

namespace kelvrane::formulas {

namespace {

/// Whether any truth value is this one. In ranges, texts and empty cells say nothing; #VALUE! when
/// nothing was said.
CellValue isAny(FunctionCall& call, bool wanted) {
    bool found = false;
    bool isSaid = false;
    const auto take = [&](bool truth) {
        isSaid = true;
        found = found || truth == wanted;
    };
    for (int i = 0; i < call.count(); ++i) {
        if (std::holds_alternative<CellValue>(call.operand(i))) {
            take(call.truth(i));
            continue;
        }
        call.area(i).each([&](const CellValue& value) {
            if (const auto* error = std::get_if<CellError>(&value))
                call.fail(*error);
            bool truth = false;
            if (!IsText(value) && !IsEmpty(value) && !TakeTruth(value, truth))
                take(truth);
            return !call.error();
        });
    }
    return isSaid ? CellValue(found) : call.fail(CellError::Value);
}

} // namespace

Operand And(FunctionCall& call) {
    const CellValue anyFalse = isAny(call, false);
    return IsError(anyFalse) ? anyFalse : CellValue(!std::get<bool>(anyFalse));
}

Operand Choose(FunctionCall& call) {
    const int choice = call.whole(0);
    if (choice < 1 || choice >= call.count())
        return call.fail(CellError::Value);
    return call.operand(choice);
}

Operand False(FunctionCall&) {
    return CellValue(false);
}

Operand Not(FunctionCall& call) {
    return CellValue(!call.truth(0));
}

Operand Or(FunctionCall& call) {
    return isAny(call, true);
}

Operand True(FunctionCall&) {
    return CellValue(true);
}

} // namespace kelvrane::formulas
