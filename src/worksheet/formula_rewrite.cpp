#include "worksheet/formula.h"
#include "worksheet/formula_tokens.h"

#include <optional>
#include <utility>

namespace kelvrane {

using formulas::Corner;
using formulas::Reference;
using formulas::Token;

namespace {

/// Replaces the references of a formula; the change gives nothing for one that is lost. What stays
/// equal keeps its spelling.
template <typename Change>
QString rewritten(const QString& formula, Change change) {
    // What is no formula stays so: "2F1" would become the number 2E1 with a column less.
    if (!formula.startsWith(u'=') || !Formula(formula).isValid())
        return formula;
    QString result;
    qsizetype copied = 0;
    for (const Token& token : formulas::FormulaTokens(formula)) {
        if (token.kind != Token::Kind::Reference)
            continue;
        const QString before = ReferenceText(token.reference);
        const std::optional<Reference> reference = change(token.reference);
        const QString after =
            reference ? ReferenceText(*reference) : CellErrorText(CellError::Reference);
        if (after == before)
            continue;
        result += QStringView(formula).sliced(copied, token.begin - copied);
        result += after;
        copied = token.end;
    }
    return copied == 0 ? formula : QString(result + QStringView(formula).sliced(copied));
}

bool namesRows(const Reference& reference) {
    return reference.shape != Reference::Shape::Columns;
}
bool namesColumns(const Reference& reference) {
    return reference.shape != Reference::Shape::Rows;
}

/// Moves a place unless it is fixed; false when it leaves the sheet.
bool shift(int& place, bool isFixed, int by, int size) {
    const qint64 moved = isFixed ? place : qint64(place) + by;
    place = static_cast<int>(moved);
    return moved >= 0 && moved < size;
}

bool shiftCorner(Corner& corner, const Reference& reference, int rows, int columns) {
    return (!namesRows(reference) || shift(corner.cell.row, corner.fixedRow, rows, SheetRows)) &&
           (!namesColumns(reference) ||
            shift(corner.cell.column, corner.fixedColumn, columns, SheetColumns));
}

/// The span of rows (or columns) after the change; nothing when all of it is gone.
std::optional<std::pair<int, int>> adjusted(int first, int last, const StructureChange& change) {
    const int size = change.rows ? SheetRows : SheetColumns;
    qint64 from = first;
    qint64 to = last;
    if (change.count >= 0) {
        from += first >= change.at ? change.count : 0;
        to += last >= change.at ? change.count : 0;
    } else {
        const qint64 removedEnd = qint64(change.at) - change.count; // the first that stays
        const auto place = [&](qint64 at, qint64 ifRemoved) {
            return at < change.at ? at : at < removedEnd ? ifRemoved : at + change.count;
        };
        from = place(from, change.at);
        to = place(to, qint64(change.at) - 1);
    }
    if (from > to || from >= size)
        return {};
    // A cell that is pushed off the sheet is lost, a range loses what is pushed off.
    if (to >= size && first == last)
        return {};
    return std::pair(static_cast<int>(from), static_cast<int>(std::min<qint64>(to, size - 1)));
}

} // namespace

QString ShiftedFormula(const QString& formula, int rows, int columns) {
    return rewritten(formula, [&](Reference reference) -> std::optional<Reference> {
        if (!shiftCorner(reference.first, reference, rows, columns) ||
            !shiftCorner(reference.second, reference, rows, columns))
            return {};
        return reference;
    });
}

QString AdjustedFormula(const QString& formula, const StructureChange& change) {
    return rewritten(formula, [&](Reference reference) -> std::optional<Reference> {
        if (change.rows ? !namesRows(reference) : !namesColumns(reference))
            return reference;
        int& first = change.rows ? reference.first.cell.row : reference.first.cell.column;
        int& second = change.rows ? reference.second.cell.row : reference.second.cell.column;
        int& low = first <= second ? first : second;
        int& high = first <= second ? second : first;
        const auto span = adjusted(low, high, change);
        if (!span)
            return {};
        low = span->first;
        high = span->second;
        return reference;
    });
}

} // namespace kelvrane
