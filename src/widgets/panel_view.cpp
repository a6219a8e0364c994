#include "widgets/panel_view.h"

#include "widgets/captions.h"
#include "widgets/choice_popup.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace kelvrane {

PanelView::PanelView(KeyedItems* items, QWidget* parent)
    : QListView(parent), m_items(items), m_model(new PanelModel(items, this)),
      m_delegate(new PanelDelegate(m_model, this)) {
    setModel(m_model);
    setItemDelegate(m_delegate);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setResizeMode(Adjust);
    setMouseTracking(true);
    setTabKeyNavigation(false);
    viewport()->setAttribute(Qt::WA_Hover);
    viewport()->setAutoFillBackground(false);

    connect(m_model, &QAbstractItemModel::rowsInserted, this, &PanelView::onContents);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &PanelView::onContents);
    connect(m_model, &QAbstractItemModel::layoutChanged, this, &PanelView::onContents);
    connect(m_model, &QAbstractItemModel::modelReset, this, &PanelView::onContents);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &PanelView::onContents);
    m_delegate->measure(font());
}

void PanelView::onContents() {
    m_delegate->measure(font());
    scheduleDelayedItemsLayout();
    viewport()->update();
    updateChoices();
    emit rowsHeightChanged();
}

QString PanelView::currentKey() const {
    return currentIndex().isValid() ? m_model->itemAt(currentIndex()).key : QString();
}

void PanelView::setCurrentKey(const QString& key) {
    setCurrentIndex(m_model->indexOf(key));
}

void PanelView::setValueAlignment(Qt::Alignment alignment) {
    m_delegate->valueAlignment = alignment;
    viewport()->update();
}

void PanelView::setProminent(const QStringList& keys) {
    m_delegate->prominent = QSet<QString>(keys.begin(), keys.end());
    onContents();
}

void PanelView::setPlaceholder(const QString& text) {
    m_placeholder = text;
    viewport()->update();
}

QRect PanelView::rowRect(const QString& key) const {
    const QModelIndex index = m_model->indexOf(key);
    return index.isValid() ? visualRect(index) : QRect();
}

QRect PanelView::valueRect(const QString& key) const {
    const QModelIndex index = m_model->indexOf(key);
    return index.isValid() ? m_delegate->valueRect(m_model->itemAt(index), visualRect(index))
                           : QRect();
}

int PanelView::rowsHeight() const {
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    int height = 0;
    for (int row = 0; row < m_model->rowCount(); ++row)
        height += m_delegate->sizeHint(option, m_model->index(row, 0)).height();
    return height;
}

void PanelView::activate(const QString& key) {
    const QModelIndex index = m_model->indexOf(key);
    if (!index.isValid() || !m_model->itemAt(index).enabled)
        return;
    switch (m_model->itemAt(index).kind) {
    case ItemKind::Edit:
        beginEdit(index);
        break;
    case ItemKind::DropDown:
        openChoices(key);
        break;
    case ItemKind::Browse:
        m_items->press(key);
        break;
    case ItemKind::Check:
    case ItemKind::Choice:
        m_items->toggle(key);
        break;
    case ItemKind::Button:
    case ItemKind::SubMenu:
        m_items->click(key);
        break;
    default:
        break;
    }
}

void PanelView::beginEdit(const QPersistentModelIndex& index) {
    CommitOpenEditor(); // whoever hears of it may refill the panel
    if (!index.isValid() || !(m_model->flags(index) & Qt::ItemIsEditable))
        return;
    setCurrentIndex(index);
    edit(index);
    QWidget* editor = indexWidget(index);
    if (editor == nullptr)
        return;
    const QPointer<PanelView> view(this);
    const QPointer<QWidget> line(editor);
    SetOpenEditor(editor, [view, line] {
        if (view && line)
            view->commitData(line);
        if (view && line)
            view->closeEditor(line, QAbstractItemDelegate::NoHint);
    });
}

