// What a record set must know of its source before it runs it: the table, and the field of a plain
// ORDER BY, which is cut off because the record set sorts by rules of its own.
#pragma once

#include <QString>

#include <optional>

namespace kelvrane {

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

/// Reads "Field = 'text'", "Field = #m/d/yyyy#" and "Field = 5"; a doubled apostrophe between the
/// quotes stands for one. std::nullopt for anything else.
std::optional<FindText> ReadFindText(const QString& criterion);

} // namespace kelvrane
