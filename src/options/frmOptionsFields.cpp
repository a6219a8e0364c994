#include "options/frmOptionsFields.h"

#include "widgets/captions.h"
#include "widgets/item_mark.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int FieldHeight = 28;
constexpr int LongestOddValue = 90; // pixels

/// Sets a colour of the widget's text unless it has it already: setting it comes back as a change.
void SetInk(QWidget* widget, QPalette::ColorRole role, const QColor& ink, const QColor& disabled) {
    QPalette palette = widget->palette();
    if (palette.color(QPalette::Active, role) == ink &&
        palette.color(QPalette::Disabled, role) == disabled)
        return;
    palette.setColor(QPalette::Active, role, ink);
    palette.setColor(QPalette::Inactive, role, ink);
    palette.setColor(QPalette::Disabled, role, disabled);
    widget->setPalette(palette);
}

/// A list that doesn't turn under the wheel: each choice is stored at once, and the wheel is meant
/// for the page.
class ChoiceBox final : public QComboBox {
  public:
    explicit ChoiceBox(QWidget* parent) : QComboBox(parent) {
        setMinimumHeight(FieldHeight);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        applyInk();
    }

    void show(const KeyedItem& item) {
        QStringList present;
        for (int place = 0; place < count(); ++place)
            present.append(itemText(place));
        if (present != item.choices) {
            clear();
            addItems(item.choices);
        }
        // A value that isn't among the choices stands in the field but not in the list.
        setPlaceholderText(
            fontMetrics().elidedText(OneLine(item.value), Qt::ElideMiddle, LongestOddValue));
        setCurrentIndex(int(item.choices.indexOf(item.value)));
        if (currentIndex() < 0 && !item.value.isEmpty())
            setToolTip(PlainToolTip(item.value));
    }

  protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
    void changeEvent(QEvent* event) override {
        QComboBox::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            applyInk();
    }

  private:
    /// A value outside the list is as good as one in it.
    void applyInk() {
        SetInk(this, QPalette::PlaceholderText, palette().color(QPalette::Active, QPalette::Text),
               palette().color(QPalette::Disabled, QPalette::Text));
    }
};

/// What is typed counts once it is handed over; until then a change of the item leaves it alone.
class LineField final : public QLineEdit {
  public:
    LineField(KeyedItems* items, const QString& key, QWidget* parent)
        : QLineEdit(parent), m_items(items), m_key(key) {
        setMinimumHeight(FieldHeight);
        setFrame(false);
        setTextMargins(theme::Step - 2, 0, theme::Step - 2, 0);
        connect(this, &QLineEdit::textEdited, this,
                [this] { SetOpenEditor(this, [this] { handOver(); }); });
        connect(this, &QLineEdit::editingFinished, this, [this] {
            if (!m_windowLeft)
                handOver();
        });
    }

    void show(const KeyedItem& item) {
        m_role = item.role;
        applyRole();
        if (isModified())
            return;
        if (text() != item.value) {
            setText(item.value);
            setCursorPosition(0);
        }
        if (toolTip().isEmpty())
            setToolTip(PlainToolTip(item.value));
    }

  protected:
    /// Whoever turns to another window may come back to type on; a window that goes asks nothing.
    void focusOutEvent(QFocusEvent* event) override {
        m_windowLeft = event->reason() == Qt::ActiveWindowFocusReason;
        QLineEdit::focusOutEvent(event);
        m_windowLeft = false;
    }
    /// A frame that is seen on paper, in the dark too.
    void paintEvent(QPaintEvent* event) override {
        QLineEdit::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 1.5)
                                  : QPen(theme::Wash(palette(), isEnabled() ? 0.30 : 0.14), 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), theme::Radius - 1,
                                theme::Radius - 1);
    }
    void changeEvent(QEvent* event) override {
        QLineEdit::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            applyRole();
    }

  private:
    void handOver() {
        ForgetOpenEditor(this);
        if (!isModified())
            return;
        setModified(false);
        if (text() != m_items->item(m_key).value)
            m_items->edit(QString(m_key), text());
        else
            show(m_items->item(m_key));
    }

    void applyRole() {
        const QPalette& colors = palette();
        SetInk(this, QPalette::Text,
               m_role == TextRole::Inactive ? theme::ValueColor(m_role, colors)
                                            : colors.color(QPalette::Active, QPalette::WindowText),
               colors.color(QPalette::Disabled, QPalette::WindowText));
    }

    KeyedItems* m_items;
    QString m_key;
    TextRole m_role = TextRole::Value;
    bool m_windowLeft = false;
};

/// Shows the item now and whenever it changes.
template <typename Control, typename Show>
void Follow(KeyedItems* items, const QString& key, Control* control, Show show) {
    const auto refresh = [items, key, control, show] {
        const KeyedItem& item = items->item(key);
        control->setEnabled(item.enabled);
        control->setToolTip(PlainToolTip(item.toolTip));
        control->setAccessibleName(ShownCaption(item.caption));
        show(control, item);
    };
    control->setObjectName(key);
    QObject::connect(items, &KeyedItems::dataChanged, control,
                     [items, key, refresh](const QModelIndex& first, const QModelIndex& last) {
                         const int row = items->rowOf(key);
                         if (row >= first.row() && row <= last.row())
                             refresh();
                     });
    refresh();
}