bool PanelView::holds(const QWidget* editor) const {
    for (int row = 0; row < m_model->rowCount(); ++row)
        if (indexWidget(m_model->index(row, 0)) == editor)
            return true;
    return false;
}

/// The delegate's Enter arrives from the event queue. The editor may have been closed meanwhile, or
/// its row gone.
void PanelView::commitData(QWidget* editor) {
    if (editor != nullptr && holds(editor))
        QListView::commitData(editor);
}

void PanelView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    ForgetOpenEditor(editor);
    if (editor != nullptr && holds(editor)) // not after a refill by whoever heard of its text
        QListView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    if (hint == QAbstractItemDelegate::EditNextItem)
        editNeighbour(1);
    else if (hint == QAbstractItemDelegate::EditPreviousItem)
        editNeighbour(-1);
}

void PanelView::editNeighbour(int step) {
    for (int row = currentIndex().row() + step; row >= 0 && row < m_model->rowCount();
         row += step) {
        const QModelIndex index = m_model->index(row, 0);
        if (m_model->flags(index) & Qt::ItemIsEditable) {
            beginEdit(index);
            return;
        }
    }
    focusNextPrevChild(step > 0);
}

void PanelView::openChoices(const QString& key) {
    CommitOpenEditor(); // whoever hears of it may refill the panel
    if (!m_model->indexOf(key).isValid())
        return;
    const KeyedItem item = m_items->item(key);
    if (item.choices.isEmpty())
        return;
    if (m_popup == nullptr) {
        m_popup = new ChoicePopup(this);
        connect(m_popup, &ChoicePopup::chosen, this,
                [this](int place) { m_items->choose(m_popupKey, place); });
    }
    m_popupKey = key;
    m_popup->setAccessibleName(ShownCaption(item.caption));
    const QRect anchor = valueRect(key);
    m_popup->open(QRect(viewport()->mapToGlobal(anchor.topLeft()), anchor.size()), item.choices,
                  item.value);
}

void PanelView::updateChoices() {
    if (m_popup == nullptr || !m_popup->isVisible())
        return;
    if (!m_model->indexOf(m_popupKey).isValid() ||
        m_items->item(m_popupKey).kind != ItemKind::DropDown)
        m_popup->hide();
    else
        m_popup->setChoices(m_items->item(m_popupKey).choices);
}

void PanelView::rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) {
    // The base class would choose a neighbour that nobody asked for.
    if (currentIndex().isValid() && currentIndex().row() >= first && currentIndex().row() <= last)
        setCurrentIndex(QModelIndex());
    QListView::rowsAboutToBeRemoved(parent, first, last);
}

void PanelView::mousePressEvent(QMouseEvent* event) {
    CommitOpenEditor();
    QListView::mousePressEvent(event);
    const QModelIndex index = indexAt(event->pos());
    m_pressedKey = index.isValid() ? m_model->itemAt(index).key : QString();
    if (!m_pressedKey.isEmpty())
        m_items->select(QString(m_pressedKey));
}

void PanelView::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->pos());
    const QString key = index.isValid() ? m_model->itemAt(index).key : QString();
    if (key.isEmpty() || key != m_pressedKey)
        return;
    if (event->button() == Qt::RightButton) {
        emit contextMenuWanted(key, event->globalPosition().toPoint());
    } else if (event->button() == Qt::LeftButton) {
        const bool onButton = m_delegate->buttonRect(visualRect(index)).contains(event->pos());
        if (m_model->itemAt(index).kind != ItemKind::Browse || onButton)
            activate(key);
    }
}

void PanelView::mouseDoubleClickEvent(QMouseEvent* event) {
    // The second click counts as one of its own, as on any button.
    mousePressEvent(event);
}

