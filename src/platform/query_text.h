// Queries and finds as text: a statement whose values are bound, and what a record set must know of
// its source before it runs it: the table, and the field of a plain ORDER BY, which is cut off
// because the record set sorts by rules of its own.
#pragma once

#include <QString>
#include <QVariantList>

#include <optional>

namespace kelvrane {

/// One SELECT with a ? for each of its values, in their order. Names and dates go this way and
/// never into the text: a name may hold quotes, "?", "#" and ";". A date is bound in its stored
/// form, a null text as the empty one.
struct BoundQuery {
    QString sql;
    QVariantList values = {};
};

struct QueryText {
    QString sql; ///< the statement without a plain ORDER BY; empty for a bare table
    QString table = {};
    QString orderField = {}; ///< empty: in the order of the key
    bool descending = false;
    bool allColumns = true; ///< the select list is *
};

/// Reads a table's name or a SELECT on one table. Raises Sql for a SELECT without FROM.
QueryText ReadQueryText(const QString& source);

struct FindText {
    QString field;
    QString text;
};

/// Reads "Field = 'text'", "Field = #m/d/yyyy#" and "Field = 5". The text is all that is between
/// the first and the last quote, quotes in it included. std::nullopt for anything else.
std::optional<FindText> ReadFindText(const QString& criterion);

} // namespace kelvrane
