#include "widgets/panel_model.h"

#include "widgets/captions.h"

namespace kelvrane {

PanelModel::PanelModel(KeyedItems* items, QObject* parent)
    : QSortFilterProxyModel(parent), m_items(items) {
    setSourceModel(items);
}

const KeyedItem& PanelModel::itemAt(const QModelIndex& index) const {
    return m_items->items()[mapToSource(index).row()];
}

QModelIndex PanelModel::indexOf(const QString& key) const {
    const int row = m_items->rowOf(key);
    return row < 0 ? QModelIndex() : mapFromSource(m_items->index(row));
}

QVariant PanelModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const KeyedItem& item = itemAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return ShownCaption(item.caption);
    case Qt::AccessibleTextRole: {
        const QString caption = ShownCaption(item.caption);
        return item.value.isEmpty() ? caption : caption + QLatin1Char(' ') + item.value;
    }
    case Qt::AccessibleDescriptionRole:
        return item.toolTip;
    default:
        return QSortFilterProxyModel::data(index, role);
    }
}

Qt::ItemFlags PanelModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || itemAt(index).key.isEmpty())
        return Qt::NoItemFlags;
    return QSortFilterProxyModel::flags(index);
}

bool PanelModel::filterAcceptsRow(int row, const QModelIndex&) const {
    const KeyedItem& item = m_items->items()[row];
    return item.visible && item.kind != ItemKind::Spacer;
}

} // namespace kelvrane
