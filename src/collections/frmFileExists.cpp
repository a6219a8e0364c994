#include "collections/frmFileExists.h"

#include "collections/file_clash.h"
#include "widgets/captions.h"
#include "widgets/entry_list.h"
#include "widgets/keyed_push_button.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr int leastWidth = 420;
constexpr int renameHeight = 380;
constexpr int fieldHeight = 28;

QString T(const char* text) {
    return QString::fromLatin1(text);
}

} // namespace

frmFileExists::frmFileExists(QWidget* parent) : QDialog(parent) {
    setObjectName(T("frmFileExists"));
    setWindowTitle(T("File Exists"));
    setModal(true);
    setMinimumWidth(leastWidth);
    WireFileExists();
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Margin);
    content->addWidget(FraMain = createMain());
    content->addWidget(fraRename = createRename());
    connect(&Clash().controls, &QAbstractItemModel::dataChanged, this, &frmFileExists::refresh);
    connect(&Clash(), &FileClash::FrameChanged, this, &frmFileExists::showFrame);
    refresh();
    showFrame();
}

QWidget* frmFileExists::createMain() {
    auto* frame = new QWidget(this);
    frame->setObjectName(T("FraMain"));
    Label1 = new QLabel(frame);
    Label1->setObjectName(T("Label1"));
    Label1->setTextFormat(Qt::PlainText);
    Label1->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addStretch(1);
    for (const char* key : {"cmdOverwrite", "cmdRename", "cmdSkip"})
        buttons->addWidget(CreatePushButton(&Clash().controls, T(key), frame));
    auto* content = new QVBoxLayout(frame);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(theme::Gap);
    content->addWidget(Label1);
    content->addLayout(buttons);
    return frame;
}

QWidget* frmFileExists::createRename() {
    KeyedItems& controls = Clash().controls;
    auto* frame = new QWidget(this);
    frame->setObjectName(T("fraRename"));
    auto* prompt = new QLabel(controls.item(T("txtFileName")).caption, frame);
    txtFileName = new QLineEdit(frame);
    txtFileName->setObjectName(T("txtFileName"));
    txtFileName->setAccessibleName(prompt->text());
    txtFileName->setMinimumHeight(fieldHeight);
    connect(txtFileName, &QLineEdit::textEdited, &controls,
            [&controls](const QString& text) { controls.edit(T("txtFileName"), text); });
    auto* list = new EntryList(&Clash().smuiXMLFiles, QString(), frame);
    list->setObjectName(T("smuiXMLFiles"));
    list->setAccessibleName(T("Sheets in the collection"));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addStretch(1);
    for (const char* key : {"OKButton", "CancelButton"})
        buttons->addWidget(CreatePushButton(&controls, T(key), frame));
    auto* content = new QVBoxLayout(frame);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(theme::Step);
    content->addWidget(prompt);
    content->addWidget(txtFileName);
    content->addWidget(list, 1);
    content->addSpacing(theme::Step);
    content->addLayout(buttons);
    return frame;
}

void frmFileExists::refresh() {
    const KeyedItems& controls = Clash().controls;
    const QString text = controls.item(T("Label1")).caption;
    if (const QString shown = QString(text).replace(u'\r', u'\n'); Label1->text() != shown) {
        Label1->setText(shown);
        fitHeight();
    }
    if (const QString name = controls.value(T("txtFileName")); txtFileName->text() != name)
        txtFileName->setText(name);
}

/// The safe answer is the default: Skip, and OK once a name is asked for.
void frmFileExists::showFrame() {
    const bool renaming = Clash().isRenaming();
    FraMain->setVisible(!renaming);
    fraRename->setVisible(renaming);
    auto* button = findChild<QPushButton*>(renaming ? T("OKButton") : T("cmdSkip"));
    button->setDefault(true);
    fitHeight();
    if (!renaming) {
        button->setFocus();
        return;
    }
    txtFileName->setFocus();
    txtFileName->selectAll();
}

void frmFileExists::fitHeight() {
    // They still hold the room of the other frame, or of another text.
    for (QWidget* frame : {FraMain, fraRename})
        frame->layout()->invalidate();
    layout()->invalidate();
    layout()->activate();
    resize(width(), Clash().isRenaming() ? renameHeight : layout()->totalHeightForWidth(width()));
}

void frmFileExists::reject() {
    Clash().controls.click(Clash().isRenaming() ? T("CancelButton") : T("cmdSkip"));
}

void frmFileExists::closeEvent(QCloseEvent* event) {
    event->ignore();
    Clash().controls.click(T("cmdSkip"));
}

} // namespace kelvrane
