#include "worksheet/criterion.h"
#include "worksheet/formula_functions.h"

#include <algorithm>

namespace kelvrane::formulas {

namespace {

/// How a value is sought along a row or a column.
enum class Search {
    Exact,
    UpTo, ///< the largest that isn't above, among values in rising order
    Down, ///< the smallest that isn't below, among values in falling order
};

bool areOfAKind(const CellValue& one, const CellValue& other) {
    return one.index() == other.index();
}

/// The place of a value among so many, -1 when it isn't there. Values of other kinds are passed
/// over.
template <typename ValueAt>
int place(const CellValue& sought, int count, Search search, ValueAt valueAt) {
    const CellValue wanted = IsEmpty(sought) ? CellValue(0.0) : sought;
    int found = -1;
    for (int i = 0; i < count; ++i) {
        const CellValue value = valueAt(i);
        if (!areOfAKind(value, wanted))
            continue;
        if (search == Search::Exact) {
            const bool matches =
                IsText(wanted) ? MatchesText(std::get<QString>(value), std::get<QString>(wanted))
                               : CompareValues(value, wanted) == 0;
            if (matches)
                return i;
            continue;
        }
        const int order = CompareValues(value, wanted);
        if (search == Search::UpTo ? order > 0 : order < 0)
            break;
        found = i;
    }
    return found;
}

/// A cell of an operand as an operand, for a range a reference to it.
Operand part(const Operand& whole, const Area& area, int row, int column) {
    if (const auto* range = std::get_if<CellRange>(&whole)) {
        const CellAddress cell{range->first.row + row, range->first.column + column};
        return CellRange{cell, cell};
    }
    return area.at(row, column);
}

/// Looks along the first column, or row, and takes the value as far beside it as the third argument
/// says. The fourth asks for an exact match when FALSE.
Operand lookUp(FunctionCall& call, bool alongColumn) {
    const CellValue wanted = call.value(0);
    const Area table = call.area(1);
    const int beside = call.whole(2);
    const Search search = call.truth(3, true) ? Search::UpTo : Search::Exact;
    if (call.error())
        return CellValue();
    if (beside < 1)
        return call.fail(CellError::Value);
    if (beside > (alongColumn ? table.columns() : table.rows()))
        return call.fail(CellError::Reference);
    const int count = alongColumn ? table.rows() : table.columns();
    const int found = place(wanted, count, search,
                            [&](int i) { return alongColumn ? table.at(i, 0) : table.at(0, i); });
    if (found < 0)
        return call.fail(CellError::NotAvailable);
    return alongColumn ? part(call.operand(1), table, found, beside - 1)
                       : part(call.operand(1), table, beside - 1, found);
}

/// The part of a block or range that INDEX names; 0 takes all rows or columns.
Operand indexed(const Operand& whole, const Area& area, int row, int column) {
    if (row > 0 && column > 0)
        return part(whole, area, row - 1, column - 1);
    if (const auto* range = std::get_if<CellRange>(&whole)) {
        CellRange taken = *range;
        if (row > 0)
            taken.first.row = taken.last.row = range->first.row + row - 1;
        if (column > 0)
            taken.first.column = taken.last.column = range->first.column + column - 1;
        return taken;
    }
    return row == 0 && column == 0 ? whole : Operand(CellValue(CellError::Value));
}

} // namespace

Operand HLookup(FunctionCall& call) {
    return lookUp(call, false);
}

/// In a single row, two arguments name the column.
Operand Index(FunctionCall& call) {
    const Operand& whole = call.operand(0);
    const Area area = call.area(0);
    const auto* range = std::get_if<CellRange>(&whole);
    const int rows = range ? range->rows() : area.rows();
    const int columns = range ? range->columns() : area.columns();
    int row = call.whole(1);
    int column = call.whole(2, rows == 1 && columns > 1 ? row : columns == 1 ? 1 : 0);
    if (call.count() == 2 && rows == 1 && columns > 1)
        row = 1;
    if (row < 0 || column < 0)
        return call.fail(CellError::Value);
    if (row > rows || column > columns)
        return call.fail(CellError::Reference);
    return indexed(whole, area, row, column);
}

Operand Match(FunctionCall& call) {
    const CellValue wanted = call.value(0);
    const Area area = call.area(1);
    const double type = call.count() > 2 ? call.number(2) : 1;
    if (call.error())
        return CellValue();
    if (area.rows() > 1 && area.columns() > 1)
        return call.fail(CellError::NotAvailable);
    const Search search = type > 0 ? Search::UpTo : type < 0 ? Search::Down : Search::Exact;
    const bool alongColumn = area.columns() == 1;
    const int found = place(wanted, alongColumn ? area.rows() : area.columns(), search,
                            [&](int i) { return alongColumn ? area.at(i, 0) : area.at(0, i); });
    return found < 0 ? call.fail(CellError::NotAvailable) : CellValue(double(found + 1));
}

Operand VLookup(FunctionCall& call) {
    return lookUp(call, true);
}

} // namespace kelvrane::formulas
