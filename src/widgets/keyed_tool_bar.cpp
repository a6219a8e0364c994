#include "widgets/keyed_tool_bar.h"

#include "widgets/flat_button.h"
#include "widgets/keyed_menu.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QResizeEvent>

namespace kelvrane {

namespace {

constexpr int SeparatorWidth = 13;

class SeparatorLine final : public QWidget {
  public:
    using QWidget::QWidget;
    QSize sizeHint() const override { return {SeparatorWidth, 24}; }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(QRect(width() / 2, 6, 1, height() - 12), theme::Hairline(palette()));
    }
};

} // namespace

KeyedToolBar::KeyedToolBar(KeyedItems* items, QWidget* parent)
    : QWidget(parent), m_items(items), m_layout(new QHBoxLayout(this)) {
    m_layout->setContentsMargins(theme::Step, 3, theme::Step, 3);
    m_layout->setSpacing(2);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    connect(items, &QAbstractItemModel::rowsInserted, this, &KeyedToolBar::rebuild);
    connect(items, &QAbstractItemModel::rowsRemoved, this, &KeyedToolBar::rebuild);
    connect(items, &QAbstractItemModel::rowsMoved, this, &KeyedToolBar::rebuild);
    connect(items, &QAbstractItemModel::modelReset, this, &KeyedToolBar::rebuild);
    connect(items, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                refresh(first.row(), last.row());
            });
    rebuild();
}

void KeyedToolBar::rebuild() {
    while (QLayoutItem* taken = m_layout->takeAt(0))
        delete taken;
    qDeleteAll(m_fillers);
    m_fillers.clear();

    QHash<QString, FlatButton*> former = std::exchange(m_buttons, {});
    bool stretched = false;
    for (const KeyedItem& item : m_items->items()) {
        if (!item.parent.isEmpty()) // stands in its parent's menu
            continue;
        if (item.kind == ItemKind::Separator) {
            m_fillers.append(new SeparatorLine(this));
            m_layout->addWidget(m_fillers.last());
        } else if (item.kind == ItemKind::Spacer) {
            m_layout->addStretch(1);
            stretched = true;
        } else if (QWidget* field = m_fields.value(item.key)) {
            m_layout->addWidget(field);
            field->setVisible(item.visible);
        } else if (item.kind != ItemKind::Edit) {
            FlatButton* button = former.take(item.key);
            if (button == nullptr) {
                button = new FlatButton(this);
                button->setObjectName(item.key);
                if (item.kind == ItemKind::SubMenu)
                    addMenu(button, item.key);
                button->setOpensList(item.kind == ItemKind::DropDown);
                connect(button, &QToolButton::clicked, this, [this, key = item.key] {
                    CommitOpenEditor();
                    m_items->click(key);
                });
            }
            m_buttons.insert(item.key, button);
            m_layout->addWidget(button);
            showItem(item);
        }
    }
    if (!stretched)
        m_layout->addStretch(1);
    // A button may be at the end of its own click.
    for (FlatButton* gone : std::as_const(former)) {
        gone->hide();
        gone->deleteLater();
    }
    fitWords();
}

void KeyedToolBar::setField(const QString& key, QWidget* field) {
    m_fields.insert(key, field);
    field->setParent(this);
    field->setObjectName(key);
    rebuild();
}

void KeyedToolBar::addMenu(FlatButton* button, const QString& key) {
    auto* menu = new QMenu(button);
    BindMenu(menu, m_items, key);
    connect(menu, &QMenu::aboutToShow, menu, [] { CommitOpenEditor(); });
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
}

void KeyedToolBar::refresh(int first, int last) {
    for (int row = first; row <= last; ++row)
        showItem(m_items->items()[row]);
    fitWords();
}

void KeyedToolBar::showItem(const KeyedItem& item) {
    if (QWidget* field = m_fields.value(item.key))
        field->setVisible(item.visible);
    FlatButton* button = m_buttons.value(item.key);
    if (button == nullptr)
        return;
    button->setIcon(theme::Icon(item.image));
    button->setCaption(item.caption);
    button->setHint(item.toolTip);
    if (button->caption().isEmpty())
        button->setAccessibleName(item.toolTip);
    button->setCheckable(item.ticked);
    button->setChecked(item.ticked);
    button->setEnabled(item.enabled);
    button->setVisible(item.visible);
}

int KeyedToolBar::widthWith(bool words) const {
    const QMargins margins = m_layout->contentsMargins();
    int width = margins.left() + margins.right();
    for (const KeyedItem& item : m_items->items()) {
        if (item.kind == ItemKind::Separator)
            width += SeparatorWidth + m_layout->spacing();
        else if (const QWidget* field = m_fields.value(item.key); field && item.visible)
            width += field->sizeHint().width() + m_layout->spacing();
        else if (const FlatButton* button = m_buttons.value(item.key);
                 button != nullptr && item.visible)
            width += button->widthWith(words || button->icon().isNull()) + m_layout->spacing();
    }
    return width;
}

void KeyedToolBar::fitWords() {
    m_words = widthWith(true) <= width();
    for (FlatButton* button : std::as_const(m_buttons))
        button->setWordShown(m_words);
    updateGeometry();
}

QSize KeyedToolBar::sizeHint() const {
    return {widthWith(true), minimumSizeHint().height()};
}

QSize KeyedToolBar::minimumSizeHint() const {
    int height = 32;
    for (const FlatButton* button : std::as_const(m_buttons))
        height = qMax(height, button->sizeHint().height());
    for (const QWidget* field : std::as_const(m_fields))
        height = qMax(height, field->sizeHint().height());
    const QMargins margins = m_layout->contentsMargins();
    return {widthWith(false), height + margins.top() + margins.bottom()};
}

void KeyedToolBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitWords();
}

bool KeyedToolBar::event(QEvent* event) {
    // The layout would ask for the width of the words; the icons alone are the true minimum.
    if (event->type() == QEvent::LayoutRequest) {
        const bool handled = QWidget::event(event);
        setMinimumSize(minimumSizeHint());
        return handled;
    }
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitWords();
    return QWidget::event(event);
}

} // namespace kelvrane
