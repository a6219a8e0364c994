#include "calendar/frmDayInfo.h"

#include "calendar/calendar_model.h"
#include "calendar/day_calendar.h"
#include "frame/error_report.h"
#include "widgets/captions.h"
#include "widgets/card.h"
#include "widgets/flat_button.h"
#include "widgets/heading_line.h"
#include "widgets/keyed_menu.h"
#include "widgets/keyed_panel.h"
#include "widgets/month_view.h"
#include "widgets/open_editor.h"
#include "widgets/quiet_label.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr QSize startSize(860, 470);
constexpr int listHeight = 28;
constexpr int listRows = 12;
constexpr int leastDayWidth = 290; // a caption and a span text

KeyedItems& Controls() {
    return Calendar().controls;
}

} // namespace

frmDayInfo::frmDayInfo(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmDayInfo"));
    setWindowTitle(QStringLiteral("Modify DayInfo Database"));
    WireDayCalendar();
    LoadDayInfo();
    auto* content = new QHBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addWidget(createMonth(), 5);
    content->addWidget(createDay(), 4);
    createMenus();
    bind();
    refresh();
    m_month->setGrid(Calendar().grid());
    m_month->setFocus();
    resize(startSize);
}

QAbstractButton* frmDayInfo::addStep(const char* key) {
    const KeyedItem& item = Controls().item(QString::fromLatin1(key));
    auto* button = new FlatButton(this);
    button->setObjectName(item.key);
    button->setIcon(theme::Icon(item.image));
    button->setIconSize({theme::Gap, theme::Gap});
    button->setCaption(item.caption);
    button->setWordShown(false);
    connect(button, &QAbstractButton::clicked, &Controls(),
            [name = item.key] { Controls().click(name); });
    return button;
}

QComboBox* frmDayInfo::addList(const char* key) {
    const KeyedItem& item = Controls().item(QString::fromLatin1(key));
    auto* list = new QComboBox(this);
    list->setObjectName(item.key);
    list->setAccessibleName(item.caption);
    list->setToolTip(item.caption);
    list->setMinimumHeight(listHeight);
    list->setMaxVisibleItems(listRows);
    list->addItems(item.choices);
    connect(list, &QComboBox::activated, &Controls(),
            [name = item.key](int place) { Controls().choose(name, place); });
    m_lists.append(list);
    return list;
}

QLabel* frmDayInfo::addText(const char* key, QLabel* label) {
    label->setObjectName(QString::fromLatin1(key));
    label->setTextFormat(Qt::PlainText);
    m_texts.append(label);
    return label;
}

QWidget* frmDayInfo::createMonth() {
    auto* card = new Card(this);
    QLabel* title = addText("MonthYearLabel", new QLabel(card));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setWeight(QFont::DemiBold);
    title->setFont(large);
    title->setMinimumWidth(
        title->fontMetrics().horizontalAdvance(QStringLiteral("September 2026")));

    auto* steps = new QHBoxLayout;
    steps->setSpacing(2);
    steps->addWidget(title, 1);
    steps->addWidget(addStep("MonthDn"));
    steps->addWidget(addList("MonthList"));
    steps->addWidget(addStep("Monthup"));
    steps->addSpacing(theme::Step);
    steps->addWidget(addStep("YearDn"));
    steps->addWidget(addList("YearList"));
    steps->addWidget(addStep("YearUp"));
    m_month = new MonthView(QStringLiteral("dateLabel"), card);
    auto* content = new QVBoxLayout(card);
    content->setContentsMargins(theme::Margin, theme::Step, theme::Margin, theme::Margin);
    content->setSpacing(theme::Step);
    content->addLayout(steps);
    content->addWidget(m_month, 1);
    return card;
}

