#include "widgets/keyed_buttons.h"

#include "widgets/captions.h"
#include "widgets/flat_button.h"
#include "widgets/heading_line.h"
#include "widgets/item_mark.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QRadioButton>
#include <QVBoxLayout>

#include <utility>

namespace kelvrane {

namespace {

// Flat buttons reach over column 0, so that their icons line up with the boxes of the checks.
constexpr int LeadWidth = ItemMarkFocusRoom;
constexpr int LastColumn = 2;
constexpr int IconSide = ItemMarkIconSide;

class Line final : public QWidget {
  public:
    explicit Line(QWidget* parent) : QWidget(parent) { setFixedHeight(2 * theme::Step + 1); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(QRect(LeadWidth, height() / 2, width() - 2 * LeadWidth, 1),
                         theme::Hairline(palette()));
    }
};

bool IsField(ItemKind kind) {
    return kind == ItemKind::Edit || kind == ItemKind::DropDown || kind == ItemKind::Text ||
           kind == ItemKind::Progress;
}

void ShowChoices(QComboBox* box, const KeyedItem& item) {
    const QSignalBlocker quiet(box);
    QStringList present;
    for (int place = 0; place < box->count(); ++place)
        present.append(box->itemText(place));
    if (present != item.choices) {
        box->clear();
        box->addItems(item.choices);
    }
    box->setPlaceholderText(item.value);
    box->setCurrentIndex(static_cast<int>(item.choices.indexOf(item.value)));
}

} // namespace

KeyedButtons::KeyedButtons(KeyedItems* items, const QString& heading, QWidget* parent)
    : QWidget(parent), m_items(items), m_heading(new HeadingLine(heading, this)),
      m_grid(new QGridLayout) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::Step);
    layout->addWidget(m_heading);
    layout->addLayout(m_grid);
    layout->addStretch(1);
    m_grid->setContentsMargins(4, 0, 4, theme::Step);
    m_grid->setHorizontalSpacing(0);
    m_grid->setVerticalSpacing(2);
    m_grid->setColumnMinimumWidth(0, LeadWidth);
    m_grid->setColumnMinimumWidth(LastColumn + 1, LeadWidth);
    m_grid->setColumnStretch(LastColumn, 1);
    setAccessibleName(m_heading->text());

    connect(items, &QAbstractItemModel::rowsInserted, this, &KeyedButtons::rebuild);
    connect(items, &QAbstractItemModel::rowsRemoved, this, &KeyedButtons::rebuild);
    connect(items, &QAbstractItemModel::rowsMoved, this, &KeyedButtons::rebuild);
    connect(items, &QAbstractItemModel::modelReset, this, &KeyedButtons::rebuild);
    connect(items, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                refresh(first.row(), last.row());
            });
    rebuild();
}

void KeyedButtons::rebuild() {
    while (QLayoutItem* taken = m_grid->takeAt(0))
        delete taken;
    QList<Row> former = std::exchange(m_rows, {});
    const QHash<QString, Row> byKey = std::exchange(m_byKey, {});

    int line = 0;
    for (const KeyedItem& item : m_items->items()) {
        Row row = byKey.value(item.key);
        if (item.key.isEmpty() || row.control == nullptr || row.kind != item.kind)
            row = create(item);
        else
            former.removeIf([&row](const Row& other) { return other.control == row.control; });
        m_rows.append(row);
        if (!item.key.isEmpty())
            m_byKey.insert(item.key, row);
        place(row, line++);
        showItem(item, row);
    }
    // A control may be at the end of its own click.
    for (const Row& gone : std::as_const(former)) {
        for (QWidget* widget : {gone.caption, gone.control}) {
            if (widget == nullptr)
                continue;
            widget->hide();
            widget->deleteLater();
        }
    }
    applyPalette();
}

void KeyedButtons::place(const Row& row, int line) {
    const bool reachesOver = row.kind == ItemKind::Button || row.kind == ItemKind::Browse ||
                             row.kind == ItemKind::SubMenu || row.kind == ItemKind::Separator ||
                             row.kind == ItemKind::Heading || row.kind == ItemKind::Check ||
                             row.kind == ItemKind::Choice;
    if (row.caption != nullptr) {
        m_grid->addWidget(row.caption, line, 1);
        m_grid->addWidget(row.control, line, LastColumn);
    } else if (reachesOver) {
        m_grid->addWidget(row.control, line, 0, 1, LastColumn + 2);
    } else {
        m_grid->addWidget(row.control, line, 1, 1, LastColumn);
    }
    m_grid->setRowStretch(line, row.kind == ItemKind::Spacer ? 1 : 0);
}

void KeyedButtons::refresh(int first, int last) {
    for (int row = first; row <= last && row < m_rows.size(); ++row) {
        const KeyedItem& item = m_items->items()[row];
        if (item.kind != m_rows[row].kind) {
            rebuild();
            return;
        }
        showItem(item, m_rows[row]);
    }
}

