#include "widgets/keyed_push_button.h"

#include "platform/keyed_items.h"
#include "widgets/captions.h"
#include "widgets/open_editor.h"

#include <QPushButton>

namespace kelvrane {

namespace {
constexpr int buttonHeight = 28;
} // namespace

QPushButton* CreatePushButton(KeyedItems* items, const QString& key, QWidget* parent) {
    const QString caption = items->item(key).caption;
    auto* button = new QPushButton(ControlCaption(caption), parent);
    button->setObjectName(key);
    button->setAccessibleName(ShownCaption(caption));
    button->setAutoDefault(true);
    button->setMinimumHeight(buttonHeight);
    QObject::connect(button, &QPushButton::clicked, items, [items, key] {
        CommitOpenEditor();
        items->click(key);
    });
    return button;
}

} // namespace kelvrane
