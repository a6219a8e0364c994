// Chart types to choose from, each with a small picture of itself over its name. The items are
// keyed by the types' descriptions; a click, Enter or Space clicks the item, the ticked one is
// marked.
#pragma once

#include <QListView>

namespace kelvrane {

class KeyedItems;

class ChartTypeList : public QListView {
    Q_OBJECT
  public:
    /// The items outlive the list.
    explicit ChartTypeList(KeyedItems* items, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    void choose(const QModelIndex& index);

    KeyedItems* m_items;
};

} // namespace kelvrane
