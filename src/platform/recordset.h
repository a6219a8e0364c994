// Rows of a table or of a query, with a cursor. A record set is a snapshot in the order of the
// query's ORDER BY field (texts without regard to case, then exactly), then of the table's key.
// Nothing is fetched before something is asked.
//
// Positions are 1-based; beforeFirst and afterLast stand outside, unknown where no row was reached.
// Fields are named, or counted from 0. A null field as text is "". A date as text is m/d/yyyy, a
// boolean "True" or "False".
//
//     Recordset rows(connection, "ProjectInfo", Recordset::Optimistic);
//     rows.moveFirst();
//     rows.find("Project_Name = 'Alpha'");
//     if (!rows.atEnd()) name = rows.text(1);
//
//     Recordset days(connection, BoundQuery{"SELECT * FROM DayInfo WHERE ProjectName = ?",
//     {name}});
#pragma once

#include "platform/connection.h"
#include "platform/query_text.h"

#include <memory>
#include <optional>

namespace kelvrane {

class Recordset {
  public:
    enum Lock { ReadOnly, Optimistic };
    static constexpr int beforeFirst = -2;
    static constexpr int afterLast = -3;
    static constexpr int unknown = -1;

    /// Source: a table's name, or one SELECT on one table. A query runs at once and raises Sql;
    /// a table is checked at once and fetched when first asked.
    Recordset(Connection& connection, const QString& source, Lock lock = ReadOnly);
    /// One SELECT on one table with its values. Raises Sql.
    Recordset(Connection& connection, const BoundQuery& source, Lock lock = ReadOnly);
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Rows, a pending new row counted. A table's rows are counted without fetching them.
    int count();
    bool isEmpty();
    /// Before the first row; true for an empty set.
    bool atBeginning();
    /// After the last row; true for an empty set.
    bool atEnd();
    /// Unknown also on a deleted row and for an empty set.
    int position();
    /// Goes to a 1-based position; raises NoCurrentRecord outside 1..count.
    void setPosition(int position);
    void moveFirst(); ///< no effect on an empty set's cursor; raises NoCurrentRecord there
    void moveLast();
    void moveNext(); ///< from the last row: after the last; raises NoCurrentRecord from there
    void
    movePrevious(); ///< from the first row: before the first; raises NoCurrentRecord from there

    /// Searches forward from the current row, that row included, for "Field = 'text'" (also
    /// "Field='text'" and #dates#); the text is all between the first and the last quote. A miss
    /// goes after the last row. Numbers and dates compare by value, texts byte for byte. Raises
    /// BadFindText, NoCurrentRecord when there is none.
    void find(const QString& criterion);

    int fieldCount() const;
    QString fieldName(int index) const; ///< raises Subscript
    /// Raises NoCurrentRecord, or BadArgument for a field that isn't there.
    QVariant value(const QString& field);
    QVariant value(int field);
    QString text(const QString& field);
    QString text(int field);
    bool isNull(int field);

    // Only update() writes. Changes that pend are dropped by every move, find and addNew, as by
    // cancelUpdate.

    /// Starts a pending new row, which becomes the current one.
    void addNew();
    /// Changes a field of the current or pending row in memory, converted to the column's type;
    /// raises TypeMismatch when it can't be, PermissionDenied when read-only. An empty text in a
    /// number, boolean or date column that allows it is null. The table's key can't be changed
    /// (PermissionDenied). A value that is already there is no change.
    void setValue(const QString& field, const QVariant& value);
    bool hasPendingChanges() const;
    /// Writes pending changes; a new row gets its key and goes to the end. Nothing when none pend.
    /// Raises Sql; the changes then stay pending.
    void update();
    /// Drops pending changes; a dropped new row leaves the cursor where it was before addNew.
    void cancelUpdate();
    /// Deletes the current row at once. It stays current, without fields, until a move.
    void deleteRow();

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace kelvrane
