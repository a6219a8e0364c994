// A list of keyed items: the stand-in for every panel, tool bar, menu and tab strip of the program.
// Modules fill and read it, widgets show it. Modules change it through set...(), which only ever
// signals the views; what the user does arrives through edit(), click(), toggle() and press(),
// which signal the module.
//
//     items.append({.key = "STOP", .caption = "Stop", .kind = ItemKind::Button});
//     items.setEnabled("STOP", false);
//     connect(&items, &KeyedItems::Clicked, [] (const QString& key) { ... });
#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QString>
#include <QStringList>

namespace kelvrane {

enum class ItemKind {
    Text,      ///< caption and value, read-only
    Edit,      ///< value typed by the user
    DropDown,  ///< value chosen from choices
    Browse,    ///< value with a button
    Check,     ///< ticked or not
    Choice,    ///< one of a group is ticked
    Button,    ///< a command
    Heading,   ///< a line over the items that follow; may have no key
    Separator, ///< no key
    Spacer,    ///< pushes what follows to the far end; no key
    SubMenu,   ///< opens the items whose parent it is
    Progress,  ///< value is 0 to 100, caption the label
};

enum class TextRole {
    Value,    ///< blue
    Inactive, ///< red: inactive or unassigned
    Plain,
};

struct KeyedItem {
    QString key = {};
    QString caption = {};
    QString value = {};
    ItemKind kind = ItemKind::Text;
    QString toolTip = {};
    QString image = {}; ///< name of an icon of the program, without folder and ending
    QStringList choices = {};
    bool enabled = true;
    bool visible = true;
    bool ticked = false;
    TextRole role = TextRole::Value;
    QString parent = {}; ///< key of the submenu that holds it; empty at the top

    bool operator==(const KeyedItem&) const = default;
};

class KeyedItems : public QAbstractListModel {
    Q_OBJECT
  public:
    enum Role { KeyRole = Qt::UserRole + 1, ValueRole, KindRole, TickedRole };

    explicit KeyedItems(QObject* parent = nullptr);
    explicit KeyedItems(QList<KeyedItem> items, QObject* parent = nullptr);

    qsizetype count() const { return m_items.size(); }
    const QList<KeyedItem>& items() const { return m_items; }
    bool contains(const QString& key) const { return rowOf(key) >= 0; }
    /// Row of a key, -1 when there is none.
    int rowOf(const QString& key) const;
    /// Raises BadArgument for an absent key, like all set...() below.
    const KeyedItem& item(const QString& key) const;
    QString value(const QString& key) const { return item(key).value; }

    void setValue(const QString& key, const QString& value);
    void setCaption(const QString& key, const QString& caption);
    void setToolTip(const QString& key, const QString& toolTip);
    void setImage(const QString& key, const QString& image);
    void setChoices(const QString& key, const QStringList& choices);
    void setEnabled(const QString& key, bool enabled);
    void setVisible(const QString& key, bool visible);
    void setTicked(const QString& key, bool ticked);
    void setRole(const QString& key, TextRole role);

    void append(const KeyedItem& item);
    void clear();
    /// Replaces all items by a difference: rows that stay, by key and place, only signal what
    /// changed in them, so views keep their selection and open editors.
    void refill(const QList<KeyedItem>& items);

    // What the user did; called by widgets and tests. Ignored on disabled or hidden items.
    void edit(const QString& key, const QString& value); ///< stores the value, then Edited
    /// A choice from the list of a DropDown by its 0-based place: stores it, then Chosen and
    /// Edited.
    void choose(const QString& key, int place);
    void click(const QString& key);  ///< Clicked
    void toggle(const QString& key); ///< Clicked; the module sets the tick
    void press(const QString& key);  ///< ButtonPressed (browse button)
    void select(const QString& key); ///< Selected (a row was chosen)

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  signals:
    void Edited(const QString& key, const QString& value);
    void Chosen(const QString& key, int place, const QString& value);
    void Clicked(const QString& key);
    void ButtonPressed(const QString& key);
    void Selected(const QString& key);

  private:
    template <typename Field>
    void setField(const QString& key, Field KeyedItem::*field, const Field& value);
    bool reachable(const QString& key) const;
    void insertItems(int row, const QList<KeyedItem>& items);
    void removeItems(int row, int count);

    QList<KeyedItem> m_items;
};

} // namespace kelvrane
