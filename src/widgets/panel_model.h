// The rows of a panel: the items that are shown.
#pragma once

#include "platform/keyed_items.h"

#include <QSortFilterProxyModel>

namespace kelvrane {

class PanelModel : public QSortFilterProxyModel {
    Q_OBJECT
  public:
    PanelModel(KeyedItems* items, QObject* parent);

    KeyedItems* items() const { return m_items; }
    const KeyedItem& itemAt(const QModelIndex& index) const;
    /// An invalid index for a key that is absent or hidden.
    QModelIndex indexOf(const QString& key) const;

    QVariant data(const QModelIndex& index, int role) const override;
    /// Rows without a key can't be chosen.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

  private:
    KeyedItems* m_items;
};

} // namespace kelvrane
