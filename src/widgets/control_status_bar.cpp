#include "widgets/control_status_bar.h"

#include "frame/status_text.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "widgets/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace kelvrane {

ControlStatusBar::ControlStatusBar(QWidget* parent)
    : QWidget(parent), m_heading(new QLabel(this)), m_date(new QLabel(this)),
      m_time(new QLabel(this)), m_minute(ports.timers->create(this)) {
    setAccessibleName(QStringLiteral("Status"));
    m_heading->setObjectName(QStringLiteral("Panel1"));
    m_date->setObjectName(QStringLiteral("Panel2"));
    m_time->setObjectName(QStringLiteral("Panel3"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(theme::Margin, theme::Step / 2, theme::Margin, theme::Step / 2);
    layout->setSpacing(theme::Gap);
    layout->addWidget(m_heading, 1);
    layout->addWidget(m_date);
    layout->addWidget(m_time);
    for (QLabel* label : {m_heading, m_date, m_time})
        label->setTextFormat(Qt::PlainText);
    for (QLabel* label : {m_date, m_time})
        label->setFont(theme::TabularFont(font()));
    // A long name must not widen the window.
    m_heading->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    connect(m_minute, &IntervalTimer::Timer, this, &ControlStatusBar::showNow);
    connect(&Status(), &StatusText::Changed, this, &ControlStatusBar::showHeading);
    showHeading();
}

void ControlStatusBar::showHeading() {
    m_heading->setText(Status().text());
}

void ControlStatusBar::showNow() {
    constexpr int minute = 60'000;
    const QDateTime now = ports.clock->now();
    m_date->setText(DateText(now.date()));
    m_time->setText(ClockText(now.time()));
    m_minute->setInterval(minute - now.time().msecsSinceStartOfDay() % minute);
    m_minute->setEnabled(true);
}

void ControlStatusBar::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    showNow();
}

void ControlStatusBar::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_minute->setEnabled(false);
}

void ControlStatusBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(theme::Hairline(palette()));
    painter.drawLine(rect().topLeft(), rect().topRight());
}

} // namespace kelvrane
