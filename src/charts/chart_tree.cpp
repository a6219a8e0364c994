#include "charts/chart_tree.h"

#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <QLocale>
#include <QTimer>

#include <utility>

namespace kelvrane {

struct ChartTree::Node {
    enum Level { Root, Top, Row, Times };

    QString text;
    QString key;
    Node* parent = nullptr;
    int row = 0;
    Level level = Root;
    bool fetched = false;
    HistoryRow times; ///< of a row
    Nodes children;
};

ChartTree::ChartTree() : m_root(std::make_unique<Node>()) {}
ChartTree::~ChartTree() = default;

QString TreeDateText(const QString& stored) {
    const QDate date = DateFromText(stored);
    return date.isValid() ? QLocale::c().toString(date, QStringLiteral("dddd, MMM d yyyy"))
                          : stored;
}

ChartTree::Node* ChartTree::nodeAt(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_root.get();
}

std::unique_ptr<ChartTree::Node> ChartTree::makeNode(const QString& text, Node* parent, int row) {
    auto node = std::make_unique<Node>();
    node->text = text;
    node->key = QLatin1Char('A') + QString::number(++m_lastKey);
    node->parent = parent;
    node->row = row;
    node->level = Node::Level(parent->level + 1);
    return node;
}

void ChartTree::setTops(const QStringList& texts) {
    beginResetModel();
    m_root = std::make_unique<Node>();
    m_root->fetched = true;
    m_lastKey = 0;
    m_root->children.reserve(size_t(texts.size()));
    for (const QString& text : texts)
        m_root->children.push_back(makeNode(text, m_root.get(), int(m_root->children.size())));
    endResetModel();
}

void ChartTree::clear() {
    m_tops.clear();
    setTops({});
}

void ChartTree::setProjects(const QList<DayProjectTotal>& totals, QDate from, QDate to) {
    m_byProject = true;
    m_from = from;
    m_to = to;
    m_tops.clear();
    for (const DayProjectTotal& total : totals)
        m_tops.append(total.Name);
    setTops(m_tops);
}

void ChartTree::setDates(const QStringList& dates) {
    m_byProject = false;
    m_tops = dates;
    QStringList texts;
    for (const QString& date : dates)
        texts.append(TreeDateText(date));
    setTops(texts);
}

ChartTree::Nodes ChartTree::rowNodes(Node& top) {
    const QString& wanted = m_tops[top.row];
    Nodes nodes;
    for (const HistoryRow& row :
         m_byProject ? ReadRowsOfProject(wanted, m_from, m_to) : ReadRowsOfDate(wanted)) {
        const QString text = m_byProject ? TreeDateText(row.Date)
                                         : QString(row.ProjectName + QStringLiteral(" (") +
                                                   row.ProjectNumber + QStringLiteral(" )"));
        nodes.push_back(makeNode(text, &top, int(nodes.size())));
        nodes.back()->times = row;
    }
    return nodes;
}

ChartTree::Nodes ChartTree::timeNodes(Node& row) {
    const Int16 pause(row.times.BreakMinutes);
    const Int16 work = Int16(row.times.TotalMinutes) - pause;
    Nodes nodes;
    nodes.push_back(makeNode(QStringLiteral("Work Time: ") + MinutesToText(work), &row, 0));
    nodes.push_back(makeNode(QStringLiteral("Break Time: ") + MinutesToText(pause), &row, 1));
    return nodes;
}

QModelIndex ChartTree::index(int row, int column, const QModelIndex& parent) const {
    const Node* node = nodeAt(parent);
    if (column != 0 || row < 0 || row >= int(node->children.size()))
        return {};
    return createIndex(row, column, node->children[size_t(row)].get());
}

QModelIndex ChartTree::parent(const QModelIndex& index) const {
    Node* above = index.isValid() ? nodeAt(index)->parent : nullptr;
    return !above || above == m_root.get() ? QModelIndex() : createIndex(above->row, 0, above);
}

int ChartTree::rowCount(const QModelIndex& parent) const {
    return int(nodeAt(parent)->children.size());
}

int ChartTree::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

QVariant ChartTree::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return nodeAt(index)->text;
    return role == KeyRole ? nodeAt(index)->key : QVariant();
}

bool ChartTree::hasChildren(const QModelIndex& parent) const {
    return canFetchMore(parent) || rowCount(parent) > 0;
}

bool ChartTree::canFetchMore(const QModelIndex& parent) const {
    const Node* node = nodeAt(parent);
    return !node->fetched && (node->level == Node::Top || node->level == Node::Row);
}

void ChartTree::fetchMore(const QModelIndex& parent) {
    if (!canFetchMore(parent))
        return;
    Node& node = *nodeAt(parent);
    node.fetched = true;
    try {
        Nodes children = node.level == Node::Top ? rowNodes(node) : timeNodes(node);
        if (children.empty())
            return;
        beginInsertRows(parent, 0, int(children.size()) - 1);
        node.children = std::move(children);
        endInsertRows();
    } catch (const RuntimeError& error) {
        // A message box here would run events in the middle of the view's own work.
        QTimer::singleShot(0, this, [this, error] { emit Failed(error); });
    }
}

} // namespace kelvrane
