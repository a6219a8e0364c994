// A push button over one keyed item, for dialogs.
#pragma once

#include <QString>

class QPushButton;
class QWidget;

namespace kelvrane {

class KeyedItems;

/// Object name is the key, caption and accessible name are the item's; a click takes the open
/// editor's text over and clicks the item. The items outlive the button. Raises BadArgument for an
/// absent key.
QPushButton* CreatePushButton(KeyedItems* items, const QString& key, QWidget* parent);

} // namespace kelvrane
