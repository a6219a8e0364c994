// A plain list of names over keyed items, for as many as a folder or a collection may hold: icons,
// tick boxes, one row height. Rows of kind Heading stand out, rows whose role is Inactive are red.
//
//     auto* files = new EntryList(&model.File1, "Collections", this);
#pragma once

#include "platform/keyed_items.h"
#include "widgets/card.h"

class QModelIndex;

namespace kelvrane {

class EntryView;
class HeadingLine;

class EntryList : public Card {
    Q_OBJECT
  public:
    /// The items outlive the list. A row that is chosen, by mouse or arrow keys, selects its item;
    /// Enter or a double click clicks it; a tick box or Space toggles it. No heading line for an
    /// empty heading.
    EntryList(KeyedItems* items, const QString& heading, QWidget* parent = nullptr);

    QString currentKey() const;
    /// Moves the choice without telling the items.
    void setCurrentKey(const QString& key);
    /// Shown in the middle while there are no rows.
    void setPlaceholder(const QString& text);
    /// The row of a key in the viewport's coordinates. For tests.
    QRect rowRect(const QString& key) const;
    QWidget* viewport() const;

    QSize sizeHint() const override { return {240, 300}; }

  signals:
    /// The right button, or the context-menu key; the key is "" beside the rows.
    void contextMenuWanted(const QString& key, const QPoint& globalPosition);

  private:
    QModelIndex indexOf(const QString& key) const;

    KeyedItems* m_items;
    HeadingLine* m_heading;
    EntryView* m_view;
};

} // namespace kelvrane
