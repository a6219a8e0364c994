// Tabs over pages, at the top of a left column. The items are the pages, in their order.
#pragma once

#include "platform/keyed_items.h"

#include <QHash>
#include <QWidget>

class QStackedWidget;
class QTabBar;

namespace kelvrane {

class TabStrip : public QWidget {
    Q_OBJECT
  public:
    /// The items outlive the strip. The first page is current.
    explicit TabStrip(KeyedItems* pages, QWidget* parent = nullptr);

    /// Takes the widget as the page of the key.
    void bindPage(const QString& key, QWidget* page);
    /// Turns to a page; nothing for an absent key. Emits changed, and doesn't click the item.
    void setCurrent(const QString& key);
    /// Key of the page on top, "" when there is none.
    QString current() const;

  signals:
    void changed(const QString& key);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void rebuild();
    void step(int by);
    void turnTo(const QString& key);
    int tabOf(const QString& key) const;

    KeyedItems* m_items;
    QTabBar* m_tabs;
    QStackedWidget* m_stack;
    QHash<QString, QWidget*> m_pages;
    QString m_current;
};

} // namespace kelvrane
