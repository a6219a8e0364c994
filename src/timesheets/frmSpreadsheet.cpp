#include "timesheets/frmSpreadsheet.h"

#include "frame/error_report.h"
#include "frame/help_topics.h"
#include "platform/ports.h"
#include "timesheets/frmSpreadsheetDatabases.h"
#include "timesheets/sheet_calculation.h"
#include "timesheets/sheet_toolbox.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/spreadsheet_screen.h"
#include "widgets/captions.h"
#include "widgets/flat_button.h"
#include "widgets/keyed_menu.h"
#include "widgets/keyed_panel.h"
#include "widgets/open_editor.h"
#include "widgets/sheet_editor.h"
#include "widgets/theme.h"

#include <QCalendarWidget>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMouseEvent>
#include <QProgressBar>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr QSize startSize(1080, 720);
constexpr QSize smallestSize(640, 420);
constexpr int sideWidth = 260;
constexpr int toolboxHeight = 210;
constexpr int progressWidth = 140;
constexpr int pageEmpty = 0, pageSheet = 1, pageNoData = 2;

/// Closes on a release, and when the pointer is drawn off it with the button down.
class CloseMark final : public FlatButton {
  public:
    using FlatButton::FlatButton;

  protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        const bool left = isDown() && !rect().contains(event->position().toPoint());
        FlatButton::mouseMoveEvent(event);
        if (left)
            emit clicked();
    }
};

QLabel* createHint(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

/// As Qt counts the days.
Qt::DayOfWeek firstDayOfWeek() {
    const int day = SheetFirstDayOfWeek();
    return day == 1 ? Qt::Sunday : Qt::DayOfWeek(day - 1);
}

} // namespace

frmSpreadsheet::frmSpreadsheet(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmSpreadsheet"));
    WireSpreadsheet();
    LoadSpreadsheet();
    auto* middle = new QHBoxLayout;
    middle->setContentsMargins(theme::Margin, 0, theme::Margin, 0);
    middle->setSpacing(theme::Margin);
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(theme::Step);
    content->addWidget(createBar());
    middle->addWidget(createSheet(), 1);
    middle->addWidget(createSide());
    content->addLayout(middle, 1);
    content->addWidget(createStatusBar());
    createCalendar();
    bind();
    layOut();
    showBar();
    showStatus();
    setMinimumSize(smallestSize);
    resize(startSize);
}

QWidget* frmSpreadsheet::createBar() {
    auto* bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("SmartToolBar"));
    auto* menus = new QMenuBar(bar);
    menus->setNativeMenuBar(false);
    BindMenuBar(menus, &Sheets().SmartToolBar);
    const auto button = [bar](const char* key) {
        const KeyedItem& item = Sheets().SmartToolBar.item(QString::fromLatin1(key));
        auto* created = new FlatButton(bar);
        created->setObjectName(item.key);
        created->setCaption(item.caption);
        created->setHint(item.toolTip);
        created->setIcon(theme::Icon(item.image));
        connect(created, &QToolButton::clicked, &Sheets().SmartToolBar, [name = item.key] {
            CommitOpenEditor();
            Sheets().SmartToolBar.click(name);
        });
        return created;
    };
    STARTINGDATE = button("STARTINGDATE");
    STARTDATE = new QLabel(bar);
    STARTDATE->setObjectName(QStringLiteral("STARTDATE"));
    auto* content = new QHBoxLayout(bar);
    content->setContentsMargins(theme::Step, 0, theme::Step, 0);
    content->setSpacing(theme::Step);
    content->addWidget(menus, 0, Qt::AlignVCenter);
    content->addSpacing(theme::Margin);
    content->addWidget(STARTINGDATE);
    content->addWidget(STARTDATE);
    content->addStretch(1);
    content->addWidget(button("HELP"));
    return bar;
}

QWidget* frmSpreadsheet::createSheet() {
    m_sheet = new QStackedWidget(this);
    ss1 = new SheetEditor(&Sheets().ss1, m_sheet);
    ss1->setObjectName(QStringLiteral("ss1"));
    m_sheet->addWidget(createHint(QStringLiteral("lblEmpty"),
                                  QStringLiteral("The timesheet or invoice comes here.\nChoose the "
                                                 "start date, then File, Calculate."),
                                  m_sheet));
    m_sheet->addWidget(ss1);
    m_sheet->addWidget(
        createHint(QStringLiteral("lblNoData"), QStringLiteral("No Data to Display"), m_sheet));
    return m_sheet;
}

QWidget* frmSpreadsheet::createSide() {
    m_side = new QWidget(this);
    m_side->setFixedWidth(sideWidth);
    SmartToolbox =
        new KeyedPanel(&Sheets().SmartToolbox, QStringLiteral("Template Information"), m_side);
    SmartToolbox->setObjectName(QStringLiteral("SmartToolbox"));
    SmartToolbox->setMinimumHeight(toolboxHeight);
    auto* close = new CloseMark(SmartToolbox);
    close->setObjectName(QStringLiteral("ImgClose"));
    close->setCaption(QStringLiteral("Close the options"));
    close->setWordShown(false);
    close->setIcon(theme::Icon(QStringLiteral("close")));
    close->resize(close->sizeHint());
    close->move(sideWidth - close->width() - 2, 2);
    close->raise();
    connect(close, &QToolButton::clicked, this,
            [] { Guarded(QStringLiteral("ImgClose_Click"), CloseToolbox); });
    auto* content = new QVBoxLayout(m_side);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(theme::Margin);
    content->addWidget(SmartToolbox, 1);
    content->addWidget(new frmSpreadsheetDatabases(m_side), 1);
    return m_side;
}

