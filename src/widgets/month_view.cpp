#include "widgets/month_view.h"

#include "widgets/open_editor.h"
#include "widgets/quiet_label.h"
#include "widgets/theme.h"

#include <QContextMenuEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>

namespace kelvrane {

namespace {

constexpr const char* weekdays[DaysInWeek] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr QRgb todayPaper = 0xffffe0c0;
constexpr QSize leastLabel(34, 30);
constexpr QSize wantedLabel(50, 42);
constexpr int focusInset = 4;
constexpr double figureContrast = 10; // also on today's paper in the dark

} // namespace

/// One day. A button in all but its look.
class DayLabel final : public QLabel {
  public:
    DayLabel(MonthView* view, int index) : QLabel(view), m_view(view), m_index(index) {
        setAttribute(Qt::WA_Hover);
        setFocusPolicy(Qt::ClickFocus);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        QSizePolicy kept = sizePolicy();
        kept.setRetainSizeWhenHidden(true);
        setSizePolicy(kept);
    }

    void setDay(const GridDay& day) {
        m_day = day;
        setText(day.caption);
        setAccessibleName(day.caption);
        setAccessibleDescription(day.isToday ? QStringLiteral("Today") : QString());
        setToolTip(accessibleDescription());
        update();
    }

    QSize sizeHint() const override { return wantedLabel; }
    QSize minimumSizeHint() const override { return leastLabel; }

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        CommitOpenEditor();
        m_isDown = event->button() == Qt::LeftButton;
        update();
        if (event->button() == Qt::RightButton)
            emit m_view->dayMenuWanted(m_index, event->globalPosition().toPoint());
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        const bool clicked = m_isDown && rect().contains(event->pos());
        m_isDown = false;
        update();
        if (clicked)
            emit m_view->dayClicked(m_index);
    }
    void keyPressEvent(QKeyEvent* event) override {
        const auto others = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
        if (others || !m_view->takesKey(m_index, event->key()))
            QLabel::keyPressEvent(event);
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        if (event->reason() == QContextMenuEvent::Keyboard) // by mouse the press has asked
            emit m_view->dayMenuWanted(m_index, mapToGlobal(rect().center()));
        event->accept();
    }
    void focusInEvent(QFocusEvent* event) override {
        QLabel::focusInEvent(event);
        m_view->setCurrent(m_index);
        update();
    }
    void focusOutEvent(QFocusEvent* event) override {
        QLabel::focusOutEvent(event);
        update();
    }
    void paintEvent(QPaintEvent* event) override;

  private:
    MonthView* m_view;
    int m_index;
    GridDay m_day;
    bool m_isDown = false;
};

void DayLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const QColor paper =
        m_day.isToday ? QColor::fromRgb(todayPaper) : palette().color(QPalette::Base);
    painter.setPen(Qt::NoPen);
    if (m_day.isToday) {
        painter.setBrush(paper);
        painter.drawRoundedRect(place, theme::Radius, theme::Radius);
    }
    if (const double wash = m_isDown ? 0.16 : underMouse() ? 0.10 : m_day.isToday ? 0 : 0.04) {
        painter.setBrush(theme::Wash(palette(), wash));
        painter.drawRoundedRect(place, theme::Radius, theme::Radius);
    }

    const QColor ring = theme::ReadableOn(palette().color(QPalette::Highlight), paper, 3);
    painter.setBrush(Qt::NoBrush);
    if (m_day.isMarked) {
        painter.setPen(QPen(ring, 2));
        painter.drawRoundedRect(place, theme::Radius, theme::Radius);
    }
    if (hasFocus()) {
        painter.setPen(QPen(ring, 1, Qt::DotLine));
        painter.drawRoundedRect(place.adjusted(focusInset, focusInset, -focusInset, -focusInset), 2,
                                2);
    }

    QFont figures = theme::TabularFont(font());
    if (m_day.isToday || m_day.isMarked)
        figures.setWeight(QFont::DemiBold);
    painter.setFont(figures);
    painter.setPen(theme::ReadableOn(palette().color(QPalette::Text), paper, figureContrast));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text().trimmed());
}

MonthView::MonthView(const QString& labelName, QWidget* parent) : QWidget(parent) {
    auto* content = new QGridLayout(this);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(theme::Step / 2);
    for (int column = 0; column < DaysInWeek; ++column) {
        auto* head = new QuietLabel(QString::fromLatin1(weekdays[column]), this);
        head->setAlignment(Qt::AlignCenter);
        content->addWidget(head, 0, column);
        content->setColumnStretch(column, 1);
    }
    for (int index = 0; index < GridDayCount; ++index) {
        auto* label = new DayLabel(this, index);
        label->setObjectName(labelName + QString::number(index));
        label->hide();
        m_labels[index] = label;
        content->addWidget(label, 1 + index / DaysInWeek, index % DaysInWeek);
        content->setRowStretch(1 + index / DaysInWeek, 1);
    }
    setCurrent(0);
}

void MonthView::setCurrent(int index) {
    m_labels[m_current]->setFocusPolicy(Qt::ClickFocus);
    m_current = index;
    m_labels[m_current]->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_labels[m_current]);
}

/// The day that had the focus, else the chosen one, else the last.
int MonthView::currentIn(const MonthGrid& grid) const {
    const QString former = m_grid.days[m_current].caption;
    int last = m_current;
    int marked = -1;
    for (int index = 0; index < GridDayCount; ++index) {
        const GridDay& day = grid.days[index];
        if (!day.visible)
            continue;
        if (day.caption == former)
            return index;
        if (day.isMarked)
            marked = index;
        last = index;
    }
    return former.isEmpty() && marked >= 0 ? marked : last;
}

void MonthView::setGrid(const MonthGrid& grid) {
    const bool focused = m_labels[m_current]->hasFocus();
    const int current = currentIn(grid);
    m_grid = grid;
    for (int index = 0; index < GridDayCount; ++index) {
        m_labels[index]->setDay(grid.days[index]);
        if (grid.days[index].visible)
            m_labels[index]->show();
    }
    setCurrent(current);
    if (focused) // before it is hidden under the focus
        m_labels[current]->setFocus();
    for (int index = 0; index < GridDayCount; ++index)
        if (!grid.days[index].visible)
            m_labels[index]->hide();
}

/// The visible day a step away, else the index itself.
int MonthView::nearestDay(int index, int step) const {
    const int wanted = index + step;
    const bool there = wanted >= 0 && wanted < GridDayCount && m_grid.days[wanted].visible;
    return there ? wanted : index;
}

bool MonthView::takesKey(int index, int key) {
    struct Step {
        Qt::Key key;
        int days;
    };
    static constexpr Step steps[] = {{Qt::Key_Left, -1},
                                     {Qt::Key_Right, 1},
                                     {Qt::Key_Up, -DaysInWeek},
                                     {Qt::Key_Down, DaysInWeek}};
    for (const Step& step : steps)
        if (key == step.key) {
            m_labels[nearestDay(index, step.days)]->setFocus();
            return true;
        }
    if (key == Qt::Key_PageUp || key == Qt::Key_PageDown)
        emit monthStepWanted(key == Qt::Key_PageDown ? 1 : -1);
    else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        emit dayClicked(index);
    else
        return false;
    return true;
}

} // namespace kelvrane
