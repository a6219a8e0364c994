#include "records/frmDataBase.h"

#include "frame/error_report.h"
#include "records/database_manager.h"
#include "records/frmDataBaseList.h"
#include "records/list_fill.h"
#include "records/manager_model.h"
#include "records/record_panel.h"
#include "widgets/keyed_buttons.h"
#include "widgets/keyed_panel.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/named.h"
#include "widgets/open_editor.h"
#include "widgets/tab_strip.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr QSize startSize(860, 660);
constexpr QSize smallestSize(560, 400);
constexpr int columnWidth = 216; // of the tabs
constexpr int longestFind = 420;

} // namespace

frmDataBase::frmDataBase(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmDataBase"));
    setWindowTitle(QStringLiteral("Project Database Information"));
    WireDataBase();
    OpenDataBase();
    createPanels();
    arrange();
    bind();
    layOut();
    showButtons();
    showProgress();
    smuiDataBase->setFocus();
}

void frmDataBase::createPanels() {
    ManagerModel& manager = Manager();
    smuiToolBar = Named(new KeyedToolBar(&manager.smuiToolBar, this), "smuiToolBar");
    smuiOptions = Named(new TabStrip(&manager.smuiOptions, this), "smuiOptions");
    smuiOptions->setFixedWidth(columnWidth);
    auto* views =
        Named(new KeyedButtons(&manager.smuiPanel0, QStringLiteral("Views")), "smuiPanel0");
    auto* edits =
        Named(new KeyedButtons(&manager.smuiPanel1, QStringLiteral("Edit")), "smuiPanel1");
    smuiOptions->bindPage(QStringLiteral("OPTIONS"), views);
    smuiOptions->bindPage(QStringLiteral("DB Manager"), edits);
    smuiDataBase =
        Named(new KeyedPanel(&RecordPanel(), QStringLiteral("Database Information"), this),
              "smuiDataBase");
    smuiDataBase->setValueAlignment(Qt::AlignLeft);
    smuiProgress = Named(new KeyedPanel(&manager.smuiProgress, QString(), this), "smuiProgress");
    ListView1 = new frmDataBaseList(&manager.ListView1, this);
}

