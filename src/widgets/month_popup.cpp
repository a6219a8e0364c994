#include "widgets/month_popup.h"

#include "widgets/flat_button.h"
#include "widgets/month_view.h"
#include "widgets/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace kelvrane {

namespace {
constexpr QSize leastDays(272, 236);
}

MonthPopup::MonthPopup(QWidget* parent)
    : QFrame(parent, Qt::Popup), m_view(new MonthView(QStringLiteral("MonthView1_"), this)),
      m_title(new QLabel(this)) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    QFont heading = m_title->font();
    heading.setWeight(QFont::DemiBold);
    m_title->setFont(heading);
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setTextFormat(Qt::PlainText);
    m_view->setMinimumSize(leastDays);

    auto* steps = new QHBoxLayout;
    steps->setSpacing(0);
    addStep(steps, "YearDn", "first", QStringLiteral("Previous Year"), StepYear, -1);
    addStep(steps, "MonthDn", "prev", QStringLiteral("Previous Month"), StepMonth, -1);
    steps->addWidget(m_title, 1);
    addStep(steps, "Monthup", "next", QStringLiteral("Next Month"), StepMonth, 1);
    addStep(steps, "YearUp", "last", QStringLiteral("Next Year"), StepYear, 1);
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Step, theme::Step, theme::Step, theme::Step);
    content->setSpacing(theme::Step);
    content->addLayout(steps);
    content->addWidget(m_view, 1);
    setFocusProxy(m_view);

    connect(m_view, &MonthView::monthStepWanted, this,
            [this](int by) { show(StepMonth(m_shown, by)); });
    connect(m_view, &MonthView::dayClicked, this, [this](int index) {
        const GridDay day = BuildMonthGrid(m_shown, m_today).days[size_t(index)];
        close();
        emit dayClicked(QDate(m_shown.year, m_shown.month, day.caption.trimmed().toInt()));
    });
}

void MonthPopup::addStep(QBoxLayout* row, const char* name, const char* icon,
                         const QString& toolTip, Step step, int by) {
    auto* button = new FlatButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setIcon(theme::Icon(QString::fromLatin1(icon)));
    button->setIconSize({theme::Gap, theme::Gap});
    button->setCaption(toolTip);
    button->setWordShown(false);
    connect(button, &QAbstractButton::clicked, this, [this, step, by] { show(step(m_shown, by)); });
    row->addWidget(button);
}

void MonthPopup::show(MonthOfYear month) {
    m_shown = month;
    m_title->setText(MonthTitle(month));
    MonthGrid grid = BuildMonthGrid(month, m_today);
    if (m_chosen.month() == month.month && m_chosen.year() == month.year)
        MarkDay(grid, DayCaption(m_chosen.day()));
    m_view->setGrid(grid);
}

void MonthPopup::open(const QRect& globalAnchor, QDate chosen, QDate today) {
    m_chosen = chosen;
    m_today = today;
    m_view->setGrid({}); // the day of the last opening isn't this one's
    show({.month = chosen.month(), .year = chosen.year()});
    adjustSize();
    QPoint corner = globalAnchor.bottomLeft() + QPoint(0, 1);
    if (const QScreen* where = parentWidget()->screen()) {
        const QRect room = where->availableGeometry();
        if (corner.y() + height() > room.bottom() && globalAnchor.top() - height() > room.top())
            corner.setY(globalAnchor.top() - height());
        corner.setX(
            std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() - width())));
    }
    move(corner);
    QFrame::show();
    m_view->setFocus(Qt::PopupFocusReason);
}

void MonthPopup::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}

} // namespace kelvrane
