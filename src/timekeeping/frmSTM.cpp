#include "timekeeping/frmSTM.h"

#include "charts/chart_types.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/status_text.h"
#include "timekeeping/control_layout.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/control_views.h"
#include "timekeeping/hours_chart.h"
#include "timekeeping/running_summary.h"
#include "widgets/bar_splitter.h"
#include "widgets/card.h"
#include "widgets/chart_view.h"
#include "widgets/control_status_bar.h"
#include "widgets/keyed_buttons.h"
#include "widgets/keyed_menu.h"
#include "widgets/keyed_panel.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/named.h"
#include "widgets/question_bar.h"
#include "widgets/running_header.h"
#include "widgets/tab_strip.h"
#include "widgets/theme.h"
#include "widgets/week_table.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

constexpr int leastColumnWidth = 236; // captions and a span text beside them
constexpr int leastChartWidth = 180;
constexpr int leastListHeight = 3 * theme::RowHeight; // its heading and a row

QWidget* Line(QWidget* parent) {
    auto* line = new QWidget(parent);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Midlight);
    return line;
}

} // namespace

frmSTM::frmSTM(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmSTM"));
    setWindowTitle(QStringLiteral("Kelvrane - Current Day Information"));
    EnsureControlScreenLoaded();
    AssumeWeekViewGrown(Control().layout, WeekViewShowing);
    createPanels();
    createMenu();
    arrange();
    bind();
    layOut();
    takeWantedSize();
    showChart();
    showSummary();
    QTimer::singleShot(0, smuiBreakDown, &KeyedPanel::showEnd);
    smuiProjectStatus->setFocus();
    m_guarded = false;
}

void frmSTM::createPanels() {
    ControlModel& control = Control();
    smuiTimeCtrl = Named(new KeyedToolBar(&control.smuiTimeCtrl, this), "smuiTimeCtrl");
    m_header = new RunningHeader(this);
    smuiProjectStatus =
        Named(new KeyedPanel(&control.smuiProjectStatus, QStringLiteral("Current Project"), this),
              "smuiProjectStatus");
    smuiQuickView = Named(new KeyedPanel(&control.smuiQuickView,
                                         QStringLiteral("Current Day's Totals - QuickView"), this),
                          "smuiQuickView");
    smuiBreakDown = Named(new KeyedPanel(&control.smuiBreakDown,
                                         QStringLiteral("Current Day's Totals - Break Down"), this),
                          "smuiBreakDown");
    smuiBreakDown->setPlaceholder(QStringLiteral(
        "The projects of the day, with their times.\nChoose one in \u201cProject Name\u201d."));
    smuiOptions = Named(new TabStrip(&control.smuiOptions, this), "smuiOptions");
    const QString views = QStringLiteral("Views");
    auto* layoutPage = Named(new KeyedButtons(&control.smuiPanelLayout, views), "smuiPanel0");
    auto* launchPage = Named(new KeyedButtons(&control.smuiPanelLaunch, views), "smuiPanel1");
    for (KeyedButtons* page : {layoutPage, launchPage})
        page->setAccessibleName(views);
    smuiOptions->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    smuiOptions->bindPage(QStringLiteral("OPTIONS"), layoutPage);
    smuiOptions->bindPage(QStringLiteral("VIEWS"), launchPage);
    lvwWeekView = Named(new WeekTable(&control.lvwWeekView, this), "lvwWeekView");
    StatusBar = Named(new ControlStatusBar(this), "StatusBar");
}

QToolButton* frmSTM::createGraphTypeButton(int index, const QString& toolTip) {
    auto* button = new QToolButton(m_chartArea);
    button->setObjectName(QStringLiteral("Picture1_") + QString::number(index));
    button->setIcon(theme::Icon(index == 0 ? QStringLiteral("prev") : QStringLiteral("next")));
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, [index] {
        Guarded(QStringLiteral("Picture1_Click"), index == 0 ? PreviousGraphType : NextGraphType);
    });
    return button;
}

