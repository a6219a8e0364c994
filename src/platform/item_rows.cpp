#include "platform/item_rows.h"

namespace kelvrane {

QList<KeyedItem> ItemsOf(std::span<const ItemRow> rows) {
    QList<KeyedItem> items;
    for (const ItemRow& row : rows)
        items.append({.key = QString::fromLatin1(row.key),
                      .caption = QString::fromLatin1(row.caption),
                      .kind = row.kind,
                      .toolTip = QString::fromLatin1(row.toolTip),
                      .image = QString::fromLatin1(row.image),
                      .enabled = row.enabled,
                      .visible = row.visible,
                      .ticked = row.ticked,
                      .parent = QString::fromLatin1(row.parent)});
    return items;
}

} // namespace kelvrane
