#include "tray/frmExit.h"

#include "widgets/captions.h"
#include "widgets/item_mark.h"
#include "widgets/keyed_push_button.h"
#include "widgets/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kelvrane {

namespace {
constexpr double editorWidth = 5100; // twips
constexpr double editorHeight = 1290;
constexpr int promptWidth = 480;
constexpr int listHeight = 28;
} // namespace

frmExit::frmExit(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmExit"));
    Label1 = addLabel(QStringLiteral("Label1"));
    Label2 = addLabel(QStringLiteral("Label2"));
    for (int member = 0; member < 3; ++member)
        cboTime[member] = addTimeList(QStringLiteral("cboTime") + QString::number(member));
    chkAsk = addCheck(QStringLiteral("chkAsk"));
    cmdSave = addButton(QStringLiteral("cmdSave"));
    cmdUpdate = addButton(QStringLiteral("cmdUpdate"));
    cmdCancel = addButton(QStringLiteral("cmdCancel"));
    QFont large = Label1->font();
    large.setPointSizeF(large.pointSizeF() * 1.2);
    large.setWeight(QFont::DemiBold);
    Label1->setFont(large);

    // A prompt that comes up by itself may catch a key meant for another window: the safe answer
    // has the focus.
    cmdCancel->setDefault(true);
    cmdCancel->setFocus();
    layOut();
    connect(&m_prompt.controls, &KeyedItems::dataChanged, this, &frmExit::refresh);
    connect(&m_prompt, &ExitPrompt::EditorOpened, this, &frmExit::layOutEditor);
    refresh();
}

QLabel* frmExit::addLabel(const QString& key) {
    auto* label = new QLabel(this);
    label->setObjectName(key);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QPushButton* frmExit::addButton(const QString& key) {
    return CreatePushButton(&m_prompt.controls, key, this);
}

QComboBox* frmExit::addTimeList(const QString& key) {
    auto* list = new QComboBox(this);
    list->setObjectName(key);
    list->setMinimumHeight(listHeight);
    list->setAccessibleName(m_prompt.controls.item(key).caption);
    list->addItems(m_prompt.controls.item(key).choices);
    connect(list, &QComboBox::activated, this, [this, key](int place) {
        // A time between the offered steps stands behind them; to choose it changes nothing.
        if (place < m_prompt.controls.item(key).choices.size())
            m_prompt.controls.choose(key, place);
    });
    return list;
}

QCheckBox* frmExit::addCheck(const QString& key) {
    auto* check = new ItemMark<QCheckBox, MarkShape::Box>(this);
    check->setObjectName(key);
    connect(check, &QCheckBox::clicked, this, [this, key] { m_prompt.controls.toggle(key); });
    return check;
}

void frmExit::layOut() {
    auto* times = new QHBoxLayout;
    times->setSpacing(theme::Step);
    for (QComboBox* list : cboTime)
        times->addWidget(list);
    times->addStretch(1);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(theme::Step);
    texts->addWidget(Label1);
    texts->addLayout(times);
    texts->addWidget(Label2);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addWidget(cmdUpdate);
    buttons->addStretch(1);
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdCancel);

    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addLayout(texts);
    content->addWidget(chkAsk);
    content->addStretch(1);
    content->addLayout(buttons);
    setMinimumWidth(promptWidth);
}

/// The small editor: the lists and "Ok" on one line under "New Value:".
void frmExit::layOutEditor() {
    refresh();
    setMinimumWidth(theme::FromTwips(editorWidth));
    auto* content = static_cast<QVBoxLayout*>(layout());
    content->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Margin);
    QLayout* texts = content->itemAt(0)->layout();
    auto* times = static_cast<QHBoxLayout*>(texts->itemAt(1)->layout());
    times->addWidget(cmdCancel);
    cboTime[0]->setFocus();
    resize(theme::FromTwips(editorWidth), theme::FromTwips(editorHeight));
    fitHeight();
}

/// The countdown's labels come back behind the editor and need their room.
void frmExit::fitHeight() {
    layout()->activate();
    setMinimumHeight(0);
    const int wanted = layout()->totalHeightForWidth(width());
    setMinimumHeight(wanted);
    if (m_prompt.isEditing())
        resize(width(), std::max(wanted, theme::FromTwips(editorHeight)));
}

void frmExit::refresh() {
    const KeyedItems& controls = m_prompt.controls;
    setWindowTitle(m_prompt.caption());
    for (QLabel* label : {Label1, Label2}) {
        label->setText(ShownCaption(controls.item(label->objectName()).caption));
        label->setVisible(!label->text().isEmpty());
    }
    for (QPushButton* button : {cmdSave, cmdUpdate, cmdCancel}) {
        const KeyedItem& item = controls.item(button->objectName());
        button->setText(ControlCaption(item.caption));
        button->setAccessibleName(ShownCaption(item.caption));
        button->setVisible(item.visible);
    }
    for (QComboBox* list : cboTime) {
        const KeyedItem& item = controls.item(list->objectName());
        if (!item.value.isEmpty() && list->findText(item.value) < 0)
            list->addItem(item.value);
        list->setCurrentIndex(item.value.isEmpty() ? -1 : list->findText(item.value));
        list->setVisible(item.visible);
    }
    const KeyedItem& check = controls.item(chkAsk->objectName());
    chkAsk->setText(ControlCaption(check.caption));
    chkAsk->setChecked(check.ticked);
    chkAsk->setVisible(check.visible);
    fitHeight();
}

void frmExit::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (!event->spontaneous())
        m_prompt.stopCountdown();
}

void frmExit::reject() {
    m_prompt.controls.click(QStringLiteral("cmdCancel"));
}

} // namespace kelvrane
