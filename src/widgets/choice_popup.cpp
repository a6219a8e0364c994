#include "widgets/choice_popup.h"

#include "widgets/captions.h"
#include "widgets/theme.h"

#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr int MostRows = 12;
constexpr int Widest = 480;

class ChoiceDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override {
        return OneLine(value.toString());
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const int width = option.fontMetrics.horizontalAdvance(OneLine(index.data().toString()));
        return {qMin(width + 2 * theme::Margin, Widest),
                qMax(theme::RowHeight, option.fontMetrics.height() + 8)};
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
        option->textElideMode = Qt::ElideMiddle;
        option->rect.adjust(2, 0, -2, 0);
    }
};

} // namespace

ChoicePopup::ChoicePopup(QWidget* parent) : QFrame(parent, Qt::Popup), m_list(new QListView(this)) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 3, 1, 3);
    layout->addWidget(m_list);
    setBackgroundRole(QPalette::Base);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setModel(&m_model);
    m_list->setItemDelegate(new ChoiceDelegate(m_list));
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setMouseTracking(true);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    setFocusProxy(m_list);
}

void ChoicePopup::open(const QRect& globalAnchor, const QStringList& choices,
                       const QString& value) {
    m_model.setStringList(choices);
    const int chosen = static_cast<int>(choices.indexOf(value));
    m_list->setCurrentIndex(m_model.index(qMax(0, chosen)));
    m_list->setAccessibleName(accessibleName());

    const int rows = qMin(MostRows, static_cast<int>(choices.size()));
    const int scrollBar =
        choices.size() > MostRows ? m_list->verticalScrollBar()->sizeHint().width() : 0;
    const int wanted = m_list->sizeHintForColumn(0) + scrollBar + theme::Margin;
    const QSize size(qMax(globalAnchor.width(), wanted),
                     rows * m_list->sizeHintForRow(0) + 6 + 2 * frameWidth());
    QPoint corner = globalAnchor.bottomLeft() + QPoint(0, 1);
    if (const QScreen* where = parentWidget()->screen()) {
        const QRect room = where->availableGeometry();
        if (corner.y() + size.height() > room.bottom() &&
            globalAnchor.top() - size.height() > room.top())
            corner.setY(globalAnchor.top() - size.height());
        corner.setX(
            qBound(room.left(), corner.x(), qMax(room.left(), room.right() - size.width())));
    }
    setGeometry(QRect(corner, size));
    show();
    m_list->setFocus(Qt::PopupFocusReason);
    m_list->scrollTo(m_list->currentIndex());
}

void ChoicePopup::setChoices(const QStringList& choices) {
    if (choices == m_model.stringList())
        return;
    const QString current = m_list->currentIndex().data().toString();
    m_model.setStringList(choices);
    m_list->setCurrentIndex(m_model.index(qMax(0, static_cast<int>(choices.indexOf(current)))));
}

void ChoicePopup::search(const QString& text) {
    m_list->keyboardSearch(text);
}

void ChoicePopup::accept(int place) {
    hide();
    if (place >= 0)
        emit chosen(place);
}

bool ChoicePopup::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool altUpOrDown = (key->modifiers() & Qt::AltModifier) &&
                                 (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down);
        if (key->key() == Qt::Key_Escape || key->key() == Qt::Key_F4 || altUpOrDown) {
            hide();
            return true;
        }
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter ||
            key->key() == Qt::Key_Tab) {
            accept(m_list->currentIndex().row());
            return true;
        }
    }
    if (watched == m_list->viewport()) {
        if (event->type() == QEvent::MouseMove) {
            const auto* move = static_cast<QMouseEvent*>(event);
            if (const QModelIndex index = m_list->indexAt(move->pos()); index.isValid())
                m_list->setCurrentIndex(index);
        } else if (event->type() == QEvent::MouseButtonRelease) {
            const auto* release = static_cast<QMouseEvent*>(event);
            const QModelIndex index = m_list->indexAt(release->pos());
            if (index.isValid())
                accept(index.row());
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}

} // namespace kelvrane
