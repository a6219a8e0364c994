// The list view of all projects: a row a project, a column for each name of FieldNames, sorted by a
// click on a column's head.
//
//     Manager().ListView1.setRows(FieldNames.mid(1), rows);
//     Manager().ListView1.sortBy(0, false);
#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

namespace kelvrane {

class ProjectList : public QAbstractTableModel {
    Q_OBJECT
  public:
    /// Heads' role: 0 none, 1 sorted descending, 2 sorted ascending.
    static constexpr int SortIconRole = Qt::UserRole + 1;
    /// Cells' role: true for the cell that shows an inactive project's flag.
    static constexpr int InactiveRole = Qt::UserRole + 2;
    /// 0-based columns.
    static constexpr int NameColumn = 0;
    static constexpr int NumberColumn = 1;
    static constexpr int ActiveColumn = 3;

    using QAbstractTableModel::QAbstractTableModel;

    void clear();
    /// Replaces columns and rows; the rows stand as given, unsorted. Keys: the records' own, a row
    /// each.
    void setRows(const QStringList& columns, QList<QStringList> rows, QStringList keys = {});
    qsizetype count() const { return m_rows.size(); }
    /// 1-based row, 0-based column; raises Subscript outside the list.
    const QString& text(int row, int column) const;

    /// Sorts by a column: by value where all its texts are numbers or dates, else as texts without
    /// regard to case. Rows that are equal keep their order. Gives the place (1-based, 0: none) to
    /// which the row at a place went.
    int sortBy(int column, bool descending, int followed = 0);
    int sortColumn() const { return m_sortColumn; } ///< -1: not sorted
    bool sortedDescending() const { return m_descending; }

    /// The key of the record that a row (1-based) shows, wherever it was sorted to; "" outside.
    QString key(int row) const { return m_keys.value(row - 1); }
    /// The 1-based row of the record with this key; 0: none.
    int rowOfKey(const QString& key) const { return static_cast<int>(m_keys.indexOf(key)) + 1; }
    /// Asks the view to select the row (1-based), to scroll to it and to take the focus; 0: to
    /// select none.
    void wantRow(int row) { emit RowWanted(row); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  signals:
    void RowWanted(int row);

  private:
    void applyOrder(const QList<int>& order);

    QStringList m_columns;
    QList<QStringList> m_rows;
    QStringList m_keys;
    int m_sortColumn = -1;
    bool m_descending = false;
};

} // namespace kelvrane
