#include "timekeeping/frmSelNewTime.h"

#include "timekeeping/new_time.h"
#include "widgets/keyed_push_button.h"
#include "widgets/theme.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {
constexpr int listHeight = 28;
} // namespace

frmSelNewTime::frmSelNewTime(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmSelNewTime"));
    setWindowTitle(QStringLiteral("Set New Time"));
    setModal(true);
    cboHours = addList(QStringLiteral("cboHours"));
    cboMinutes = addList(QStringLiteral("cboMinutes"));
    cmdOK = CreatePushButton(&NewTimeControls(), QStringLiteral("cmdOK"), this);
    cmdCancel = CreatePushButton(&NewTimeControls(), QStringLiteral("cmdCancel"), this);
    cmdOK->setDefault(true);
    arrange();
    cboHours->setFocus();
}

QComboBox* frmSelNewTime::addList(const QString& key) {
    const KeyedItem& item = NewTimeControls().item(key);
    auto* list = new QComboBox(this);
    list->setObjectName(key);
    list->setMinimumHeight(listHeight);
    list->setAccessibleName(item.caption);
    list->addItems(item.choices);
    if (list->findText(item.value) < 0)
        list->addItem(item.value); // a span longer than the list reaches
    list->setCurrentText(item.value);
    // Arrow keys change the choice without opening the list.
    connect(list, &QComboBox::currentTextChanged, &NewTimeControls(),
            [key](const QString& text) { NewTimeControls().edit(key, text); });
    return list;
}

void frmSelNewTime::arrange() {
    auto* times = new QHBoxLayout;
    times->setSpacing(theme::Step);
    for (QComboBox* list : {cboHours, cboMinutes}) {
        auto* label = new QLabel(list->accessibleName(), this);
        label->setBuddy(list);
        times->addWidget(list);
        times->addWidget(label);
        times->addSpacing(theme::Margin);
    }
    times->addStretch(1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addWidget(
        new QLabel(QStringLiteral("Please select the new hours and minutes."), this));
    content->addLayout(times);
    content->addStretch(1);
    content->addLayout(buttons);
}

void frmSelNewTime::reject() {
    NewTimeControls().click(QStringLiteral("cmdCancel"));
}

} // namespace kelvrane
