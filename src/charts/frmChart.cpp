#include "charts/frmChart.h"

#include "charts/chart_screen.h"
#include "frame/error_report.h"
#include "platform/ports.h"
#include "widgets/bar_splitter.h"
#include "widgets/captions.h"
#include "widgets/capture.h"
#include "widgets/card.h"
#include "widgets/chart_view.h"
#include "widgets/date_field.h"
#include "widgets/keyed_menu.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/month_popup.h"
#include "widgets/named.h"
#include "widgets/open_editor.h"
#include "widgets/quiet_label.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int leastChartWidth = 200;
constexpr int leastTreeWidth = 170;
constexpr QSize smallestSize(420, 320);

QString T(const char* text) {
    return QString::fromLatin1(text);
}

QLabel* centred(QLabel* label) {
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

/// Rows as high as those of the panels.
class TreeRows final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), std::max(size.height() + 2, theme::RowHeight - 3)};
    }

    /// What doesn't fit shows whole in a tip.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const bool fits = sizeHint(option, index).width() <= option.rect.width();
        QToolTip::showText(event->globalPos(),
                           fits ? QString() : PlainToolTip(index.data().toString()), view);
        return true;
    }
};

/// A menu that comes up on a widget with the right button or the menu key.
void popUpOn(QWidget* widget, QMenu* menu) {
    widget->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(
        widget, &QWidget::customContextMenuRequested, menu,
        [widget, menu](const QPoint& place) { menu->popup(widget->mapToGlobal(place)); });
}

} // namespace

frmChart::frmChart(QWidget* parent) : QWidget(parent) {
    setObjectName(T("frmChart"));
    setWindowTitle(T("Kelvrane - Chart"));
    WireChart();
    Guarded(T("frmChart_Load"), LoadChart);
    createBar();
    Splitter1 =
        Named(new BarSplitter(Qt::Horizontal,
                              [this](int space) {
                                  return std::clamp(
                                      int(space * m_chartShare), std::min(leastChartWidth, space),
                                      std::max(leastChartWidth, space - leastTreeWidth));
                              }),
              "Splitter1");
    Splitter1->addWidget(createChart());
    Splitter1->addWidget(createTree());
    m_panes = new QStackedWidget(this);
    m_panes->addWidget(Splitter1);
    m_panes->addWidget(createNoData());
    m_panes->addWidget(
        centred(Named(new QLabel(T("Recalculating ..."), this), "lblRecalculating")));
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Step, theme::Step / 2, theme::Step, theme::Step);
    content->setSpacing(theme::Step / 2);
    content->addWidget(smuiToolBar);
    content->addWidget(m_panes, 1);
    createMenus();
    bind();
    layOut();
    showDates();
    setMinimumSize(smallestSize);
    const QSize kept(theme::FromTwips(Charts().settings.Width),
                     theme::FromTwips(Charts().settings.Height));
    resize(screen() ? kept.boundedTo(screen()->availableSize()) : kept);
    STARTDATE->setFocus();
}

void frmChart::createBar() {
    smuiToolBar = Named(new KeyedToolBar(&Charts().smuiToolBar, this), "smuiToolBar");
    STARTDATE = createDateField("STARTDATE", ChartDate::Start);
    ENDDATE = createDateField("ENDDATE", ChartDate::End);
    MonthView1 = Named(new MonthPopup(this), "MonthView1");
}

DateField* frmChart::createDateField(const char* key, ChartDate which) {
    auto* field = new DateField(this);
    field->setAccessibleName(which == ChartDate::Start ? T("Start Date") : T("End Date"));
    field->setToolTip(T("+ is the next day, - the day before"));
    smuiToolBar->setField(T(key), field);
    const QString routine = T(key) + T("_Change");
    connect(field, &DateField::stepped, this, [which, routine](int direction) {
        Guarded(routine, [&] { StepChartDate(which, direction); });
    });
    connect(field, &DateField::typed, this, [which, routine](const QString& text) {
        Guarded(routine, [&] { TypeChartDate(which, text); });
    });
    return field;
}

QWidget* frmChart::createChart() {
    auto* card = new Card(this);
    ChartSpace1 = Named(new ChartView(card), "ChartSpace1");
    ChartSpace1->setTipFormatter(ChartValueTip);
    ChartSpace1->setFocusPolicy(Qt::TabFocus); // for the menu key
    auto* content = new QVBoxLayout(card);
    content->setContentsMargins(theme::Step, theme::Step, theme::Step, theme::Step);
    content->addWidget(ChartSpace1);
    return card;
}

