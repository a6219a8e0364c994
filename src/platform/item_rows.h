// The rows of a panel, menu or tool bar as a constexpr table, in the order in which they are shown.
//
//     constexpr ItemRow menuRows[] = {
//         {"mnuAdd", "Add"},
//         {.kind = ItemKind::Separator},
//     };
//     items.refill(ItemsOf(menuRows));
#pragma once

#include "platform/keyed_items.h"

#include <span>

namespace kelvrane {

struct ItemRow {
    const char* key = "";
    const char* caption = "";
    const char* toolTip = "";
    const char* image = "";
    ItemKind kind = ItemKind::Button;
    bool visible = true;
    bool enabled = true;
    bool ticked = false;
    const char* parent = ""; ///< key of the submenu that holds it
};

QList<KeyedItem> ItemsOf(std::span<const ItemRow> rows);

} // namespace kelvrane