QWidget* frmSpreadsheet::createStatusBar() {
    auto* bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("smuiStatusBar"));
    const auto label = [bar](const QString& key) {
        auto* text = new QLabel(bar);
        text->setObjectName(key);
        text->setTextFormat(Qt::PlainText);
        text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        return text;
    };
    TEMPLATE_NAME = label(QStringLiteral("TEMPLATE_NAME"));
    COLLECTION_NAME = label(QStringLiteral("COLLECTION_NAME"));
    m_progressText = new QLabel(bar);
    PROGRESS = new QProgressBar(bar);
    PROGRESS->setObjectName(QStringLiteral("PROGRESS"));
    PROGRESS->setAccessibleName(QStringLiteral("Progress"));
    PROGRESS->setTextVisible(false);
    PROGRESS->setFixedWidth(progressWidth);
    auto* content = new QHBoxLayout(bar);
    content->setContentsMargins(theme::Margin, 0, theme::Margin, theme::Step);
    content->setSpacing(theme::Margin);
    content->addWidget(TEMPLATE_NAME, 1);
    content->addWidget(COLLECTION_NAME, 1);
    content->addWidget(m_progressText);
    content->addWidget(PROGRESS);
    return bar;
}

void frmSpreadsheet::createCalendar() {
    m_calendar = new QFrame(this);
    m_calendar->setFrameShape(QFrame::StyledPanel);
    m_calendar->setAutoFillBackground(true);
    MonthView1 = new QCalendarWidget(m_calendar);
    MonthView1->setObjectName(QStringLiteral("MonthView1"));
    MonthView1->setAccessibleName(QStringLiteral("Start Date"));
    MonthView1->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    MonthView1->setLocale(QLocale::c());
    auto* content = new QVBoxLayout(m_calendar);
    content->setContentsMargins(2, 2, 2, 2);
    content->addWidget(MonthView1);
    m_calendar->hide();
}

void frmSpreadsheet::bind() {
    SpreadsheetModel& sheets = Sheets();
    connect(&sheets, &SpreadsheetModel::LayoutChanged, this, &frmSpreadsheet::layOut);
    connect(&sheets, &SpreadsheetModel::ToolboxFocusWanted, this,
            [this] { SmartToolbox->setFocus(); });
    connect(&sheets.SmartToolBar, &KeyedItems::dataChanged, this, &frmSpreadsheet::showBar);
    connect(&sheets.smuiStatusBar, &KeyedItems::dataChanged, this, &frmSpreadsheet::showStatus);
    const auto pick = [](QDate date) {
        Guarded(QStringLiteral("MonthView1_DateClick"), [&] { SheetDateClick(date); });
    };
    connect(MonthView1, &QCalendarWidget::clicked, this, pick);
    connect(MonthView1, &QCalendarWidget::activated, this, [this, pick](QDate date) {
        if (m_calendar->isVisible()) // a click has picked it already
            pick(date);
    });
    connect(ss1, &SheetEditor::Clicked, &sheets, HideSheetCalendar);
    connect(ss1, &SheetEditor::HelpWanted, &sheets, [] { ShowHelpTopic(topics::Sheet); });
    connect(ss1, &SheetEditor::AboutWanted, &sheets, [] { ports.screens->show(Screen::frmAbout); });
}

void frmSpreadsheet::layOut() {
    const SpreadsheetState& state = Sheets().state;
    setWindowTitle(state.caption);
    m_side->setVisible(state.ToolboxVisible);
    m_sheet->setCurrentIndex(state.noData ? pageNoData : state.sheetShown ? pageSheet : pageEmpty);
    if (state.calendarShown == m_calendar->isVisible())
        return;
    MonthView1->setFirstDayOfWeek(firstDayOfWeek());
    MonthView1->setSelectedDate(state.selectedDate);
    m_calendar->setVisible(state.calendarShown);
    placeCalendar();
    if (state.calendarShown)
        MonthView1->setFocus();
}

void frmSpreadsheet::placeCalendar() {
    if (!m_calendar->isVisible())
        return;
    m_calendar->adjustSize();
    const QPoint under = STARTINGDATE->mapTo(this, QPoint(0, STARTINGDATE->height() + 2));
    m_calendar->move(std::min(under.x(), width() - m_calendar->width()), under.y());
    m_calendar->raise();
}

void frmSpreadsheet::showBar() {
    STARTDATE->setText(Sheets().SmartToolBar.item(QStringLiteral("STARTDATE")).caption);
}

void frmSpreadsheet::showStatus() {
    const KeyedItems& items = Sheets().smuiStatusBar;
    for (QLabel* label : {TEMPLATE_NAME, COLLECTION_NAME}) {
        const KeyedItem& item = items.item(label->objectName());
        label->setText(OneLine(item.caption));
        label->setToolTip(PlainToolTip(item.toolTip + QLatin1Char('\n') + item.caption));
    }
    const KeyedItem& progress = items.item(QStringLiteral("PROGRESS"));
    PROGRESS->setValue(progress.value.toInt());
    m_progressText->setText(progress.caption);
    PROGRESS->setVisible(progress.value.toInt() > 0 || !progress.caption.isEmpty());
}

void frmSpreadsheet::closeEvent(QCloseEvent* event) {
    event->ignore();
    CommitOpenEditor();
    Guarded(QStringLiteral("frmSpreadsheet_Unload"), CloseSpreadsheet);
}

void frmSpreadsheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_calendar->isVisible())
        HideSheetCalendar();
    else
        QWidget::keyPressEvent(event);
}

void frmSpreadsheet::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Sheets().ss1.setViewableRange(QStringLiteral("1:50"));
    placeCalendar();
}

} // namespace kelvrane
