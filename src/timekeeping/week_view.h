// The week view as a table: worked hours by project and day of one week.
#pragma once

#include <QAbstractTableModel>
#include <QDate>
#include <QList>
#include <QStringList>

namespace kelvrane {

/// Columns "Projects", seven days, "Total"; a header icon is the day of the month (0: none).
class WeekView : public QAbstractTableModel {
    Q_OBJECT
  public:
    static constexpr int columnsInAll = 9;
    static constexpr int DayOfMonthRole = Qt::UserRole + 1; ///< of horizontal headers

    struct Row {
        QString name;
        QStringList cells = QStringList(columnsInAll - 1); ///< days 0 to 6, then the total
        bool operator==(const Row&) const = default;
    };

    using QAbstractTableModel::QAbstractTableModel;
    QDate WeekStartDate;
    QDate WeekEndDate; ///< WeekStartDate + 7

    void setHeaders(const QStringList& dayNames, const QList<int>& daysOfMonth);
    /// Replaces the rows by a difference, so that a refresh keeps selection and scroll place.
    void setRows(const QList<Row>& rows);
    const QList<Row>& rows() const { return m_rows; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QStringList m_dayNames;
    QList<int> m_daysOfMonth;
    QList<Row> m_rows;
};

} // namespace kelvrane