KeyedButtons::Row KeyedButtons::create(const KeyedItem& item) {
    Row row{item.kind, nullptr, createControl(item)};
    row.control->setObjectName(item.key);
    if (IsField(item.kind)) {
        auto* caption = new QLabel(this);
        caption->setContentsMargins(0, 0, theme::Margin, 0);
        caption->setTextFormat(Qt::PlainText);
        row.caption = caption;
    }
    return row;
}

QWidget* KeyedButtons::createControl(const KeyedItem& item) {
    const QString key = item.key;
    const auto onMark = [this, key](QAbstractButton* button) {
        connect(button, &QAbstractButton::clicked, this, [this, key] {
            CommitOpenEditor();
            m_items->toggle(key);
        });
        return button;
    };
    switch (item.kind) {
    case ItemKind::Check:
        return onMark(new ItemMark<QCheckBox, MarkShape::Box>(this));
    case ItemKind::Choice:
        return onMark(new ItemMark<QRadioButton, MarkShape::Dot>(this));
    case ItemKind::Button:
    case ItemKind::SubMenu:
    case ItemKind::Browse: {
        auto* button = new FlatButton(this);
        button->setContentAlignment(Qt::AlignLeft);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setFixedHeight(qMax(theme::RowHeight + 2, button->fontMetrics().height() + 8));
        const bool browses = item.kind == ItemKind::Browse;
        connect(button, &QToolButton::clicked, this, [this, key, browses] {
            CommitOpenEditor();
            browses ? m_items->press(key) : m_items->click(key);
        });
        return button;
    }
    case ItemKind::Edit: {
        auto* line = new QLineEdit(this);
        connect(line, &QLineEdit::textEdited, this,
                [this, key](const QString& text) { m_items->edit(key, text); });
        return line;
    }
    case ItemKind::DropDown: {
        auto* box = new QComboBox(this);
        box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        box->setMinimumContentsLength(6);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        connect(box, &QComboBox::activated, this, [this, key, box](int place) {
            CommitOpenEditor();
            m_items->choose(key, place);
            if (m_items->contains(key)) // the items may have decided otherwise
                ShowChoices(box, m_items->item(key));
        });
        return box;
    }
    case ItemKind::Heading:
        return new HeadingLine({}, this);
    case ItemKind::Separator:
        return new Line(this);
    case ItemKind::Progress:
        return new QProgressBar(this);
    case ItemKind::Text: {
        auto* value = new QLabel(this);
        value->setTextFormat(Qt::PlainText);
        return value;
    }
    case ItemKind::Spacer:
        break;
    }
    return new QWidget(this);
}

void KeyedButtons::showItem(const KeyedItem& item, const Row& row) {
    const QString caption = ShownCaption(item.caption);
    if (auto* label = qobject_cast<QLabel*>(row.caption)) {
        label->setText(caption);
        label->setVisible(item.visible);
        label->setEnabled(item.enabled);
    }
    if (auto* flat = qobject_cast<FlatButton*>(row.control)) {
        flat->setIcon(theme::Icon(item.image));
        flat->setCaption(item.caption);
        flat->setCheckable(item.ticked);
        flat->setChecked(item.ticked);
    } else if (auto* mark = qobject_cast<QAbstractButton*>(row.control)) {
        mark->setText(EscapeMnemonics(caption));
        mark->setIcon(theme::Icon(item.image));
        mark->setCheckable(true);
        mark->setChecked(item.ticked);
    } else if (auto* line = qobject_cast<QLineEdit*>(row.control)) {
        if (line->text() != item.value) // else the cursor would jump while typing
            line->setText(item.value);
    } else if (auto* box = qobject_cast<QComboBox*>(row.control)) {
        ShowChoices(box, item);
    } else if (auto* heading = qobject_cast<HeadingLine*>(row.control)) {
        heading->setText(caption);
    } else if (auto* bar = qobject_cast<QProgressBar*>(row.control)) {
        bar->setValue(item.value.toInt());
    } else if (auto* value = qobject_cast<QLabel*>(row.control)) {
        value->setText(OneLine(item.value));
    }
    row.control->setAccessibleName(caption);
    row.control->setAccessibleDescription(item.toolTip);
    row.control->setToolTip(PlainToolTip(item.toolTip));
    row.control->setEnabled(item.enabled);
    row.control->setVisible(item.visible);
}

void KeyedButtons::applyPalette() {
    QPalette quiet = palette();
    quiet.setColor(QPalette::Active, QPalette::WindowText, theme::SecondaryText(quiet));
    quiet.setColor(QPalette::Inactive, QPalette::WindowText, theme::SecondaryText(quiet));
    for (qsizetype line = 0; line < m_rows.size(); ++line) {
        if (m_rows[line].caption != nullptr)
            m_rows[line].caption->setPalette(quiet);
        if (m_rows[line].kind == ItemKind::Text) {
            QPalette colored = palette();
            const QColor ink = theme::ValueColor(m_items->items()[line].role, colored);
            colored.setColor(QPalette::Active, QPalette::WindowText, ink);
            colored.setColor(QPalette::Inactive, QPalette::WindowText, ink);
            m_rows[line].control->setPalette(colored);
        }
    }
}

void KeyedButtons::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyPalette();
}

} // namespace kelvrane
