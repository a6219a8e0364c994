#include "collections/frmCollectionLoc.h"

#include "collections/collection_location.h"
#include "frame/error_report.h"
#include "platform/ports.h"
#include "widgets/card.h"
#include "widgets/entry_list.h"
#include "widgets/keyed_menu.h"
#include "widgets/keyed_panel.h"
#include "widgets/keyed_push_button.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/quiet_label.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr QSize startSize(640, 540);
constexpr int fieldHeight = 28;

QString T(const char* text) {
    return QString::fromLatin1(text);
}

KeyedItems& Controls() {
    return CollectionPlace().controls;
}

} // namespace

frmCollectionLoc::frmCollectionLoc(QWidget* parent) : QWidget(parent) {
    setObjectName(T("frmCollectionLoc"));
    setWindowTitle(T("Select Collection Location"));
    WireCollectionLoc();
    Guarded(T("frmCollectionLoc_Load"), LoadCollectionLoc);
    arrange();
    bind();
    refresh();
    showNaming();
    Dir1->setCurrentKey(T("."));
    Dir1->setFocus();
    resize(startSize);
}

QWidget* frmCollectionLoc::createFolders() {
    auto* folders = new QWidget(this);
    Drive1 = new QComboBox(folders);
    Drive1->setObjectName(T("Drive1"));
    Drive1->setAccessibleName(Controls().item(T("Drive1")).caption);
    Drive1->setMinimumHeight(fieldHeight);
    Drive1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    Dir1 = new EntryList(&CollectionPlace().Dir1, T("Folders"), folders);
    Dir1->setObjectName(T("Dir1"));
    auto* content = new QVBoxLayout(folders);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(theme::Step);
    content->addWidget(Drive1);
    content->addWidget(Dir1, 1);
    return folders;
}

QWidget* frmCollectionLoc::createNaming() {
    auto* naming = new Card(this);
    auto* caption = new QLabel(Controls().item(T("lblNewFolderName")).caption, naming);
    caption->setObjectName(T("lblNewFolderName"));
    txtNewFolderName = new QLineEdit(naming);
    txtNewFolderName->setObjectName(T("txtNewFolderName"));
    txtNewFolderName->setAccessibleName(caption->text());
    txtNewFolderName->setMinimumHeight(fieldHeight);
    connect(txtNewFolderName, &QLineEdit::textEdited, &Controls(),
            [](const QString& text) { Controls().edit(T("txtNewFolderName"), text); });
    auto* line = new QHBoxLayout;
    line->setSpacing(theme::Step);
    line->addWidget(txtNewFolderName, 1);
    for (const char* key : {"cmdOK", "cmdCancel"})
        line->addWidget(CreatePushButton(&Controls(), T(key), naming));
    auto* content = new QVBoxLayout(naming);
    content->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Margin);
    content->setSpacing(theme::Step);
    content->addWidget(caption);
    content->addLayout(line);
    content->addStretch(1);
    return naming;
}

void frmCollectionLoc::arrange() {
    auto* bar = new KeyedToolBar(&CollectionPlace().smuiToolBar, this);
    bar->setObjectName(T("smuiToolBar"));
    auto* label = new QuietLabel(Controls().item(T("Label1")).caption, this);
    label->setObjectName(T("Label1"));
    label->setWordWrap(true);
    File1 = new EntryList(&CollectionPlace().File1, T("Collections"), this);
    File1->setObjectName(T("File1"));
    File1->setPlaceholder(T("No collection in this folder yet. Enter a file name to create one."));
    auto* lists = new QHBoxLayout;
    lists->setSpacing(theme::Margin);
    lists->addWidget(createFolders(), 1);
    lists->addWidget(File1, 1);
    smuiCollLoc = new KeyedPanel(&CollectionPlace().smuiCollLoc, T("Collection Information"), this);
    smuiCollLoc->setObjectName(T("smuiCollLoc"));
    smuiCollLoc->setValueAlignment(Qt::AlignLeft);
    smuiCollLoc->setFixedHeight(smuiCollLoc->sizeHint().height());
    m_naming = createNaming();
    m_naming->setFixedHeight(smuiCollLoc->height());
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Step, theme::Margin, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addWidget(bar);
    content->addWidget(label);
    content->addLayout(lists, 1);
    content->addWidget(smuiCollLoc);
    content->addWidget(m_naming);
    mnuNewFolder = new QMenu(T("Folder"), this);
    mnuNewFolder->setObjectName(T("mnuNewFolder"));
    BindMenu(mnuNewFolder, &CollectionPlace().mnuNewFolder);
}

void frmCollectionLoc::bind() {
    CollectionLocation& place = CollectionPlace();
    connect(Drive1, &QComboBox::activated, &place,
            [](int index) { Controls().choose(T("Drive1"), index); });
    connect(Dir1, &EntryList::contextMenuWanted, this,
            [this](const QString&, const QPoint& where) { mnuNewFolder->popup(where); });
    connect(&place.controls, &QAbstractItemModel::dataChanged, this, &frmCollectionLoc::refresh);
    connect(&place, &CollectionLocation::NamingChanged, this, &frmCollectionLoc::showNaming);
    connect(&place, &CollectionLocation::FolderNameWanted, txtNewFolderName,
            [this] { txtNewFolderName->setFocus(); });
    connect(new QShortcut(QKeySequence(T("Ctrl+Return")), this), &QShortcut::activated, &place,
            [&place] { place.smuiToolBar.click(T("SELECT")); });
    connect(new QShortcut(QKeySequence(T("Alt+Up")), this), &QShortcut::activated, &place,
            [&place] { place.Dir1.click(T("..")); });
}

void frmCollectionLoc::refresh() {
    const KeyedItem& drive = Controls().item(T("Drive1"));
    QStringList present;
    for (int index = 0; index < Drive1->count(); ++index)
        present.append(Drive1->itemText(index));
    if (present != drive.choices) {
        Drive1->clear();
        Drive1->addItems(drive.choices);
    }
    Drive1->setCurrentText(drive.value);
    if (const QString name = Controls().value(T("txtNewFolderName"));
        txtNewFolderName->text() != name)
        txtNewFolderName->setText(name);
}

void frmCollectionLoc::showNaming() {
    smuiCollLoc->setVisible(!CollectionPlace().isNaming());
    m_naming->setVisible(CollectionPlace().isNaming());
}

/// Enter belongs to the folder's name while one is asked for, Esc to what is open.
void frmCollectionLoc::keyPressEvent(QKeyEvent* event) {
    const bool naming = CollectionPlace().isNaming();
    if (event->key() == Qt::Key_Escape && !naming)
        close();
    else if (event->key() == Qt::Key_Escape)
        Controls().click(T("cmdCancel"));
    else if (naming && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        Controls().click(T("cmdOK"));
    else
        QWidget::keyPressEvent(event);
}

void frmCollectionLoc::closeEvent(QCloseEvent* event) {
    event->ignore();
    ports.screens->unload(Screen::frmCollectionLoc);
}

} // namespace kelvrane