void PanelView::mouseMoveEvent(QMouseEvent* event) {
    QListView::mouseMoveEvent(event);
    const QModelIndex index = indexAt(event->pos());
    const bool overText =
        index.isValid() && m_model->itemAt(index).kind == ItemKind::Edit &&
        m_model->itemAt(index).enabled &&
        m_delegate->valueRect(m_model->itemAt(index), visualRect(index)).contains(event->pos());
    viewport()->setCursor(overText ? Qt::IBeamCursor : Qt::ArrowCursor);
}

bool PanelView::takesKey(const QKeyEvent& event) {
    const QModelIndex index = currentIndex();
    if (!index.isValid() || !m_model->itemAt(index).enabled)
        return false;
    const ItemKind kind = m_model->itemAt(index).kind;
    const QString key = m_model->itemAt(index).key;
    const bool drops = kind == ItemKind::DropDown || kind == ItemKind::Browse;
    const bool acts = kind != ItemKind::Text && kind != ItemKind::Heading &&
                      kind != ItemKind::Progress && kind != ItemKind::Separator;
    const auto pressed = event.key();
    const bool plain =
        (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;

    if (drops && (pressed == Qt::Key_F4 ||
                  (pressed == Qt::Key_Down && event.modifiers() == Qt::AltModifier))) {
        activate(key);
        return true;
    }
    if (acts && plain &&
        (pressed == Qt::Key_Return || pressed == Qt::Key_Enter || pressed == Qt::Key_F2 ||
         (pressed == Qt::Key_Space && kind != ItemKind::Edit))) {
        activate(key);
        return true;
    }
    const bool types = plain && !event.text().isEmpty() && event.text().at(0).isPrint();
    if (types && kind == ItemKind::Edit) {
        beginEdit(index);
        if (auto* line = qobject_cast<QLineEdit*>(indexWidget(index)))
            line->insert(event.text());
        return true;
    }
    if (types && kind == ItemKind::DropDown) {
        openChoices(key);
        if (m_popup != nullptr && m_popup->isVisible())
            m_popup->search(event.text());
        return true;
    }
    return false;
}

void PanelView::keyPressEvent(QKeyEvent* event) {
    // A line that is edited passes its Enter on, and the row would open it again.
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                       event->key() == Qt::Key_F2;
    if (opens && indexWidget(currentIndex()) != nullptr)
        return;
    if (takesKey(*event))
        return;
    const bool forOthers = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                           event->key() == Qt::Key_Escape || event->key() == Qt::Key_F2;
    if (forOthers) { // the default button's, the dialog's
        event->ignore();
        return;
    }
    const QString before = currentKey();
    QListView::keyPressEvent(event);
    if (const QString key = currentKey(); !key.isEmpty() && key != before)
        m_items->select(key);
}

void PanelView::contextMenuEvent(QContextMenuEvent* event) {
    // By mouse it is the release that counts.
    if (event->reason() == QContextMenuEvent::Keyboard && !currentKey().isEmpty()) {
        const QRect row = visualRect(currentIndex());
        emit contextMenuWanted(currentKey(),
                               viewport()->mapToGlobal(row.bottomLeft() + QPoint(theme::Gap, 0)));
    }
    event->accept();
}

bool PanelView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QListView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    QString tip;
    QRect place;
    if (index.isValid()) {
        const KeyedItem& item = m_model->itemAt(index);
        place = visualRect(index);
        tip = item.toolTip;
        if (m_delegate->isElided(item, place, font()))
            tip = tip.isEmpty() ? item.value : item.value + QLatin1Char('\n') + tip;
    }
    QToolTip::showText(help->globalPos(), PlainToolTip(tip), viewport(), place);
    return true;
}

void PanelView::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (m_model->rowCount() > 0 || m_placeholder.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(theme::SecondaryText(palette()));
    painter.drawText(
        viewport()->rect().adjusted(theme::Gap, theme::Margin, -theme::Gap, -theme::Margin),
        Qt::AlignCenter | Qt::TextWordWrap, m_placeholder);
}

void PanelView::changeEvent(QEvent* event) {
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        onContents();
}

} // namespace kelvrane
