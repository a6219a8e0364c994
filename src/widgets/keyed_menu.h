// Keyed items as a menu.
#pragma once

#include "platform/keyed_items.h"

class QMenu;
class QMenuBar;

namespace kelvrane {

/// Fills the menu from the items and keeps it so whenever they change, never on opening, since some
/// desktops show a copy. An action's object name is its key; triggering it clicks the item. Items
/// with a parent go into the submenu of that key. With a parent given, only the items directly
/// below it are the menu's. The items outlive the menu.
void BindMenu(QMenu* menu, KeyedItems* items, const QString& parent = {});

/// The same for a menu bar: only the submenus stand in it, and captions mark their mnemonics:
/// "&File", "Save &As ...".
void BindMenuBar(QMenuBar* bar, KeyedItems* items);

} // namespace kelvrane
