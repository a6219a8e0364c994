#include "widgets/entry_list.h"

#include "widgets/captions.h"
#include "widgets/heading_line.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QContextMenuEvent>
#include <QIdentityProxyModel>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

/// What the view asks beyond the items' own roles.
class EntryModel final : public QIdentityProxyModel {
  public:
    EntryModel(KeyedItems* items, QWidget* owner)
        : QIdentityProxyModel(owner), m_items(items), m_owner(owner) {
        setSourceModel(items);
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid())
            return {};
        const KeyedItem& item = itemAt(index);
        switch (role) {
        case Qt::DisplayRole:
            return OneLine(item.caption);
        case Qt::ToolTipRole:
            return PlainToolTip(item.toolTip.isEmpty() ? item.caption : item.toolTip);
        case Qt::CheckStateRole:
            if (item.kind == ItemKind::Check)
                return item.ticked ? Qt::Checked : Qt::Unchecked;
            return {};
        case Qt::DecorationRole:
            return item.image.isEmpty() ? QVariant() : theme::Icon(item.image);
        case Qt::ForegroundRole:
            if (item.role == TextRole::Inactive && item.enabled)
                return theme::ValueColor(TextRole::Inactive, m_owner->palette());
            return {};
        case Qt::FontRole:
            return item.kind == ItemKind::Heading ? headingFont() : QVariant();
        default:
            return QIdentityProxyModel::data(index, role);
        }
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        const Qt::ItemFlags flags = QIdentityProxyModel::flags(index);
        if (!index.isValid() || itemAt(index).kind != ItemKind::Check || !itemAt(index).enabled)
            return flags;
        return flags | Qt::ItemIsUserCheckable;
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (role != Qt::CheckStateRole)
            return QIdentityProxyModel::setData(index, value, role);
        m_items->toggle(QString(itemAt(index).key));
        return true;
    }

  private:
    const KeyedItem& itemAt(const QModelIndex& index) const {
        return m_items->items()[index.row()];
    }
    QFont headingFont() const {
        QFont font = m_owner->font();
        font.setWeight(QFont::DemiBold);
        return font;
    }

    KeyedItems* m_items;
    QWidget* m_owner;
};

class EntryDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), qMax(size.height(), theme::RowHeight)};
    }

  protected:
    /// In line with the heading.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->rect.adjust(theme::Step, 0, -theme::Step, 0);
    }
};

QString KeyAt(const QModelIndex& index) {
    return index.data(KeyedItems::KeyRole).toString();
}

} // namespace

/// The view inside: mouse and keys become what the items are told.
class EntryView final : public QListView {
  public:
    EntryView(KeyedItems* items, EntryList* list) : QListView(list), m_items(items), m_list(list) {
        setModel(new EntryModel(items, list));
        setItemDelegate(new EntryDelegate(this));
        setUniformItemSizes(true);
        setFrameShape(QFrame::NoFrame);
        setEditTriggers(NoEditTriggers);
        setTextElideMode(Qt::ElideMiddle);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollMode(ScrollPerPixel);
        setTabKeyNavigation(false);
        viewport()->setAutoFillBackground(false);
    }

    QString placeholder;

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        CommitOpenEditor();
        const QString key = KeyAt(indexAt(event->pos()));
        QListView::mousePressEvent(event);
        if (event->button() == Qt::RightButton)
            emit m_list->contextMenuWanted(key, event->globalPosition().toPoint());
        else if (event->button() == Qt::LeftButton)
            m_items->select(key);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        CommitOpenEditor();
        if (event->button() == Qt::LeftButton)
            m_items->click(KeyAt(indexAt(event->pos())));
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        if (event->reason() == QContextMenuEvent::Keyboard)
            emit m_list->contextMenuWanted(
                KeyAt(currentIndex()),
                viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
        event->accept(); // by mouse it was the press
    }
    void keyPressEvent(QKeyEvent* event) override {
        CommitOpenEditor();
        const QString key = KeyAt(currentIndex());
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !key.isEmpty()) {
            m_items->click(key);
            return;
        }
        if (event->key() == Qt::Key_Escape) { // the screen's
            event->ignore();
            return;
        }
        QListView::keyPressEvent(event);
        if (const QString now = KeyAt(currentIndex()); !now.isEmpty() && now != key)
            m_items->select(now);
    }
    void paintEvent(QPaintEvent* event) override {
        QListView::paintEvent(event);
        if (m_items->count() > 0 || placeholder.isEmpty())
            return;
        QPainter painter(viewport());
        painter.setPen(theme::SecondaryText(palette()));
        painter.drawText(viewport()->rect().adjusted(theme::Margin, theme::Margin, -theme::Margin,
                                                     -theme::Margin),
                         Qt::AlignCenter | Qt::TextWordWrap, placeholder);
    }
    void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override {
        // The base class would choose a neighbour that nobody asked for.
        if (currentIndex().row() >= first && currentIndex().row() <= last)
            setCurrentIndex(QModelIndex());
        QListView::rowsAboutToBeRemoved(parent, first, last);
    }

  private:
    KeyedItems* m_items;
    EntryList* m_list;
};

EntryList::EntryList(KeyedItems* items, const QString& heading, QWidget* parent)
    : Card(parent), m_items(items), m_heading(new HeadingLine(heading, this)),
      m_view(new EntryView(items, this)) {
    m_view->setAccessibleName(heading);
    setAccessibleName(heading);
    setFocusProxy(m_view);
    m_heading->setVisible(!heading.isEmpty());
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Step / 2, 1, theme::Step / 2, theme::Step / 2);
    content->setSpacing(0);
    content->addWidget(m_heading);
    content->addWidget(m_view, 1);
}

QModelIndex EntryList::indexOf(const QString& key) const {
    const int row = m_items->rowOf(key);
    return row < 0 ? QModelIndex() : m_view->model()->index(row, 0);
}

QString EntryList::currentKey() const {
    return KeyAt(m_view->currentIndex());
}

void EntryList::setCurrentKey(const QString& key) {
    m_view->setCurrentIndex(indexOf(key));
}

void EntryList::setPlaceholder(const QString& text) {
    m_view->placeholder = text;
    m_view->viewport()->update();
}

QRect EntryList::rowRect(const QString& key) const {
    return m_view->visualRect(indexOf(key));
}

QWidget* EntryList::viewport() const {
    return m_view->viewport();
}

} // namespace kelvrane
