// A vertical list of controls over keyed items: checks, choices, commands, fields. What is ticked
// is what the items say; a click only tells them.
#pragma once

#include "platform/keyed_items.h"

#include <QHash>
#include <QWidget>

class QGridLayout;

namespace kelvrane {

class HeadingLine;

/// Each control's object name is its key. Text typed is handed on with every key stroke.
class KeyedButtons : public QWidget {
    Q_OBJECT
  public:
    /// The items outlive the widget. No heading line for an empty heading.
    KeyedButtons(KeyedItems* items, const QString& heading, QWidget* parent = nullptr);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    struct Row {
        ItemKind kind = ItemKind::Text;
        QWidget* caption = nullptr; ///< stands before a field
        QWidget* control = nullptr;
    };

    void rebuild();
    void place(const Row& row, int line);
    void refresh(int first, int last);
    Row create(const KeyedItem& item);
    QWidget* createControl(const KeyedItem& item);
    void showItem(const KeyedItem& item, const Row& row);
    void applyPalette();

    KeyedItems* m_items;
    HeadingLine* m_heading;
    QGridLayout* m_grid;
    QList<Row> m_rows; ///< one for each item, in their order
    QHash<QString, Row> m_byKey;
};

} // namespace kelvrane
