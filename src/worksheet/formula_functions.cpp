#include "worksheet/formula_functions.h"

#include <algorithm>

namespace kelvrane::formulas {

namespace {

using Form = FunctionForm;

constexpr FunctionRow row(const char* name, int least, int most, Form form,
                          Routine routine = nullptr, bool isVolatile = false) {
    return {QLatin1StringView(name), least, most, form, routine, isVolatile};
}

constexpr FunctionRow rows[] = {
    row("ABS", 1, 1, Form::Single, Abs),
    row("AND", 1, MostArguments, Form::Ranges, And),
    row("AVERAGE", 1, MostArguments, Form::Ranges, Average),
    row("CHOOSE", 2, MostArguments, Form::Ranges, Choose),
    row("CONCATENATE", 1, MostArguments, Form::Single, Concatenate),
    row("COUNT", 1, MostArguments, Form::Ranges, Count),
    row("COUNTA", 1, MostArguments, Form::Ranges, CountA),
    row("COUNTIF", 2, 2, Form::Ranges, CountIf),
    row("DATE", 3, 3, Form::Single, Date),
    row("DAY", 1, 1, Form::Single, Day),
    row("FALSE", 0, 0, Form::Single, False),
    row("FIND", 2, 3, Form::Single, Find),
    row("FIXED", 1, 3, Form::Single, Fixed),
    row("HLOOKUP", 3, 4, Form::Ranges, HLookup),
    row("HOUR", 1, 1, Form::Single, Hour),
    row("IF", 2, 3, Form::If),
    row("IFERROR", 2, 2, Form::IfError),
    row("INDEX", 2, 3, Form::Ranges, Index),
    row("INT", 1, 1, Form::Single, Int),
    row("LEFT", 1, 2, Form::Single, Left),
    row("LEN", 1, 1, Form::Single, Len),
    row("LOWER", 1, 1, Form::Single, Lower),
    row("MATCH", 2, 3, Form::Ranges, Match),
    row("MAX", 1, MostArguments, Form::Ranges, Max),
    row("MEDIAN", 1, MostArguments, Form::Ranges, Median),
    row("MID", 3, 3, Form::Single, Mid),
    row("MIN", 1, MostArguments, Form::Ranges, Min),
    row("MINUTE", 1, 1, Form::Single, Minute),
    row("MOD", 2, 2, Form::Single, Mod),
    row("MONTH", 1, 1, Form::Single, Month),
    row("NOT", 1, 1, Form::Single, Not),
    row("NOW", 0, 0, Form::Single, Now, true),
    row("OR", 1, MostArguments, Form::Ranges, Or),
    row("POWER", 2, 2, Form::Single, Power),
    row("PRODUCT", 1, MostArguments, Form::Ranges, Product),
    row("PROPER", 1, 1, Form::Single, Proper),
    row("REPT", 2, 2, Form::Single, Rept),
    row("RIGHT", 1, 2, Form::Single, Right),
    row("ROUND", 2, 2, Form::Single, Round),
    row("ROUNDDOWN", 2, 2, Form::Single, RoundDown),
    row("ROUNDUP", 2, 2, Form::Single, RoundUp),
    row("SQRT", 1, 1, Form::Single, Sqrt),
    row("SUBSTITUTE", 3, 4, Form::Single, Substitute),
    row("SUM", 1, MostArguments, Form::Ranges, Sum),
    row("SUMIF", 2, 3, Form::SumIf, SumIf),
    row("SUMPRODUCT", 1, MostArguments, Form::Ranges, SumProduct),
    row("TEXT", 2, 2, Form::Single, Text),
    row("TODAY", 0, 0, Form::Single, Today, true),
    row("TRIM", 1, 1, Form::Single, Trim),
    row("TRUE", 0, 0, Form::Single, True),
    row("UPPER", 1, 1, Form::Single, Upper),
    row("VALUE", 1, 1, Form::Single, Value),
    row("VLOOKUP", 3, 4, Form::Ranges, VLookup),
    row("WEEKDAY", 1, 2, Form::Single, Weekday),
    row("YEAR", 1, 1, Form::Single, Year),
};

constexpr bool areInOrder() {
    for (size_t i = 1; i < std::size(rows); ++i)
        if (std::string_view(rows[i - 1].name.data()) >= std::string_view(rows[i].name.data()))
            return false;
    return true;
}
static_assert(areInOrder(), "names are searched by halves");

} // namespace

std::span<const FunctionRow> Functions() {
    return rows;
}

int FunctionIndex(QStringView name) {
    const auto found = std::ranges::lower_bound(
        rows, 0, [&](int order, int) { return order < 0; },
        [&](const FunctionRow& r) { return r.name.compare(name, Qt::CaseInsensitive); });
    if (found == std::end(rows) || found->name.compare(name, Qt::CaseInsensitive) != 0)
        return -1;
    return static_cast<int>(found - std::begin(rows));
}

} // namespace kelvrane::formulas