QWidget* frmSTM::createChartArea() {
    m_chartArea = new Card(this);
    ChartSpace1 = Named(new ChartView(m_chartArea), "ChartSpace1");
    ChartSpace1->setTipFormatter(ChartValueTip);
    m_chartType = new QLabel(m_chartArea);
    m_chartType->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QFont heading = m_chartType->font();
    heading.setWeight(QFont::DemiBold);
    m_chartType->setFont(heading);

    constexpr double besideTheBar = 40; // twips
    auto* types = new QHBoxLayout;
    types->setContentsMargins(theme::FromTwips(besideTheBar), 2, theme::Margin, 2);
    types->setSpacing(2);
    types->addWidget(createGraphTypeButton(0, QStringLiteral("Previous Graph Type")));
    types->addWidget(createGraphTypeButton(1, QStringLiteral("Next Graph Type")));
    types->addSpacing(theme::Step);
    types->addWidget(m_chartType, 1);
    auto* content = new QVBoxLayout(m_chartArea);
    content->setContentsMargins(0, 0, 0, theme::Step);
    content->setSpacing(0);
    content->addLayout(types);
    content->addWidget(Line(m_chartArea));
    content->addWidget(ChartSpace1, 1);
    return m_chartArea;
}

void frmSTM::createMenu() {
    mnuSetData = Named(new QMenu(this), "mnuSetData");
    BindMenu(mnuSetData, &Control().mnuSetData);
    connect(smuiBreakDown, &KeyedPanel::contextMenuWanted, this,
            [this](const QString& /*key*/, const QPoint& place) { mnuSetData->popup(place); });
}

void frmSTM::arrange() {
    m_list = new QWidget(this);
    m_list->setMinimumHeight(leastListHeight);
    auto* list = new QVBoxLayout(m_list);
    list->setContentsMargins(0, 0, 0, 0);
    list->addWidget(smuiQuickView);
    list->addWidget(smuiBreakDown);

    Splitter1 =
        Named(new BarSplitter(Qt::Vertical, [this](int space) { return placeListBar(space); }),
              "Splitter1");
    Splitter1->addWidget(smuiProjectStatus);
    Splitter1->addWidget(m_list);
    Splitter2 =
        Named(new BarSplitter(Qt::Horizontal, [this](int space) { return placeChartBar(space); }),
              "Splitter2");
    Splitter2->addWidget(Splitter1);
    Splitter2->addWidget(createChartArea());

    auto* right = new QVBoxLayout;
    right->setSpacing(theme::Step);
    right->addWidget(m_header);
    right->addWidget(new QuestionBar(this));
    right->addWidget(Splitter2, 1);
    auto* upper = new QWidget;
    auto* panels = new QHBoxLayout(upper);
    panels->setContentsMargins(theme::Margin, theme::Step, theme::Margin, theme::Step);
    panels->setSpacing(theme::Margin);
    panels->addWidget(smuiOptions);
    panels->addLayout(right, 1);

    splitter =
        Named(new BarSplitter(Qt::Vertical, [this](int space) { return placeWeekViewBar(space); }),
              "splitter");
    splitter->addWidget(upper);
    splitter->addWidget(lvwWeekView);

    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(0);
    content->addWidget(smuiTimeCtrl);
    content->addWidget(Line(this));
    content->addWidget(splitter, 1);
    content->addWidget(StatusBar);
}

