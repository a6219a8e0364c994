#include "timesheets/frmSSHelper.h"

#include "timesheets/database_list.h"
#include "widgets/keyed_push_button.h"
#include "widgets/theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr int fieldHeight = 28;
constexpr int startWidth = 480;

KeyedItems& Controls() {
    return Databases().frmSSHelper;
}

} // namespace

frmSSHelper::frmSSHelper(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmSSHelper"));
    setWindowTitle(QStringLiteral("Database Alias & Location "));
    setModal(true);
    WireDatabaseList();
    txtAlias = addField(QStringLiteral("txtAlias"));
    txtDBLocation = addField(QStringLiteral("txtDBLocation"));
    arrange();
    txtAlias->selectAll();
    txtAlias->setFocus();
}

QLineEdit* frmSSHelper::addField(const QString& key) {
    auto* field = new QLineEdit(Controls().value(key), this);
    field->setObjectName(key);
    field->setAccessibleName(Controls().item(key).caption);
    field->setMinimumHeight(fieldHeight);
    connect(field, &QLineEdit::textEdited, &Controls(),
            [key](const QString& text) { Controls().edit(key, text); });
    connect(&Controls(), &QAbstractItemModel::dataChanged, field, [field, key] {
        if (field->text() != Controls().value(key))
            field->setText(Controls().value(key));
    });
    return field;
}

QLabel* frmSSHelper::labelOf(QLineEdit* field) {
    auto* label = new QLabel(field->accessibleName(), this);
    label->setBuddy(field);
    return label;
}

void frmSSHelper::arrange() {
    QPushButton* cmdMore = CreatePushButton(&Controls(), QStringLiteral("cmdMore"), this);
    cmdMore->setToolTip(Controls().item(QStringLiteral("cmdMore")).toolTip);
    QPushButton* ok = CreatePushButton(&Controls(), QStringLiteral("OKButton"), this);
    QPushButton* cancel = CreatePushButton(&Controls(), QStringLiteral("CancelButton"), this);
    cmdMore->setMaximumWidth(2 * fieldHeight);
    ok->setDefault(true);

    auto* fields = new QGridLayout;
    fields->setSpacing(theme::Step);
    fields->addWidget(labelOf(txtAlias), 0, 0);
    fields->addWidget(txtAlias, 0, 1, 1, 2);
    fields->addWidget(labelOf(txtDBLocation), 1, 0);
    fields->addWidget(txtDBLocation, 1, 1);
    fields->addWidget(cmdMore, 1, 2);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addLayout(fields);
    content->addStretch(1);
    content->addLayout(buttons);
    resize(startWidth, sizeHint().height());
}

void frmSSHelper::reject() {
    Controls().click(QStringLiteral("CancelButton"));
}

} // namespace kelvrane
