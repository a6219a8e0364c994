#include "collections/frmSelFilename.h"

#include "collections/sheet_name.h"
#include "frame/error_report.h"
#include "widgets/entry_list.h"
#include "widgets/keyed_push_button.h"
#include "widgets/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr QSize startSize(440, 400);
constexpr int fieldHeight = 28;

QString T(const char* text) {
    return QString::fromLatin1(text);
}

} // namespace

frmSelFilename::frmSelFilename(QWidget* parent) : QDialog(parent) {
    setObjectName(T("frmSelFilename"));
    setWindowTitle(T("Please select a filename"));
    setModal(true);
    WireSelFilename();
    Guarded(T("frmSelFilename_Load"), LoadSelFilename);
    arrange();
    connect(&Naming(), &SheetNaming::HideWanted, this, &QWidget::hide);
    txtFileName->setFocus();
    txtFileName->selectAll();
    resize(startSize);
}

void frmSelFilename::arrange() {
    KeyedItems& controls = Naming().controls;
    auto* prompt = new QLabel(controls.item(T("lblPrompt")).caption, this);
    prompt->setObjectName(T("lblPrompt"));
    txtFileName = new QLineEdit(controls.value(T("txtFileName")), this);
    txtFileName->setObjectName(T("txtFileName"));
    txtFileName->setAccessibleName(controls.item(T("txtFileName")).caption);
    txtFileName->setMinimumHeight(fieldHeight);
    connect(txtFileName, &QLineEdit::textEdited, &controls,
            [&controls](const QString& text) { controls.edit(T("txtFileName"), text); });
    auto* list = new EntryList(&Naming().smuiXMLFiles, QString(), this);
    list->setObjectName(T("smuiXMLFiles"));
    list->setAccessibleName(T("Sheets in the collection"));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addStretch(1);
    for (const char* key : {"OKButton", "CancelButton"})
        buttons->addWidget(CreatePushButton(&controls, T(key), this));
    findChild<QPushButton*>(T("OKButton"))->setDefault(true);
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Margin);
    content->setSpacing(theme::Step);
    content->addWidget(prompt);
    content->addWidget(txtFileName);
    content->addWidget(list, 1);
    content->addSpacing(theme::Step);
    content->addLayout(buttons);
}

void frmSelFilename::reject() {
    Naming().controls.click(T("CancelButton"));
}

} // namespace kelvrane
