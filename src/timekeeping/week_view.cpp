#include "timekeeping/week_view.h"

#include <algorithm>

namespace kelvrane {

void WeekView::setHeaders(const QStringList& newNames, const QList<int>& newDays) {
    if (m_dayNames == newNames && m_daysOfMonth == newDays)
        return;
    m_dayNames = newNames;
    m_daysOfMonth = newDays;
    emit headerDataChanged(Qt::Horizontal, 0, columnsInAll - 1);
}

void WeekView::setRows(const QList<Row>& newRows) {
    const qsizetype kept = std::min(m_rows.size(), newRows.size());
    for (int row = 0; row < kept; ++row) {
        if (m_rows[row] == newRows[row])
            continue;
        m_rows[row] = newRows[row];
        emit dataChanged(index(row, 0), index(row, columnsInAll - 1));
    }
    if (m_rows.size() > kept) {
        beginRemoveRows({}, int(kept), int(m_rows.size()) - 1);
        m_rows.resize(kept);
        endRemoveRows();
    } else if (newRows.size() > kept) {
        beginInsertRows({}, int(kept), int(newRows.size()) - 1);
        m_rows = newRows;
        endInsertRows();
    }
}

int WeekView::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int WeekView::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnsInAll;
}

QVariant WeekView::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row& row = m_rows[index.row()];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return index.column() == 0 ? row.name : row.cells[index.column() - 1];
    if (role == Qt::TextAlignmentRole)
        return int((index.column() == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return {};
}

QVariant WeekView::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnsInAll)
        return {};
    const bool day = section > 0 && section <= m_dayNames.size();
    if (role == Qt::DisplayRole) {
        if (section == 0)
            return QStringLiteral("Projects");
        return day                           ? m_dayNames[section - 1]
               : section == columnsInAll - 1 ? QStringLiteral("Total")
                                             : QString();
    }
    if (role == DayOfMonthRole)
        return day ? m_daysOfMonth[section - 1] : 0;
    if (role == Qt::TextAlignmentRole)
        return int((section == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return {};
}

} // namespace kelvrane