QWidget* frmDataBase::createFindPanel() {
    m_findPanel = new QWidget(this);
    smuiFind = Named(new KeyedButtons(&Manager().smuiFind, QStringLiteral("Find")), "smuiFind");
    smuiFind->setMaximumWidth(longestFind);
    auto* find = Named(new QPushButton(m_findPanel), "cmdFind");
    auto* close = Named(new QToolButton(m_findPanel), "ImgClose");
    close->setAutoRaise(true);
    m_buttons << find << close;

    auto* content = new QHBoxLayout(m_findPanel);
    content->setContentsMargins(0, 0, 0, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addWidget(smuiFind, 1);
    content->addWidget(find, 0, Qt::AlignBottom);
    content->addStretch(0);
    content->addWidget(close, 0, Qt::AlignTop);
    return m_findPanel;
}

QWidget* frmDataBase::createStepping() {
    m_stepping = new QWidget(this);
    auto* content = new QHBoxLayout(m_stepping);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(theme::Step);
    content->addStretch(1);
    for (const char* name : {"cmdDown", "CmdUp"}) {
        auto* button = Named(new QToolButton(m_stepping), name);
        button->setAutoRaise(true);
        button->setIconSize({theme::Gap, theme::Gap});
        button->setFocusPolicy(Qt::TabFocus);
        content->addWidget(button);
        m_buttons << button;
    }
    return m_stepping;
}

void frmDataBase::arrange() {
    m_views = new QStackedWidget(this);
    m_views->addWidget(smuiDataBase);
    m_views->addWidget(ListView1);

    auto* right = new QVBoxLayout;
    right->setSpacing(theme::Step);
    right->addWidget(createFindPanel());
    right->addWidget(m_views, 1);
    right->addWidget(createStepping());
    right->addWidget(smuiProgress);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(theme::Gap);
    columns->addWidget(smuiOptions);
    columns->addLayout(right, 1);
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Step, theme::Margin, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addWidget(smuiToolBar);
    content->addLayout(columns, 1);
    setMinimumSize(smallestSize);
    resize(startSize);
}

void frmDataBase::bind() {
    ManagerModel& manager = Manager();
    connect(&manager, &ManagerModel::LayoutChanged, this, &frmDataBase::layOut);
    connect(&manager, &ManagerModel::BusyChanged, this,
            [this](bool busy) { busy ? setCursor(Qt::WaitCursor) : unsetCursor(); });
    connect(&manager.buttons, &KeyedItems::dataChanged, this, &frmDataBase::showButtons);
    connect(&manager.smuiProgress, &KeyedItems::dataChanged, this, &frmDataBase::showProgress);
    for (const QAbstractButton* button : m_buttons)
        connect(button, &QAbstractButton::clicked, &manager.buttons, [key = button->objectName()] {
            CommitOpenEditor(); // what is typed belongs to the record that is still up
            Manager().buttons.click(key);
        });

    connect(ListView1, &frmDataBaseList::RowChosen, this,
            [](int row) { Guarded(QStringLiteral("ListView1_Click"), [&] { ListClick(row); }); });
    connect(ListView1, &frmDataBaseList::RowTaken, this,
            [] { Guarded(QStringLiteral("ListView1_DblClick"), ListDoubleClick); });
    connect(ListView1, &frmDataBaseList::ColumnClicked, this, [](int column) {
        Guarded(QStringLiteral("listview1_ColumnClick"), [&] { listview1_ColumnClick(column); });
    });

    const auto key = [this](const QKeySequence& keys, KeyedItems& items, const char* item) {
        connect(new QShortcut(keys, this), &QShortcut::activated, &items, [&items, item] {
            CommitOpenEditor();
            items.click(QString::fromLatin1(item));
        });
    };
    key(QKeySequence(QStringLiteral("Ctrl+F")), manager.smuiPanel0, "FIND");
    key(QKeySequence(Qt::Key_F3), manager.buttons, "cmdFind");
    key(QKeySequence(QStringLiteral("Alt+Right")), manager.buttons, "CmdUp");
    key(QKeySequence(QStringLiteral("Alt+Left")), manager.buttons, "cmdDown");
    m_select = new QShortcut(QKeySequence(Qt::Key_Return), smuiDataBase);
    m_select->setContext(Qt::WidgetWithChildrenShortcut);
    connect(m_select, &QShortcut::activated, &manager.smuiPanel0,
            [] { Manager().smuiPanel0.click(QStringLiteral("SELECT")); });
}

void frmDataBase::layOut() {
    const ManagerState& state = Manager().state;
    QWidget* view = state.listShown ? static_cast<QWidget*>(ListView1) : smuiDataBase;
    // What is hidden would hand the focus to the tool bar.
    const QWidget* focus = focusWidget();
    if (focus &&
        (m_views->isAncestorOf(focus) || (!state.FindShown && m_findPanel->isAncestorOf(focus))))
        view->setFocus();
    m_views->setCurrentWidget(view);
    m_stepping->setVisible(!state.listShown);
    m_select->setEnabled(!state.InManager);
    const bool findOpens = state.FindShown && m_findPanel->isHidden();
    m_findPanel->setVisible(state.FindShown);
    if (findOpens)
        if (auto* text = smuiFind->findChild<QWidget*>(QStringLiteral("FIND")))
            text->setFocus();
    smuiOptions->setCurrent(state.InManager ? QStringLiteral("DB Manager")
                                            : QStringLiteral("OPTIONS"));
}

void frmDataBase::showButtons() {
    for (QAbstractButton* button : std::as_const(m_buttons)) {
        const KeyedItem& item = Manager().buttons.item(button->objectName());
        button->setEnabled(item.enabled);
        button->setToolTip(item.toolTip);
        button->setAccessibleName(item.caption);
        button->setIcon(theme::Icon(item.image));
        if (qobject_cast<QPushButton*>(button))
            button->setText(item.caption);
    }
}

void frmDataBase::showProgress() {
    smuiProgress->setVisible(Manager().smuiProgress.items().first().visible);
}

void frmDataBase::closeEvent(QCloseEvent* event) {
    event->ignore();
    CommitOpenEditor(); // what is typed is asked about, too
    Guarded(QStringLiteral("frmDataBase_Unload"), RequestClose);
}

void frmDataBase::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace kelvrane
