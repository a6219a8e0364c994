// A formula's text cut into tokens, places kept: the parser and the routines that rewrite
// references see the same thing. Any text can be cut; what belongs to no formula is a Bad token.
#pragma once

#include "worksheet/cell_address.h"
#include "worksheet/cell_value.h"

#include <QList>
#include <QString>

namespace kelvrane::formulas {

enum class Operator {
    Add,
    Subtract,
    Multiply,
    Divide,
    Power,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Percent, ///< behind its operand
};

/// A corner as it is written: "$C5" has a fixed column. In whole columns the row means nothing, in
/// whole rows the column.
struct Corner {
    CellAddress cell;
    bool fixedRow = false;
    bool fixedColumn = false;
};

struct Reference {
    enum class Shape { Cell, Range, Columns, Rows };
    Shape shape = Shape::Cell;
    Corner first; ///< in the order of the text, not of the sheet
    Corner second;
};

/// The cells of a reference; whole columns and rows reach to the sheet's ends.
CellRange ReferencedRange(const Reference& reference);
/// "$A$1", "B2:D9", "A:$C", "1:3".
QString ReferenceText(const Reference& reference);

struct Token {
    enum class Kind {
        Number,
        Text, ///< without its quotes
        Name,
        Function, ///< a name before "("
        Reference,
        Error, ///< "#N/A", also a reference outside of this sheet
        Operator,
        Open,
        Close,
        Separator,
        Bad,
        End,
    };
    Kind kind = Kind::Bad;
    qsizetype begin = 0; ///< in the text, its "=" included
    qsizetype end = 0;
    double number = 0;
    QString text; ///< of a text, name or function
    CellError error = CellError::Name;
    Operator op = Operator::Add;
    formulas::Reference reference;
};

/// With or without the leading "="; the last token is End.
QList<Token> FormulaTokens(const QString& text);

} // namespace kelvrane::formulas
