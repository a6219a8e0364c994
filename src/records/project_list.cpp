#include "records/project_list.h"

#include "platform/error.h"
#include "platform/texts.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>

namespace kelvrane {

namespace {

/// The values of a column when each of its texts is one; blanks stand in front. Empty otherwise.
QList<double> valuesOf(const QList<QStringList>& rows, int column,
                       const std::function<std::optional<double>(const QString&)>& read) {
    QList<double> values;
    values.reserve(rows.size());
    bool any = false;
    for (const QStringList& row : rows) {
        const QString& text = row[column];
        if (text.trimmed().isEmpty()) {
            values.append(-std::numeric_limits<double>::infinity());
            continue;
        }
        const std::optional<double> value = read(text);
        if (!value)
            return {};
        values.append(*value);
        any = true;
    }
    return any ? values : QList<double>();
}

std::optional<double> numberIn(const QString& text) {
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<double> dateIn(const QString& text) {
    const QDate date = DateFromText(text);
    return date.isValid() ? std::optional(static_cast<double>(date.toJulianDay())) : std::nullopt;
}

} // namespace

void ProjectList::clear() {
    setRows({}, {});
}

void ProjectList::setRows(const QStringList& columns, QList<QStringList> rows, QStringList keys) {
    beginResetModel();
    m_columns = columns;
    m_rows = std::move(rows);
    m_keys = std::move(keys);
    m_keys.resize(m_rows.size());
    m_sortColumn = -1;
    m_descending = false;
    endResetModel();
}

const QString& ProjectList::text(int row, int column) const {
    return At(At(m_rows, row - 1), column);
}

int ProjectList::sortBy(int column, bool descending, int followed) {
    if (column < 0 || column >= m_columns.size())
        Raise(errors::Subscript);
    QList<double> values = valuesOf(m_rows, column, numberIn);
    if (values.isEmpty())
        values = valuesOf(m_rows, column, dateIn);
    QStringList texts;
    if (values.isEmpty())
        for (const QStringList& row : std::as_const(m_rows))
            texts.append(row[column].toCaseFolded());

    QList<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    const auto isLess = [&](int left, int right) {
        return values.isEmpty() ? texts[left] < texts[right] : values[left] < values[right];
    };
    std::stable_sort(order.begin(), order.end(), [&](int left, int right) {
        return descending ? isLess(right, left) : isLess(left, right);
    });

    m_sortColumn = column;
    m_descending = descending;
    applyOrder(order);
    emit headerDataChanged(Qt::Horizontal, 0, static_cast<int>(m_columns.size()) - 1);
    return static_cast<int>(order.indexOf(followed - 1)) + 1;
}

void ProjectList::applyOrder(const QList<int>& order) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    QList<int> placeOf(order.size());
    QList<QStringList> rows;
    QStringList keys;
    rows.reserve(order.size());
    keys.reserve(order.size());
    for (int place = 0; place < order.size(); ++place) {
        placeOf[order[place]] = place;
        rows.append(m_rows[order[place]]);
        keys.append(m_keys[order[place]]);
    }
    m_rows = std::move(rows);
    m_keys = std::move(keys);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& cell : before)
        after.append(index(placeOf[cell.row()], cell.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

int ProjectList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ProjectList::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant ProjectList::data(const QModelIndex& cell, int role) const {
    if (!checkIndex(cell, CheckIndexOption::IndexIsValid))
        return {};
    const QString& text = m_rows[cell.row()][cell.column()];
    if (role == Qt::DisplayRole)
        return text;
    if (role == Qt::ToolTipRole)
        return text.trimmed();
    if (role == InactiveRole)
        return cell.column() == ActiveColumn && text == BooleanText(false);
    return {};
}

QVariant ProjectList::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_columns[section];
    if (role == SortIconRole)
        return section != m_sortColumn ? 0 : m_descending ? 1 : 2;
    return {};
}

} // namespace kelvrane
