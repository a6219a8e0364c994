// The tree beside the chart. The nodes at the top are given; what is below a node is read from the
// history when the node is first opened, so that a tree over ten years costs nothing to show.
//
// By project: project, its days, and under each day two lines with its times. By date: day, its
// projects, and under each project the same two lines.
#pragma once

#include "charts/chart_data.h"
#include "platform/error.h"

#include <QAbstractItemModel>
#include <QStringList>

#include <memory>
#include <vector>

namespace kelvrane {

namespace list_views {
inline constexpr int ByDate = 0;
inline constexpr int ByProject = 1;
} // namespace list_views

class ChartTree : public QAbstractItemModel {
    Q_OBJECT
  public:
    /// "A" and a running number in the order in which the nodes came.
    enum Role { KeyRole = Qt::UserRole + 1 };

    ChartTree();
    ~ChartTree() override;

    void clear();
    /// A node at the top for each total; below it the project's rows of the dates.
    void setProjects(const QList<DayProjectTotal>& totals, QDate from, QDate to);
    /// A node at the top for each date, as it is stored.
    void setDates(const QStringList& dates);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    /// What can't be read leaves the node without children; Failed tells why once the view that
    /// asked is through.
    void fetchMore(const QModelIndex& parent) override;

  signals:
    void Failed(const RuntimeError& error);

  private:
    struct Node;
    using Nodes = std::vector<std::unique_ptr<Node>>;

    Node* nodeAt(const QModelIndex& index) const;
    std::unique_ptr<Node> makeNode(const QString& text, Node* parent, int row);
    void setTops(const QStringList& texts);
    Nodes rowNodes(Node& top);
    Nodes timeNodes(Node& row);

    std::unique_ptr<Node> m_root;
    QStringList m_tops; ///< the names or stored dates of the nodes at the top
    bool m_byProject = false;
    QDate m_from, m_to;
    int m_lastKey = 0;
};

/// "Monday, Mar 2 2026" of a stored date; what isn't a date stays as it is.
QString TreeDateText(const QString& stored);

} // namespace kelvrane