QWidget* frmDayInfo::createDay() {
    auto* card = new Card(this);
    card->setMinimumWidth(leastDayWidth);
    QLabel* shownDay = addText("lblShownDay", new QuietLabel(QString(), card));
    shownDay->setContentsMargins(theme::Margin, theme::Step, theme::Margin, theme::Step / 2);
    shownDay->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    smuiDaysInfo = new KeyedPanel(&Calendar().smuiDaysInfo, QString(), card);
    smuiDaysInfo->setObjectName(QStringLiteral("smuiDaysInfo"));
    smuiDaysInfo->setAccessibleName(QStringLiteral("Day's Information"));
    smuiDaysInfo->viewport()->installEventFilter(this);

    m_status = new QWidget(card);
    auto* status = new QVBoxLayout(m_status);
    status->setContentsMargins(theme::Gap, theme::Margin, theme::Gap, theme::Gap);
    status->addStretch(2);
    for (QLabel* label : {addText("lblDataStatus", new QLabel(m_status)),
                          addText("lblHint", new QuietLabel(QString(), m_status))}) {
        label->setAlignment(Qt::AlignHCenter);
        label->setWordWrap(true);
        status->addWidget(label);
    }
    status->addStretch(3);

    m_day = new QStackedWidget(card);
    m_day->addWidget(m_status);
    m_day->addWidget(smuiDaysInfo);
    auto* content = new QVBoxLayout(card);
    content->setContentsMargins(0, 1, 0, 0);
    content->setSpacing(0);
    content->addWidget(new HeadingLine(QStringLiteral("Day's Information"), card));
    content->addWidget(shownDay);
    content->addWidget(m_day, 1);
    return card;
}

void frmDayInfo::createMenus() {
    auto* bar = new QMenuBar(this);
    auto* mnuFile = bar->addMenu(QStringLiteral("&File"));
    mnuFile->setObjectName(QStringLiteral("mnuFile"));
    BindMenu(mnuFile, &Calendar().mnuFile);
    layout()->setMenuBar(bar);
    mnuPopup = new QMenu(QStringLiteral("Popup"), this);
    mnuPopup->setObjectName(QStringLiteral("mnuPopup"));
    BindMenu(mnuPopup, &Calendar().mnuPopup);
}

void frmDayInfo::bind() {
    CalendarModel& calendar = Calendar();
    connect(&calendar.controls, &QAbstractItemModel::dataChanged, this, &frmDayInfo::refresh);
    connect(&calendar, &CalendarModel::GridChanged, this,
            [this] { m_month->setGrid(Calendar().grid()); });
    connect(m_month, &MonthView::monthStepWanted, &calendar, [](int step) {
        Controls().click(step < 0 ? QStringLiteral("MonthDn") : QStringLiteral("Monthup"));
    });
    connect(m_month, &MonthView::dayClicked, &calendar, [](int index) {
        Guarded(QStringLiteral("dateLabel_Click"), [&] { DateLabelClick(index); });
    });
    connect(m_month, &MonthView::dayMenuWanted, this, [this](int index, const QPoint& place) {
        Guarded(QStringLiteral("dateLabel_MouseDown"), [&] {
            if (DateLabelRightClick(index))
                popUp(place);
        });
    });
    connect(smuiDaysInfo, &KeyedPanel::contextMenuWanted, this,
            [this](const QString& /*key*/, const QPoint& place) { popUp(place); });
    connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this,
            [this] { close(); });
}

void frmDayInfo::refresh() {
    for (QLabel* label : std::as_const(m_texts))
        label->setText(ShownCaption(Controls().item(label->objectName()).caption));
    for (QLabel* label : std::as_const(m_texts))
        label->setAccessibleName(label->text());
    for (QComboBox* list : std::as_const(m_lists))
        list->setCurrentText(Controls().value(list->objectName()));
    QWidget* shown = Calendar().isPanelShown() ? static_cast<QWidget*>(smuiDaysInfo) : m_status;
    m_day->setCurrentWidget(shown);
}

void frmDayInfo::popUp(const QPoint& globalPosition) {
    if (!mnuPopup->isVisible())
        mnuPopup->popup(globalPosition);
}

/// The menu comes on the press anywhere on the panel, not only on a row's release.
bool frmDayInfo::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
        CommitOpenEditor();
        popUp(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
    }
    return QWidget::eventFilter(watched, event);
}

void frmDayInfo::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void frmDayInfo::closeEvent(QCloseEvent* event) {
    event->ignore();
    CommitOpenEditor();
    Guarded(QStringLiteral("mnuClose_Click"), CloseDayInfo);
}

} // namespace kelvrane
