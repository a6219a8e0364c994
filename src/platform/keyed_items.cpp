#include "platform/keyed_items.h"

#include "platform/error.h"

#include <QSet>

#include <utility>

namespace kelvrane {

KeyedItems::KeyedItems(QObject* parent) : QAbstractListModel(parent) {}

KeyedItems::KeyedItems(QList<KeyedItem> items, QObject* parent)
    : QAbstractListModel(parent), m_items(std::move(items)) {}

int KeyedItems::rowOf(const QString& key) const {
    if (key.isEmpty())
        return -1;
    for (qsizetype row = 0; row < m_items.size(); ++row)
        if (m_items[row].key == key)
            return static_cast<int>(row);
    return -1;
}

const KeyedItem& KeyedItems::item(const QString& key) const {
    const int row = rowOf(key);
    if (row < 0)
        Raise(errors::BadArgument, QStringLiteral("There is no item '%1'").arg(key));
    return m_items[row];
}

template <typename Field>
void KeyedItems::setField(const QString& key, Field KeyedItem::*field, const Field& value) {
    if (item(key).*field == value)
        return;
    const int row = rowOf(key);
    m_items[row].*field = value;
    emit dataChanged(index(row), index(row));
}

void KeyedItems::setValue(const QString& key, const QString& value) {
    setField(key, &KeyedItem::value, value);
}
void KeyedItems::setCaption(const QString& key, const QString& caption) {
    setField(key, &KeyedItem::caption, caption);
}
void KeyedItems::setToolTip(const QString& key, const QString& toolTip) {
    setField(key, &KeyedItem::toolTip, toolTip);
}
void KeyedItems::setImage(const QString& key, const QString& image) {
    setField(key, &KeyedItem::image, image);
}
void KeyedItems::setChoices(const QString& key, const QStringList& choices) {
    setField(key, &KeyedItem::choices, choices);
}
void KeyedItems::setEnabled(const QString& key, bool enabled) {
    setField(key, &KeyedItem::enabled, enabled);
}
void KeyedItems::setVisible(const QString& key, bool visible) {
    setField(key, &KeyedItem::visible, visible);
}
void KeyedItems::setTicked(const QString& key, bool ticked) {
    setField(key, &KeyedItem::ticked, ticked);
}
void KeyedItems::setRole(const QString& key, TextRole role) {
    setField(key, &KeyedItem::role, role);
}

void KeyedItems::append(const KeyedItem& item) {
    insertItems(static_cast<int>(m_items.size()), {item});
}

void KeyedItems::clear() {
    if (!m_items.isEmpty())
        removeItems(0, static_cast<int>(m_items.size()));
}

void KeyedItems::refill(const QList<KeyedItem>& items) {
    // Keys of the rows, and of the items, that weren't placed yet. What has no key is placed only
    // where a row of its kind already stands.
    QSet<QString> held;
    for (const KeyedItem& item : std::as_const(m_items))
        held.insert(item.key);
    QSet<QString> wanted;
    for (const KeyedItem& item : items)
        wanted.insert(item.key);

    const auto heldAt = [this](int row) -> const KeyedItem& { return std::as_const(m_items)[row]; };
    const auto rows = [this] { return static_cast<int>(m_items.size()); };
    const auto stays = [&](int row) {
        return row < rows() && heldAt(row).key == items[row].key &&
               (!items[row].key.isEmpty() || heldAt(row).kind == items[row].kind);
    };
    const auto isUnwanted = [&](int row) {
        return row < rows() && (heldAt(row).key.isEmpty() || !wanted.contains(heldAt(row).key));
    };
    const auto isNew = [&](int row) {
        return row < items.size() && (items[row].key.isEmpty() || !held.contains(items[row].key));
    };

    int row = 0;
    while (row < items.size()) {
        if (stays(row)) {
            if (heldAt(row) != items[row]) {
                m_items[row] = items[row];
                emit dataChanged(index(row), index(row));
            }
            held.remove(items[row].key);
            wanted.remove(items[row].key);
            ++row;
        } else if (isUnwanted(row)) {
            int end = row + 1;
            while (isUnwanted(end))
                ++end;
            removeItems(row, end - row);
        } else if (isNew(row)) {
            int end = row + 1;
            while (isNew(end))
                ++end;
            insertItems(row, items.mid(row, end - row));
            row = end;
        } else {
            int from = row + 1;
            while (heldAt(from).key != items[row].key)
                ++from;
            beginMoveRows({}, from, from, {}, row);
            m_items.move(from, row);
            endMoveRows();
        }
    }
    if (rows() > row)
        removeItems(row, rows() - row);
}

void KeyedItems::insertItems(int row, const QList<KeyedItem>& items) {
    beginInsertRows({}, row, row + static_cast<int>(items.size()) - 1);
    if (row == m_items.size()) {
        m_items += items;
    } else {
        for (int place = 0; place < items.size(); ++place)
            m_items.insert(row + place, items[place]);
    }
    endInsertRows();
}

void KeyedItems::removeItems(int row, int count) {
    beginRemoveRows({}, row, row + count - 1);
    m_items.remove(row, count);
    endRemoveRows();
}

bool KeyedItems::reachable(const QString& key) const {
    // An item in a submenu is out of reach with its submenu. The count bounds a circle of parents.
    QString next = key;
    for (qsizetype level = 0; level <= m_items.size(); ++level) {
        const int row = rowOf(next);
        if (row < 0)
            return level > 0;
        if (!m_items[row].enabled || !m_items[row].visible)
            return false;
        next = m_items[row].parent;
    }
    return false;
}

void KeyedItems::edit(const QString& key, const QString& value) {
    if (!reachable(key))
        return;
    setValue(key, value);
    emit Edited(key, value);
}

void KeyedItems::choose(const QString& key, int place) {
    if (!reachable(key))
        return;
    const QStringList choices = item(key).choices;
    if (place < 0 || place >= choices.size())
        return;
    const QString value = choices[place];
    setValue(key, value);
    emit Chosen(key, place, value);
    emit Edited(key, value);
}

void KeyedItems::click(const QString& key) {
    if (reachable(key))
        emit Clicked(key);
}

void KeyedItems::toggle(const QString& key) {
    if (reachable(key))
        emit Clicked(key);
}

void KeyedItems::press(const QString& key) {
    if (reachable(key))
        emit ButtonPressed(key);
}

void KeyedItems::select(const QString& key) {
    if (reachable(key))
        emit Selected(key);
}

int KeyedItems::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant KeyedItems::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_items.size())
        return {};
    const KeyedItem& item = m_items[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return item.caption;
    case Qt::ToolTipRole:
        return item.toolTip;
    case KeyRole:
        return item.key;
    case Qt::EditRole:
    case ValueRole:
        return item.value;
    case KindRole:
        return static_cast<int>(item.kind);
    case TickedRole:
        return item.ticked;
    default:
        return {};
    }
}

Qt::ItemFlags KeyedItems::flags(const QModelIndex& index) const {
    if (!index.isValid() || index.row() >= m_items.size())
        return Qt::NoItemFlags;
    const KeyedItem& item = m_items[index.row()];
    if (!item.enabled || item.kind == ItemKind::Separator || item.kind == ItemKind::Spacer)
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return item.kind == ItemKind::Edit ? flags | Qt::ItemIsEditable : flags;
}

} // namespace kelvrane
