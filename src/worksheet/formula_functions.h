// The one table of functions. A new one is a row there and a routine in the file of its field.
#pragma once

#include "worksheet/formula_call.h"

#include <QString>

#include <span>

namespace kelvrane::formulas {

using Routine = Operand (*)(FunctionCall&);

inline constexpr int MostArguments = 255;

enum class FunctionForm {
    Single, ///< single values in, a single value out: on ranges it is called value by value
    Ranges, ///< takes its arguments as they are
    SumIf,  ///< Ranges; its third argument is as large as its first
    If,     ///< computes one of its branches only: no routine
    IfError,
};

struct FunctionRow {
    QLatin1StringView name;
    int least; ///< arguments
    int most;
    FunctionForm form;
    Routine routine;
    bool isVolatile = false;
};

/// By name.
std::span<const FunctionRow> Functions();
/// The place of a name in any case, -1 for an unknown one.
int FunctionIndex(QStringView name);

// functions_math.cpp
Operand Abs(FunctionCall& call);
Operand Int(FunctionCall& call);
Operand Mod(FunctionCall& call);
Operand Power(FunctionCall& call);
Operand Round(FunctionCall& call);
Operand RoundDown(FunctionCall& call);
Operand RoundUp(FunctionCall& call);
Operand Sqrt(FunctionCall& call);

// functions_totals.cpp
Operand Average(FunctionCall& call);
Operand Count(FunctionCall& call);
Operand CountA(FunctionCall& call);
Operand CountIf(FunctionCall& call);
Operand Max(FunctionCall& call);
Operand Median(FunctionCall& call);
Operand Min(FunctionCall& call);
Operand Product(FunctionCall& call);
Operand Sum(FunctionCall& call);
Operand SumIf(FunctionCall& call);
Operand SumProduct(FunctionCall& call);

// functions_logic.cpp
Operand And(FunctionCall& call);
Operand Choose(FunctionCall& call);
Operand False(FunctionCall& call);
Operand Not(FunctionCall& call);
Operand Or(FunctionCall& call);
Operand True(FunctionCall& call);

// functions_text.cpp
Operand Concatenate(FunctionCall& call);
Operand Find(FunctionCall& call);
Operand Fixed(FunctionCall& call);
Operand Left(FunctionCall& call);
Operand Len(FunctionCall& call);
Operand Lower(FunctionCall& call);
Operand Mid(FunctionCall& call);
Operand Proper(FunctionCall& call);
Operand Rept(FunctionCall& call);
Operand Right(FunctionCall& call);
Operand Substitute(FunctionCall& call);
Operand Text(FunctionCall& call);
Operand Trim(FunctionCall& call);
Operand Upper(FunctionCall& call);
Operand Value(FunctionCall& call);

// functions_date.cpp
Operand Date(FunctionCall& call);
Operand Day(FunctionCall& call);
Operand Hour(FunctionCall& call);
Operand Minute(FunctionCall& call);
Operand Month(FunctionCall& call);
Operand Now(FunctionCall& call);
Operand Today(FunctionCall& call);
Operand Weekday(FunctionCall& call);
Operand Year(FunctionCall& call);

// functions_lookup.cpp
Operand HLookup(FunctionCall& call);
Operand Index(FunctionCall& call);
Operand Match(FunctionCall& call);
Operand VLookup(FunctionCall& call);

} // namespace kelvrane::formulas
