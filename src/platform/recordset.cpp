#include "platform/recordset.h"

#include "platform/column_value.h"
#include "platform/error.h"
#include "platform/query_text.h"
#include "platform/texts.h"

#include <QSqlError>
#include <QSqlRecord>

#include <algorithm>
#include <map>
#include <utility>

namespace kelvrane {

namespace {

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

/// Ends a statement's reading, so that it holds no lock.
class Finish {
  public:
    explicit Finish(QSqlQuery& query) : m_query(query) {}
    ~Finish() { m_query.finish(); }
    Finish(const Finish&) = delete;
    Finish& operator=(const Finish&) = delete;

  private:
    QSqlQuery& m_query;
};

void run(QSqlQuery& query) {
    if (!query.exec())
        RaiseSql(query);
}

} // namespace

struct Recordset::Data {
    Data(Connection& itsConnection, const QString& source, Lock itsLock);

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
    void fetchAll();
    void reachFirst();

    Row* currentRow(); ///< null on the pending new row; raises NoCurrentRecord
    QVariant stored(int field);
    void requireWritable() const;
    void dropPending();
    void insertPending();
    void updatePending();
    void findByKey(const QString& text);
    void place(Where where, qsizetype index = 0);

    Connection& connection;
    QueryText query;
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

Recordset::Data::Data(Connection& itsConnection, const QString& source, Lock itsLock)
    : connection(itsConnection), query(ReadQueryText(source)), lock(itsLock) {
    columns = connection.columns(query.table);
    const auto key = std::find_if(columns.begin(), columns.end(),
                                  [](const Column& column) { return column.isKey; });
    keyName = key == columns.end() ? QStringLiteral("rowid") : QuotedName(key->name);
    if (key != columns.end() && query.allColumns)
        keyColumn = static_cast<int>(key - columns.begin());
    rowIdFirst = keyColumn < 0 && (isTable() || lock == Optimistic);
    if (!isTable())
        runQuery();
}

int Recordset::Data::columnIndex(const QString& field) const {
    for (qsizetype i = 0; i < columns.size(); ++i)
        if (columns[i].name.compare(field, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    return -1;
}

int Recordset::Data::checkedColumn(const QString& field) const {
    const int index = columnIndex(field);
    if (index < 0)
        Raise(errors::BadArgument, QStringLiteral("There is no field '%1'").arg(field));
    return index;
}

QString Recordset::Data::tableSelect() const {
    return (rowIdFirst ? QStringLiteral("SELECT rowid, * FROM ")
                       : QStringLiteral("SELECT * FROM ")) +
           quotedTable();
}

Row Recordset::Data::readRow(const QSqlQuery& result) const {
    Row row;
    const int first = rowIdFirst ? 1 : 0;
    row.stored.reserve(columns.size());
    for (int i = 0; i < columns.size(); ++i)
        row.stored.append(result.value(first + i));
    if (rowIdFirst)
        row.key = result.value(0).toLongLong();
    else if (keyColumn >= 0)
        row.key = row.stored[keyColumn].toLongLong();
    return row;
}

void Recordset::Data::runQuery() {
    QString sql = WithStoredDates(query.sql);
    if (rowIdFirst)
        sql.insert(sql.indexOf(u"SELECT", 0, Qt::CaseInsensitive) + 6, QStringLiteral(" rowid,"));
    QSqlQuery result(connection.database());
    result.setForwardOnly(true);
    if (!result.exec(sql))
        RaiseSql(result);
    if (!query.allColumns) {
        const QList<Column> known = std::exchange(columns, {});
        const QSqlRecord record = result.record();
        for (int i = rowIdFirst ? 1 : 0; i < record.count(); ++i) {
            const QString name = record.fieldName(i);
            const auto same = std::find_if(known.begin(), known.end(), [&](const Column& column) {
                return column.name.compare(name, Qt::CaseInsensitive) == 0;
            });
            columns.append(same != known.end() ? *same : Column{name, ColumnType::Text, false});
        }
    }
    while (result.next())
        rows.append(readRow(result));
    if (result.lastError().isValid())
        RaiseSql(result);
    fetched = true;
    sortRows();
    if (rows.isEmpty())
        cursor.where = Where::Before;
}

void Recordset::Data::sortRows() {
    const int field = query.orderField.isEmpty() ? -1 : columnIndex(query.orderField);
    if (!query.orderField.isEmpty() && field < 0)
        Raise(errors::Sql, QStringLiteral("no such column: %1").arg(query.orderField),
              QStringLiteral("SQLite"));
    std::stable_sort(rows.begin(), rows.end(), [&](const Row& left, const Row& right) {
        if (field >= 0) {
            const int order =
                CompareStored(columns[field], left.stored[field], right.stored[field]);
            if (order != 0)
                return query.descending ? order > 0 : order < 0;
        }
        return left.key < right.key;
    });
}

std::optional<Row> Recordset::Data::oneRow(const QString& tail, const QVariant& bound) {
    QSqlQuery& result = connection.prepared(tableSelect() + tail);
    const Finish finish(result);
    if (bound.isValid())
        result.bindValue(0, bound);
    run(result);
    return result.next() ? std::optional(readRow(result)) : std::nullopt;
}

void Recordset::Data::fetchAll() {
    if (fetched)
        return;
    QSqlQuery result(connection.database());
    result.setForwardOnly(true);
    if (!result.exec(tableSelect() + QStringLiteral(" ORDER BY ") + keyName))
        RaiseSql(result);
    QList<Row> all;
    while (result.next())
        all.append(readRow(result));
    if (result.lastError().isValid())
        RaiseSql(result);
    rows = std::move(all);
    fetched = true;

    if (cursor.where != Where::Row && cursor.where != Where::Deleted)
        return;
    if (!cursor.lone) {
        place(rows.isEmpty() ? Where::Before : Where::Row);
        return;
    }
    const qint64 key = cursor.lone->key;
    const auto at =
        std::lower_bound(rows.begin(), rows.end(), key,
                         [](const Row& row, qint64 sought) { return row.key < sought; });
    const bool found = at != rows.end() && at->key == key;
    place(found ? Where::Row : Where::Deleted, at - rows.begin());
}

void Recordset::Data::reachFirst() {
    if (fetched || cursor.lone)
        return;
    cursor.lone = oneRow(QStringLiteral(" ORDER BY ") + keyName + QStringLiteral(" LIMIT 1"));
    cursor.lonePosition = 1;
    if (!cursor.lone) {
        fetched = true;
        cursor.where = Where::Before;
    }
}

Row* Recordset::Data::currentRow() {
    if (cursor.where == Where::New)
        return nullptr;
    if (cursor.where == Where::Row)
        reachFirst();
    if (cursor.where != Where::Row)
        Raise(errors::NoCurrentRecord);
    return fetched ? &rows[cursor.index] : &*cursor.lone;
}

QVariant Recordset::Data::stored(int field) {
    if (field < 0 || field >= columns.size())
        Raise(errors::BadArgument, QStringLiteral("There is no field %1").arg(field));
    const Row* row = currentRow();
    if (const auto changed = pending.find(field); changed != pending.end())
        return changed->second;
    return row ? row->stored[field] : QVariant();
}

void Recordset::Data::requireWritable() const {
    if (lock == ReadOnly)
        Raise(errors::PermissionDenied, QStringLiteral("The records were opened read-only"));
}

void Recordset::Data::dropPending() {
    pending.clear();
    if (cursor.where == Where::New)
        cursor = std::exchange(beforeNew, {});
}

void Recordset::Data::place(Where where, qsizetype index) {
    cursor = {.where = where, .index = index, .lone = {}};
}

void Recordset::Data::insertPending() {
    QStringList names;
    QStringList marks;
    for (const auto& [field, value] : pending) {
        names.append(QuotedName(columns[field].name));
        marks.append(QStringLiteral("?"));
    }
    const QString values = names.isEmpty() ? QStringLiteral(" DEFAULT VALUES")
                                           : QStringLiteral(" (%1) VALUES (%2)")
                                                 .arg(names.join(QLatin1String(", ")),
                                                      marks.join(QLatin1String(", ")));
    QSqlQuery& insert =
        connection.prepared(QStringLiteral("INSERT INTO ") + quotedTable() + values);
    const Finish finish(insert);
    int place = 0;
    for (const auto& [field, value] : pending)
        insert.bindValue(place++, value);
    run(insert);

    Row row;
    row.key = insert.lastInsertId().toLongLong();
    row.stored.resize(columns.size());
    for (const auto& [field, value] : pending)
        row.stored[field] = value;
    if (keyColumn >= 0)
        row.stored[keyColumn] = row.key;
    cursor = {};
    if (fetched) {
        cursor.index = rows.size();
        rows.append(std::move(row));
    } else {
        cursor.lone = std::move(row);
        if (knownCount >= 0)
            ++knownCount;
    }
}

void Recordset::Data::updatePending() {
    Row* row = currentRow();
    QStringList changes;
    for (const auto& [field, value] : pending)
        changes.append(QuotedName(columns[field].name) + QStringLiteral(" = ?"));
    QSqlQuery& update =
        connection.prepared(QStringLiteral("UPDATE ") + quotedTable() + QStringLiteral(" SET ") +
                            changes.join(QLatin1String(", ")) + QStringLiteral(" WHERE ") +
                            keyName + QStringLiteral(" = ?"));
    const Finish finish(update);
    int place = 0;
    for (const auto& [field, value] : pending)
        update.bindValue(place++, value);
    update.bindValue(place, row->key);
    run(update);
    if (update.numRowsAffected() == 0)
        Raise(errors::Sql, QStringLiteral("The record was deleted by somebody else"));
    for (const auto& [field, value] : pending)
        row->stored[field] = value;
}

void Recordset::Data::findByKey(const QString& text) {
    // From the current row on, that row included, but nothing in front of it.
    const std::optional<Row> current = cursor.lone;
    const double number = IsNumeric(text) ? ToDouble(text) : 0.5; // no key
    const auto key = static_cast<qint64>(number);
    std::optional<Row> found;
    if (static_cast<double>(key) == number && (!current || key >= current->key))
        found = oneRow(QStringLiteral(" WHERE ") + keyName + QStringLiteral(" = ?"), key);
    if (!found && !current)
        reachFirst(); // an empty table has no row to begin from
    if (cursor.where == Where::Before)
        Raise(errors::NoCurrentRecord);
    place(found ? Where::Row : Where::After);
    cursor.lone = std::move(found);
}

Recordset::Recordset(Connection& connection, const QString& source, Lock lock)
    : m_data(std::make_unique<Data>(connection, source, lock)) {}

Recordset::~Recordset() = default;

int Recordset::count() {
    Data& d = *m_data;
    const int added = d.cursor.where == Where::New ? 1 : 0;
    if (d.fetched)
        return static_cast<int>(d.rows.size()) + added;
    if (d.knownCount < 0) {
        QSqlQuery& query =
            d.connection.prepared(QStringLiteral("SELECT count(*) FROM ") + d.quotedTable());
        const Finish finish(query);
        run(query);
        d.knownCount = query.next() ? query.value(0).toInt() : 0;
    }
    return d.knownCount + added;
}

bool Recordset::isEmpty() {
    Data& d = *m_data;
    if (d.cursor.where == Where::New)
        return false;
    if (!d.fetched && d.cursor.where == Where::Row)
        d.reachFirst();
    if (d.fetched)
        return d.rows.isEmpty();
    return d.cursor.where != Where::Row && count() == 0;
}

bool Recordset::atBeginning() {
    return isEmpty() || m_data->cursor.where == Where::Before;
}

bool Recordset::atEnd() {
    return isEmpty() || m_data->cursor.where == Where::After;
}

int Recordset::position() {
    Data& d = *m_data;
    if (d.cursor.where == Where::New)
        return count();
    if (isEmpty() || d.cursor.where == Where::Deleted)
        return unknown;
    if (d.cursor.where == Where::Before)
        return beforeFirst;
    if (d.cursor.where == Where::After)
        return afterLast;
    if (d.fetched)
        return static_cast<int>(d.cursor.index) + 1;
    if (d.cursor.lonePosition == unknown) {
        QSqlQuery& query =
            d.connection.prepared(QStringLiteral("SELECT count(*) FROM ") + d.quotedTable() +
                                  QStringLiteral(" WHERE ") + d.keyName + QStringLiteral(" <= ?"));
        const Finish finish(query);
        query.bindValue(0, d.cursor.lone->key);
        run(query);
        d.cursor.lonePosition = query.next() ? query.value(0).toInt() : unknown;
    }
    return d.cursor.lonePosition;
}

void Recordset::setPosition(int position) {
    Data& d = *m_data;
    d.dropPending();
    if (!d.fetched && d.cursor.lone && position > 0 && d.cursor.lonePosition == position &&
        d.cursor.where == Where::Row)
        return;
    if (position < 1 || position > count())
        Raise(errors::NoCurrentRecord);
    d.fetchAll();
    d.place(Where::Row, position - 1);
}

void Recordset::moveFirst() {
    Data& d = *m_data;
    d.dropPending();
    if (!d.fetched) {
        d.place(Where::Row);
        d.reachFirst();
    }
    if (!d.fetched)
        return;
    if (d.rows.isEmpty())
        Raise(errors::NoCurrentRecord);
    d.place(Where::Row);
}

void Recordset::moveLast() {
    Data& d = *m_data;
    d.dropPending();
    if (!d.fetched) {
        std::optional<Row> last =
            d.oneRow(QStringLiteral(" ORDER BY ") + d.keyName + QStringLiteral(" DESC LIMIT 1"));
        if (!last)
            Raise(errors::NoCurrentRecord);
        d.place(Where::Row);
        d.cursor.lone = std::move(last);
        return;
    }
    if (d.rows.isEmpty())
        Raise(errors::NoCurrentRecord);
    d.place(Where::Row, d.rows.size() - 1);
}

void Recordset::moveNext() {
    Data& d = *m_data;
    d.dropPending();
    d.fetchAll();
    qsizetype next = d.cursor.index;
    if (d.cursor.where == Where::After || (d.rows.isEmpty() && d.cursor.where != Where::Deleted))
        Raise(errors::NoCurrentRecord);
    if (d.cursor.where == Where::Before)
        next = 0;
    else if (d.cursor.where == Where::Row)
        ++next;
    d.place(next < d.rows.size() ? Where::Row : Where::After, next);
}

void Recordset::movePrevious() {
    Data& d = *m_data;
    d.dropPending();
    d.fetchAll();
    if (d.cursor.where == Where::Before || (d.rows.isEmpty() && d.cursor.where != Where::Deleted))
        Raise(errors::NoCurrentRecord);
    const qsizetype from = d.cursor.where == Where::After ? d.rows.size() : d.cursor.index;
    if (from > 0)
        d.place(Where::Row, from - 1);
    else
        d.place(Where::Before);
}

void Recordset::find(const QString& criterion) {
    Data& d = *m_data;
    const std::optional<FindText> sought = ReadFindText(criterion);
    const int field = sought ? d.columnIndex(sought->field) : -1;
    if (field < 0)
        Raise(errors::BadFindText, QStringLiteral("The find text is not valid: %1").arg(criterion));
    d.dropPending();
    if (d.cursor.where == Where::Before || d.cursor.where == Where::After)
        Raise(errors::NoCurrentRecord);
    if (!d.fetched && field == d.keyColumn) {
        d.findByKey(sought->text);
        return;
    }
    d.fetchAll();
    if (d.rows.isEmpty() && d.cursor.where != Where::Deleted)
        Raise(errors::NoCurrentRecord);
    const TextMatcher matches(d.columns[field], sought->text);
    const auto found = std::find_if(d.rows.cbegin() + d.cursor.index, d.rows.cend(),
                                    [&](const Row& row) { return matches(row.stored[field]); });
    if (found == d.rows.cend())
        d.place(Where::After);
    else
        d.place(Where::Row, found - d.rows.cbegin());
}

int Recordset::fieldCount() const {
    return static_cast<int>(m_data->columns.size());
}

QString Recordset::fieldName(int index) const {
    return At(std::as_const(m_data->columns), index).name;
}

QVariant Recordset::value(const QString& field) {
    return value(m_data->checkedColumn(field));
}

QVariant Recordset::value(int field) {
    const QVariant stored = m_data->stored(field);
    return FromStored(m_data->columns[field], stored);
}

QString Recordset::text(const QString& field) {
    return text(m_data->checkedColumn(field));
}

QString Recordset::text(int field) {
    const QVariant stored = m_data->stored(field);
    return StoredText(m_data->columns[field], stored);
}

bool Recordset::isNull(int field) {
    return m_data->stored(field).isNull();
}

void Recordset::addNew() {
    Data& d = *m_data;
    d.requireWritable();
    d.dropPending();
    d.beforeNew = std::exchange(d.cursor, {.where = Where::New, .lone = {}});
}

void Recordset::setValue(const QString& field, const QVariant& value) {
    Data& d = *m_data;
    d.requireWritable();
    const int index = d.checkedColumn(field);
    if (index == d.keyColumn)
        Raise(errors::PermissionDenied,
              QStringLiteral("The field %1 is set by the database").arg(field));
    const Row* row = d.currentRow();
    const Column& column = d.columns[index];
    const QVariant stored = ToStored(column, value);
    if (row && stored.isNull() == row->stored[index].isNull() &&
        FromStored(column, stored) == FromStored(column, row->stored[index]))
        d.pending.erase(index);
    else
        d.pending[index] = stored;
}

bool Recordset::hasPendingChanges() const {
    return m_data->cursor.where == Where::New || !m_data->pending.empty();
}

void Recordset::update() {
    Data& d = *m_data;
    if (!hasPendingChanges())
        return;
    if (d.cursor.where == Where::New)
        d.insertPending();
    else
        d.updatePending();
    d.pending.clear();
}

void Recordset::cancelUpdate() {
    m_data->dropPending();
}

void Recordset::deleteRow() {
    Data& d = *m_data;
    d.requireWritable();
    const Row* row = d.currentRow();
    if (row) {
        QSqlQuery& query =
            d.connection.prepared(QStringLiteral("DELETE FROM ") + d.quotedTable() +
                                  QStringLiteral(" WHERE ") + d.keyName + QStringLiteral(" = ?"));
        const Finish finish(query);
        query.bindValue(0, row->key);
        run(query);
    }
    d.dropPending();
    if (!row)
        return;
    d.cursor.where = Where::Deleted;
    if (d.fetched)
        d.rows.removeAt(d.cursor.index);
    else if (d.knownCount > 0)
        --d.knownCount;
}

} // namespace kelvrane