void frmSTM::bind() {
    ControlModel& control = Control();
    connect(&control, &ControlModel::LayoutChanged, this, &frmSTM::layOut);
    connect(&control, &ControlModel::DailyChartChanged, this, &frmSTM::showChart);

    connect(&control.smuiBreakDown, &QAbstractItemModel::rowsInserted, smuiBreakDown,
            &KeyedPanel::showEnd, Qt::QueuedConnection); // the running entry is the last one
    // A command changes many fields; the summary is read once, when it is through.
    const auto summaryDue = [this] {
        if (std::exchange(m_summaryDue, true))
            return;
        QTimer::singleShot(0, this, &frmSTM::showSummary);
    };
    for (KeyedItems* items : {&control.smuiProjectStatus, &control.smuiQuickView}) {
        connect(items, &QAbstractItemModel::dataChanged, this, summaryDue);
        connect(items, &QAbstractItemModel::rowsInserted, this, summaryDue);
        connect(items, &QAbstractItemModel::modelReset, this, summaryDue);
    }
    connect(&Status(), &StatusText::Changed, this, summaryDue);

    connect(Splitter1, &BarSplitter::Moved, this, [](int first, int space) {
        Control().layout.Splitter1Percent = PercentOfTwo(first, space);
    });
    connect(Splitter2, &BarSplitter::Moved, this, [](int first, int space) {
        Control().layout.Splitter2Percent = PercentOfTwo(first, space);
    });
    connect(splitter, &BarSplitter::Moved, this, [this](int first, int /*space*/) {
        MoveWeekViewBar(Control().layout, theme::ToTwips(splitter->y() + first),
                        theme::ToTwips(height()));
    });
}

/// The current project keeps its five rows in sight as long as the list has some room too.
int frmSTM::placeListBar(int space) const {
    const int rows = smuiProjectStatus->sizeHint().height();
    const int least = std::min(rows, space - m_list->minimumHeight());
    return std::max(FirstOfTwo(Control().layout.Splitter1Percent, space), least);
}

/// The left column stays readable as long as the chart has some room too.
int frmSTM::placeChartBar(int space) const {
    const int least = std::min(leastColumnWidth, space - leastChartWidth);
    return std::max(FirstOfTwo(Control().layout.Splitter2Percent, space), least);
}

int frmSTM::placeWeekViewBar(int /*space*/) const {
    const double top = WeekViewBarTop(Control().layout, theme::ToTwips(height()));
    return theme::FromTwips(top) - splitter->y();
}

void frmSTM::layOut() {
    const ControlLayout& layout = Control().layout;
    smuiOptions->setVisible(layout.ControlPanelShowing);
    smuiQuickView->setVisible(layout.QuickViewShowing);
    smuiBreakDown->setVisible(layout.BreakDownShowing);
    m_list->setVisible(layout.QuickViewShowing || layout.BreakDownShowing);
    m_chartArea->setVisible(GraphShowing);
    lvwWeekView->setVisible(WeekViewShowing);
    if (!m_guarded && hasOwnSize() && GrowForWeekView(Control().layout, WeekViewShowing))
        takeWantedSize();
    for (BarSplitter* bar : {splitter, Splitter2, Splitter1})
        bar->place();
}

/// The window's size is its own, not the desktop's.
bool frmSTM::hasOwnSize() const {
    return !(windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized));
}

void frmSTM::takeWantedSize() {
    const QScopedValueRollback guard(m_guarded, true);
    // What was just hidden must no longer count in the least height. Before the first show
    // splitters pass such a change on only when told.
    for (QWidget* bar : {Splitter1, Splitter2, splitter}) {
        bar->updateGeometry();
        if (QLayout* around = bar->parentWidget()->layout())
            around->activate();
    }
    const ControlLayout& kept = Control().layout;
    const QSize wanted(theme::FromTwips(kept.Width), theme::FromTwips(kept.Height));
    resize(screen() ? wanted.boundedTo(screen()->availableSize()) : wanted);
}

void frmSTM::showChart() {
    ChartSpace1->setChart(Control().dailyChart());
    m_chartType->setText(ChartTypeAt(ChartIndex).Description);
}

void frmSTM::showSummary() {
    m_summaryDue = false;
    m_header->setSummary(CurrentSummary());
}

/// Closing hides; the day goes on in the tray.
void frmSTM::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
    Guarded(QStringLiteral("frmSTM_QueryUnload"), [] { SaveControlLayout(); });
}

void frmSTM::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!m_guarded && isVisible() && hasOwnSize())
        ResizeControlWindow(Control().layout, theme::ToTwips(width()), theme::ToTwips(height()),
                            WeekViewShowing);
}

} // namespace kelvrane
