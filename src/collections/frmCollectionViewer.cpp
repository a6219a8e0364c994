#include "collections/frmCollectionViewer.h"

#include "collections/collection_viewer.h"
#include "collections/viewer_model.h"
#include "frame/error_report.h"
#include "widgets/bar_splitter.h"
#include "widgets/entry_list.h"
#include "widgets/flat_button.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/open_editor.h"
#include "widgets/sheet_editor.h"
#include "widgets/sheet_view.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QShortcut>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace kelvrane {

namespace {

constexpr QSize startSize(1000, 680);
constexpr int leastList = 160;

QString T(const char* text) {
    return QString::fromLatin1(text);
}

/// The one file that a drag brings, "" for anything else.
QString draggedFile(const QMimeData* data) {
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
}

struct KeyRow {
    const char* keys;
    const char* item;
};
constexpr KeyRow keyRows[] = {
    {"Ctrl+S", "SAVE"},   {"Ctrl+W", "CLOSE"},   {"Alt+1", "DM_VIEW"},
    {"Alt+2", "DM_EDIT"}, {"Alt+3", "DM_PRINT"}, {"Ctrl+P", "P_PRINT"},
};

} // namespace

frmCollectionViewer::frmCollectionViewer(QWidget* parent) : QWidget(parent) {
    setObjectName(T("frmCollectionViewer"));
    setWindowTitle(T("Collection Viewer"));
    setAcceptDrops(true);
    WireCollectionViewer();
    arrange();
    bind();
    resize(startSize);
    Guarded(T("frmCollectionViewer_Load"), LoadCollectionViewer);
    showPane();
    showLocation();
    smuiCollections->setFocus();
}

void frmCollectionViewer::arrange() {
    CollectionViewer& viewer = Viewer();
    smuiToolBar = new KeyedToolBar(&viewer.smuiToolBar, this);
    smuiToolBar->setObjectName(T("smuiToolBar"));
    smuiCollections = new EntryList(&viewer.smuiCollections, T("Available Files"), this);
    smuiCollections->setObjectName(T("smuiCollections"));
    smuiCollections->setPlaceholder(T("No collection is open. Click the bar below to select one."));
    Web = new SheetView(this);
    Web->setObjectName(T("Web"));
    ss1 = new SheetEditor(&viewer.ss1, this);
    ss1->setObjectName(T("ss1"));
    txtError = new QLabel(T("File not found"), this);
    txtError->setObjectName(T("txtError"));
    txtError->setAlignment(Qt::AlignCenter);
    m_panes = new QStackedWidget(this);
    for (QWidget* pane :
         {static_cast<QWidget*>(Web), static_cast<QWidget*>(ss1), static_cast<QWidget*>(txtError)})
        m_panes->addWidget(pane);
    Splitter = new BarSplitter(
        Qt::Horizontal, [this](int space) { return qMax(leastList, int(space * m_listShare)); },
        this);
    Splitter->setObjectName(T("Splitter"));
    Splitter->addWidget(smuiCollections);
    Splitter->addWidget(m_panes);
    auto* smuiStatusBar = new QWidget(this);
    smuiStatusBar->setObjectName(T("smuiStatusBar"));
    LOCATION = new FlatButton(smuiStatusBar);
    LOCATION->setObjectName(T("LOCATION"));
    LOCATION->setContentAlignment(Qt::AlignLeft);
    LOCATION->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    LOCATION->setMinimumWidth(1); // a long path must not widen the window
    auto* status = new QHBoxLayout(smuiStatusBar);
    status->setContentsMargins(theme::Step, 0, theme::Step, theme::Step / 2);
    status->addWidget(LOCATION);
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Step, 0, theme::Step, 0);
    content->setSpacing(theme::Step / 2);
    content->addWidget(smuiToolBar);
    content->addWidget(Splitter, 1);
    content->addWidget(smuiStatusBar);
}

void frmCollectionViewer::bind() {
    CollectionViewer& viewer = Viewer();
    connect(&viewer, &CollectionViewer::PaneChanged, this, &frmCollectionViewer::showPane);
    connect(&viewer, &CollectionViewer::WebChanged, this,
            [this] { Web->setContents(Viewer().web()); });
    connect(&viewer, &CollectionViewer::Loaded, this, &frmCollectionViewer::markCurrent);
    connect(&viewer, &CollectionViewer::BusyChanged, this,
            [this](bool busy) { busy ? setCursor(Qt::WaitCursor) : unsetCursor(); });
    connect(&viewer.smuiStatusBar, &QAbstractItemModel::dataChanged, this,
            &frmCollectionViewer::showLocation);
    connect(LOCATION, &QAbstractButton::clicked, &viewer.smuiStatusBar, [] {
        CommitOpenEditor();
        Viewer().smuiStatusBar.click(T("LOCATION"));
    });
    connect(Splitter, &BarSplitter::Moved, this,
            [this](int first, int space) { m_listShare = double(first) / qMax(1, space); });
    connect(ss1, &SheetEditor::HelpWanted, &viewer, ViewerSheetHelp);
    connect(ss1, &SheetEditor::AboutWanted, &viewer, ViewerSheetAbout);
    for (const KeyRow& row : keyRows)
        connect(new QShortcut(QKeySequence(T(row.keys)), this), &QShortcut::activated, &viewer,
                [item = row.item] {
                    CommitOpenEditor();
                    Viewer().smuiToolBar.click(T(item));
                });
}

void frmCollectionViewer::showPane() {
    const ViewerPane pane = Viewer().pane();
    QWidget* shown = pane == ViewerPane::Web   ? static_cast<QWidget*>(Web)
                     : pane == ViewerPane::ss1 ? static_cast<QWidget*>(ss1)
                                               : txtError;
    m_panes->setCurrentWidget(shown);
}

void frmCollectionViewer::showLocation() {
    const KeyedItem& item = Viewer().smuiStatusBar.item(T("LOCATION"));
    LOCATION->setCaption(item.caption + u' ' + item.value);
    LOCATION->setHint(item.toolTip);
}

void frmCollectionViewer::markCurrent() {
    smuiCollections->setCurrentKey(QFileInfo(Viewer().CurrentFile).fileName());
}

void frmCollectionViewer::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void frmCollectionViewer::closeEvent(QCloseEvent* event) {
    event->ignore();
    CommitOpenEditor();
    Viewer().smuiToolBar.click(T("CLOSE"));
}

void frmCollectionViewer::dragEnterEvent(QDragEnterEvent* event) {
    if (!draggedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmCollectionViewer::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    CommitOpenEditor();
    Guarded(T("frmCollectionViewer_Drop"),
            [&] { TakeCollectionFile(draggedFile(event->mimeData())); });
}

} // namespace kelvrane