QWidget* frmChart::createTree() {
    m_treeCard = new Card(this);
    TreeView1 = Named(new QTreeView(m_treeCard), "TreeView1");
    TreeView1->setAccessibleName(T("Work and break times"));
    TreeView1->setModel(&Charts().tree);
    TreeView1->setHeaderHidden(true);
    TreeView1->setUniformRowHeights(true);
    TreeView1->setFrameShape(QFrame::NoFrame); // flat, as the picture wants it
    TreeView1->setItemDelegate(new TreeRows(TreeView1));
    TreeView1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    TreeView1->setTextElideMode(Qt::ElideRight);
    TreeView1->setIndentation(theme::Margin + 2);
    auto* content = new QVBoxLayout(m_treeCard);
    content->setContentsMargins(2, theme::Step, 2, theme::Step);
    content->addWidget(TreeView1);
    return m_treeCard;
}

QWidget* frmChart::createNoData() {
    auto* page = new QWidget(this);
    auto* label = centred(Named(new QLabel(T("No Data to Display"), page), "lblNoData"));
    auto* content = new QVBoxLayout(page);
    content->setSpacing(theme::Step);
    content->addStretch(2);
    content->addWidget(label);
    content->addWidget(centred(new QuietLabel(T("Choose another day, or a range of days."), page)));
    content->addStretch(3);
    return page;
}

void frmChart::createMenus() {
    auto* order = Named(new QMenu(this), "mnuListDisplayType");
    BindMenu(order, &Charts().mnuListDisplayType);
    popUpOn(TreeView1, order);
    auto* types = Named(new QMenu(this), "mnuChartType");
    BindMenu(types, &Charts().mnuChartType);
    popUpOn(ChartSpace1, types);
}

void frmChart::bind() {
    ChartModel& charts = Charts();
    connect(&charts, &ChartModel::ChartChanged, this,
            [this] { ChartSpace1->setChart(Charts().chart()); });
    connect(&charts, &ChartModel::LayoutChanged, this, &frmChart::layOut);
    connect(&charts, &ChartModel::MonthViewWanted, this, &frmChart::openMonth);
    connect(&charts, &ChartModel::PictureWanted, this,
            [this] { Charts().picForm = CaptureClient(*this); });
    connect(&charts.smuiToolBar, &QAbstractItemModel::dataChanged, this, &frmChart::showDates);
    connect(MonthView1, &MonthPopup::dayClicked, &charts, [](QDate day) {
        Guarded(T("MonthView1_DateClick"), [&] { MonthView1_DateClick(day); });
    });
    connect(Splitter1, &BarSplitter::Moved, this,
            [this](int first, int space) { m_chartShare = double(first) / std::max(1, space); });
    connect(new QShortcut(QKeySequence::Print, this), &QShortcut::activated, &charts,
            [] { Charts().smuiToolBar.click(T("mnuPrint")); });
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, &charts,
            [] { Charts().smuiToolBar.click(T("mnuSaveAs")); });
    connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this,
            [this] { close(); });
    ChartSpace1->setChart(charts.chart());
}

void frmChart::layOut() {
    m_panes->setCurrentIndex(int(Charts().pane()));
    m_treeCard->setVisible(Charts().settings.ViewList);
    Splitter1->place();
}

/// What is being typed goes only when its date is another one.
void frmChart::showDates() {
    for (DateField* field : {STARTDATE, ENDDATE})
        field->setDateText(Charts().smuiToolBar.value(field->objectName()));
}

void frmChart::openMonth(const QString& key) {
    const auto* anchor = findChild<QWidget*>(key);
    if (anchor)
        MonthView1->open(QRect(anchor->mapToGlobal(QPoint()), anchor->size()),
                         Charts().date(Charts().PickedDate), ports.clock->today());
}

void frmChart::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!isVisible() || windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    Charts().settings.Width = int(theme::ToTwips(width()));
    Charts().settings.Height = int(theme::ToTwips(height()));
}

void frmChart::closeEvent(QCloseEvent* event) {
    event->ignore();
    Guarded(T("frmChart_Unload"), [] { ports.screens->unload(Screen::frmChart); });
}

void frmChart::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace kelvrane
