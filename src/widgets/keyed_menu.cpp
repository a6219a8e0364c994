#include "widgets/keyed_menu.h"

#include "widgets/captions.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

#include <utility>

namespace kelvrane {

namespace {

/// Lives and dies with its menu or menu bar.
class MenuFiller final : public QObject {
  public:
    /// Of the items below the parent, or of all where it is empty.
    MenuFiller(QWidget* menu, KeyedItems* items, const QString& parent)
        : QObject(menu), m_menu(menu), m_items(items), m_parent(parent),
          m_isBar(qobject_cast<QMenuBar*>(menu)) {
        const auto refill = [this] { fill(); };
        connect(items, &QAbstractItemModel::rowsInserted, this, refill);
        connect(items, &QAbstractItemModel::rowsRemoved, this, refill);
        connect(items, &QAbstractItemModel::rowsMoved, this, refill);
        connect(items, &QAbstractItemModel::modelReset, this, refill);
        connect(items, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& first, const QModelIndex& last) {
                    for (int row = first.row(); row <= last.row() && row < m_actions.size(); ++row)
                        if (m_actions[row])
                            show(m_items->items()[row], m_actions[row]);
                });
        fill();
    }

  private:
    /// Puts the actions in the items' order. Those with a key stay the same objects, so a menu that
    /// is open keeps what it shows.
    void fill() {
        QHash<QString, QAction*> former;
        for (QAction* action : std::as_const(m_actions)) {
            if (action == nullptr)
                continue;
            for (QObject* owner : action->associatedObjects())
                if (auto* menu = qobject_cast<QWidget*>(owner))
                    menu->removeAction(action);
            if (action->objectName().isEmpty() || former.contains(action->objectName()))
                action->deleteLater();
            else
                former.insert(action->objectName(), action);
        }
        m_actions.clear();
        for (const KeyedItem& item : m_items->items()) {
            if (!m_parent.isEmpty() && item.parent != m_parent) {
                m_actions.append(nullptr);
                continue;
            }
            QAction* action = former.take(item.key);
            if (action != nullptr &&
                (action->menu() != nullptr) != (item.kind == ItemKind::SubMenu)) {
                discard(action);
                action = nullptr;
            }
            if (action == nullptr)
                action = create(item);
            m_actions.append(action);
            show(item, action);
        }
        for (QAction* gone : std::as_const(former))
            discard(gone);
        for (qsizetype row = 0; row < m_actions.size(); ++row)
            if (m_actions[row])
                menuOf(m_items->items()[row])->addAction(m_actions[row]);
    }

    QAction* create(const KeyedItem& item) {
        QAction* action = nullptr;
        if (item.kind == ItemKind::SubMenu) {
            auto* subMenu = new QMenu(m_menu);
            subMenu->setToolTipsVisible(true);
            action = subMenu->menuAction();
        } else {
            action = new QAction(m_menu);
            connect(action, &QAction::triggered, this, [this, action, key = item.key] {
                CommitOpenEditor();
                const QPointer<MenuFiller> alive(this);
                m_items->click(key);
                // The desktop ticked it; what counts is the item.
                if (alive && m_items->contains(key))
                    show(m_items->item(key), action);
            });
        }
        action->setObjectName(item.key);
        return action;
    }

    static void discard(QAction* action) {
        if (QMenu* subMenu = action->menu())
            subMenu->deleteLater();
        else
            action->deleteLater();
    }

    /// The menu that holds an item: its parent's, or the whole.
    QWidget* menuOf(const KeyedItem& item) const {
        const int row = m_items->rowOf(item.parent);
        QMenu* menu = row < 0 || !m_actions[row] ? nullptr : m_actions[row]->menu();
        return menu == nullptr ? m_menu : menu;
    }

    void show(const KeyedItem& item, QAction* action) const {
        action->setSeparator(item.kind == ItemKind::Separator);
        action->setText(m_isBar ? item.caption.trimmed() : ControlCaption(item.caption));
        action->setToolTip(item.toolTip);
        action->setIcon(theme::Icon(item.image));
        action->setEnabled(item.enabled);
        const bool besideBar = m_isBar && item.parent.isEmpty() && item.kind != ItemKind::SubMenu;
        action->setVisible(item.visible && !besideBar);
        action->setCheckable(item.kind == ItemKind::Check || item.kind == ItemKind::Choice ||
                             item.ticked);
        action->setChecked(item.ticked);
    }

    QWidget* m_menu;
    KeyedItems* m_items;
    QString m_parent;
    bool m_isBar;              ///< captions mark their mnemonics, and only submenus stand in it
    QList<QAction*> m_actions; ///< one for each item, in their order; null for those elsewhere
};

} // namespace

void BindMenu(QMenu* menu, KeyedItems* items, const QString& parent) {
    menu->setToolTipsVisible(true);
    new MenuFiller(menu, items, parent); // a child of the menu
}

void BindMenuBar(QMenuBar* bar, KeyedItems* items) {
    new MenuFiller(bar, items, {});
}

} // namespace kelvrane