QWidget* CreateCheck(KeyedItems* items, const QString& key, QWidget* parent) {
    auto* check = new ItemMark<QCheckBox, MarkShape::Box>(parent);
    QObject::connect(check, &QCheckBox::clicked, items, [items, key] { items->toggle(key); });
    Follow(items, key, check, [](QCheckBox* box, const KeyedItem& item) {
        box->setText(ControlCaption(item.caption));
        box->setChecked(item.ticked);
    });
    return check;
}

QWidget* CreateChoice(KeyedItems* items, const QString& key, QWidget* parent) {
    auto* box = new ChoiceBox(parent);
    QObject::connect(box, &QComboBox::activated, items, [items, key, box](int place) {
        const QPointer<ChoiceBox> kept(box);
        items->choose(key, place);
        if (kept) // the items may have decided otherwise
            kept->show(items->item(key));
    });
    Follow(items, key, box, [](ChoiceBox* list, const KeyedItem& item) { list->show(item); });
    return box;
}

QWidget* CreateLine(KeyedItems* items, const QString& key, QWidget* parent) {
    auto* line = new LineField(items, key, parent);
    Follow(items, key, line, [](LineField* field, const KeyedItem& item) { field->show(item); });
    return line;
}

/// Only the name of a sound may be typed; the other files come from their dialogs.
QWidget* CreateBrowse(KeyedItems* items, const QString& key, QWidget* parent) {
    auto* both = new QWidget(parent);
    auto* line = static_cast<LineField*>(CreateLine(items, key, both));
    line->setReadOnly(key != u"SOUNDFILE");
    if (line->isReadOnly())
        line->setFocusPolicy(Qt::ClickFocus);
    auto* button = new QToolButton(both);
    button->setText(QString(QChar(0x2026)));
    button->setFocusPolicy(Qt::StrongFocus);
    button->setFixedSize(FieldHeight + theme::Step, FieldHeight);
    QObject::connect(button, &QToolButton::clicked, items, [items, key] {
        CommitOpenEditor();
        items->press(key);
    });
    Follow(items, key, button, [](QToolButton* browse, const KeyedItem& item) {
        const QString name = ShownCaption(item.caption).remove(QLatin1Char(':'));
        browse->setAccessibleName(QStringLiteral("Browse, ") + name);
        browse->setAccessibleDescription(item.value); // its line isn't on the way of the Tab key
        if (item.toolTip.isEmpty())
            browse->setToolTip(QStringLiteral("Browse"));
    });
    button->setObjectName(key + QStringLiteral("_BROWSE"));
    auto* layout = new QHBoxLayout(both);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::Step);
    layout->addWidget(line, 1);
    layout->addWidget(button);
    both->setFocusProxy(line->isReadOnly() ? static_cast<QWidget*>(button) : line);
    return both;
}

QWidget* CreateButton(KeyedItems* items, const QString& key, QWidget* parent) {
    auto* button = new QPushButton(parent);
    button->setAutoDefault(false);
    button->setMinimumHeight(FieldHeight);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QObject::connect(button, &QPushButton::clicked, items, [items, key] {
        CommitOpenEditor();
        items->click(key);
    });
    Follow(items, key, button, [](QPushButton* push, const KeyedItem& item) {
        push->setText(ControlCaption(item.caption));
        push->setMinimumWidth(push->sizeHint().width() + theme::Margin);
    });
    return button;
}

struct KindRow {
    ItemKind kind;
    QWidget* (*create)(KeyedItems*, const QString&, QWidget*);
};
constexpr KindRow kinds[] = {
    {ItemKind::Check, CreateCheck},   {ItemKind::DropDown, CreateChoice},
    {ItemKind::Edit, CreateLine},     {ItemKind::Browse, CreateBrowse},
    {ItemKind::Button, CreateButton},
};

} // namespace

QWidget* CreateOptionControl(KeyedItems* items, const QString& key, QWidget* parent) {
    return std::ranges::find(kinds, items->item(key).kind, &KindRow::kind)
        ->create(items, key, parent);
}

QWidget* CreateOptionPanel(KeyedItems* items, const QString& name, QWidget* parent) {
    auto* panel = new QWidget(parent);
    panel->setObjectName(name);
    auto* layout = new QHBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::Step);
    for (const KeyedItem& item : items->items()) {
        QWidget* control = CreateOptionControl(items, item.key, panel);
        layout->addWidget(control);
        if (!panel->focusProxy())
            panel->setFocusProxy(control);
    }
    if (items->items().constFirst().kind == ItemKind::DropDown)
        layout->addStretch(1);
    return panel;
}

} // namespace kelvrane
