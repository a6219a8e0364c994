#include "platform/recordset.h"

#include "platform/column_value.h"
#include "platform/error.h"
#include "platform/recordset_data.h"

#include <algorithm>
#include <utility>

namespace kelvrane {

using recordset_data::Row;
using recordset_data::Where;

Recordset::Recordset(Connection& connection, const QString& source, Lock lock)
    : m_data(std::make_unique<Data>(connection, BoundQuery{source}, lock)) {}

Recordset::Recordset(Connection& connection, const BoundQuery& source, Lock lock)
    : m_data(std::make_unique<Data>(connection, source, lock)) {}

Recordset::~Recordset() = default;

int Recordset::count() {
    Data& d = *m_data;
    const int added = d.cursor.where == Where::New ? 1 : 0;
    if (d.fetched)
        return static_cast<int>(d.rows.size()) + added;
    if (d.knownCount < 0)
        d.knownCount = d.countRows();
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
    if (d.cursor.lonePosition == unknown)
        d.cursor.lonePosition = d.countRows(
            QStringLiteral(" WHERE ") + d.keyName + QStringLiteral(" <= ?"), d.cursor.lone->key);
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
    if (row)
        d.deleteByKey(row->key);
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
