#include "platform/recordset_data.h"

#include "platform/column_value.h"
#include "platform/error.h"
#include "platform/texts.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>
#include <limits>
#include <utility>

namespace kelvrane {

using recordset_data::Row;

namespace {

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

QVariant asStored(const QVariant& value) {
    if (value.typeId() == QMetaType::QDate)
        return StoredDateText(value.toDate());
    if (value.typeId() == QMetaType::QString && value.toString().isNull())
        return QStringLiteral(""); // a null text would be bound as NULL, which equals nothing
    return value;
}

} // namespace

Recordset::Data::Data(Connection& itsConnection, const BoundQuery& source, Lock itsLock)
    : connection(itsConnection), query(ReadQueryText(source.sql)), values(source.values),
      lock(itsLock) {
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
    if (!result.prepare(sql))
        RaiseSql(result);
    for (const QVariant& value : std::as_const(values))
        result.addBindValue(asStored(value));
    run(result);
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

int Recordset::Data::countRows(const QString& tail, const QVariant& bound) {
    QSqlQuery& query =
        connection.prepared(QStringLiteral("SELECT count(*) FROM ") + quotedTable() + tail);
    const Finish finish(query);
    if (bound.isValid())
        query.bindValue(0, bound);
    run(query);
    return query.next() ? query.value(0).toInt() : 0;
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

void Recordset::Data::deleteByKey(qint64 key) {
    QSqlQuery& query =
        connection.prepared(QStringLiteral("DELETE FROM ") + quotedTable() +
                            QStringLiteral(" WHERE ") + keyName + QStringLiteral(" = ?"));
    const Finish finish(query);
    query.bindValue(0, key);
    run(query);
}

void Recordset::Data::findByKey(const QString& text) {
    // From the current row on, that row included, but nothing in front of it.
    const bool hasCurrent = cursor.lone.has_value();
    const qint64 first = hasCurrent ? cursor.lone->key : std::numeric_limits<qint64>::min();
    const double number = IsNumeric(text) ? ToDouble(text) : 0.5; // no key
    const auto key = static_cast<qint64>(number);
    std::optional<Row> found;
    if (static_cast<double>(key) == number && key >= first)
        found = oneRow(QStringLiteral(" WHERE ") + keyName + QStringLiteral(" = ?"), key);
    if (!found && !hasCurrent)
        reachFirst(); // an empty table has no row to begin from
    if (cursor.where == Where::Before)
        Raise(errors::NoCurrentRecord);
    cursor = {.where = found ? Where::Row : Where::After, .lone = std::move(found)};
}

} // namespace kelvrane
