// A list of captions and values: the keyed panel on screen. Two columns, one quiet heading, inline
// editors for what can be edited. It shows its items and hands what the user does back to them.
//
//     auto* panel = new KeyedPanel(&model.smuiProjectStatus, "Current Project", this);
#pragma once

#include "platform/keyed_items.h"
#include "widgets/card.h"

#include <QStringList>

namespace kelvrane {

class HeadingLine;
class PanelView;

class KeyedPanel : public Card {
    Q_OBJECT
  public:
    /// The items outlive the panel. No heading line for an empty heading.
    KeyedPanel(KeyedItems* items, const QString& heading, QWidget* parent = nullptr);

    /// Key of the row chosen, "" for none.
    QString currentKey() const;
    /// Moves the choice without telling the items. An absent key clears it.
    void setCurrentKey(const QString& key);

    /// Which side of their column the values stand on; right unless set. Left reads better where
    /// most rows are typed text.
    void setValueAlignment(Qt::Alignment alignment);
    /// Rows whose values are set larger, as the running project and its total.
    void setProminent(const QStringList& keys);
    /// Shown in the middle while there are no rows: what would be here, and how to get it.
    void setPlaceholder(const QString& text);

    /// Scrolls to the last row.
    void showEnd();

    QString heading() const;

    /// The rectangle of a row in this widget's coordinates, and of its value; empty when it isn't
    /// shown. For tests, tours and pop-ups.
    QRect rowRect(const QString& key) const;
    QRect valueRect(const QString& key) const;
    /// Opens the drop-down or editor of a row, or presses its button.
    void activate(const QString& key);
    /// The view with the rows; its viewport takes the mouse.
    QWidget* viewport() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    /// Right button let go on a row with a key, or the context-menu key.
    void contextMenuWanted(const QString& key, const QPoint& globalPosition);

  private:
    HeadingLine* m_heading;
    PanelView* m_view;
};

} // namespace kelvrane
