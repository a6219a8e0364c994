// What a record set holds: its rows as they are stored, its place among them, and the SQL that
// reads and writes single rows. The inside of recordset.h; nothing else includes it.
#pragma once

#include "platform/connection.h"
#include "platform/query_text.h"
#include "platform/recordset.h"

#include <QList>
#include <QVariant>

#include <map>
#include <optional>

namespace kelvrane {

namespace recordset_data {

struct Row {
    qint64 key = 0;
    QList<QVariant> stored;
};

enum class Where {
    Before,
    Row,
    Deleted, ///< on a row that is gone, in front of rows[index]
    After,
    New, ///< on the pending new row
};

struct Cursor {
    Where where = Where::Row;
    qsizetype index = 0;     ///< 0-based, once the rows are fetched
    std::optional<Row> lone; ///< until then: the row reached, or none yet for the first one
    int lonePosition = Recordset::unknown;
};

} // namespace recordset_data

struct Recordset::Data {
    using Row = recordset_data::Row;
    using Where = recordset_data::Where;
    using Cursor = recordset_data::Cursor;

    Data(Connection& itsConnection, const BoundQuery& source, Lock itsLock);

    bool isTable() const { return query.sql.isEmpty(); }
    int columnIndex(const QString& field) const; ///< -1: none
    int checkedColumn(const QString& field) const;
    QString quotedTable() const { return QuotedName(query.table); }
    QString tableSelect() const;

    Row readRow(const QSqlQuery& result) const;
    void runQuery();
    void sortRows();
    /// The first row of "SELECT ... FROM table <tail>".
    std::optional<Row> oneRow(const QString& tail, const QVariant& bound = {});
    /// Counts the rows of the table, or of "FROM table <tail>".
    int countRows(const QString& tail = {}, const QVariant& bound = {});
    void fetchAll();
    void reachFirst();

    Row* currentRow(); ///< null on the pending new row; raises NoCurrentRecord
    QVariant stored(int field);
    void requireWritable() const;
    void dropPending();
    void insertPending();
    void updatePending();
    void deleteByKey(qint64 key);
    void findByKey(const QString& text);
    void place(Where where, qsizetype index = 0);

    Connection& connection;
    QueryText query;
    QVariantList values; ///< bound to the query's marks
    Lock lock;
    QList<Column> columns;
    int keyColumn = -1;      ///< of the result; -1: not among the columns
    bool rowIdFirst = false; ///< the result brings the row's id in front of the columns
    QString keyName;         ///< as SQL

    bool fetched = false;
    QList<Row> rows;
    int knownCount = -1; ///< of an unfetched table, once it was asked
    Cursor cursor;
    Cursor beforeNew;
    std::map<int, QVariant> pending; ///< by column, as stored
};

} // namespace kelvrane
