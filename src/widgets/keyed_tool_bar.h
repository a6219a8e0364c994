// A tool bar over keyed items: icon and word side by side, icons alone when there is no room. An
// item of kind SubMenu is a button that opens the items whose parent it is, one of kind DropDown a
// button whose click opens something of the caller's.
#pragma once

#include "platform/keyed_items.h"

#include <QHash>
#include <QWidget>

class QHBoxLayout;

namespace kelvrane {

class FlatButton;

/// Each button's object name is its key, its accessible name its caption.
class KeyedToolBar : public QWidget {
    Q_OBJECT
  public:
    /// The items outlive the tool bar.
    explicit KeyedToolBar(KeyedItems* items, QWidget* parent = nullptr);

    /// Puts a field of the caller's in the place of an item of kind Edit; it comes and goes with
    /// the item.
    void setField(const QString& key, QWidget* field);

    /// False while only icons have room.
    bool showsWords() const { return m_words; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void rebuild();
    void addMenu(FlatButton* button, const QString& key);
    void refresh(int first, int last);
    void showItem(const KeyedItem& item);
    void fitWords();
    int widthWith(bool words) const;

    KeyedItems* m_items;
    QHBoxLayout* m_layout;
    QHash<QString, FlatButton*> m_buttons;
    QHash<QString, QWidget*> m_fields;
    QList<QWidget*> m_fillers; ///< separators and spacers
    bool m_words = true;
};

} // namespace kelvrane
