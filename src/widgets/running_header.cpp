#include "widgets/running_header.h"

#include "widgets/theme.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace kelvrane {

namespace {
constexpr int markSize = 30;
constexpr double largeness = 1.5;
} // namespace

RunningHeader::RunningHeader(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setObjectName(QStringLiteral("runningHeader"));
}

void RunningHeader::setSummary(const RunningSummary& summary) {
    if (m_summary == summary && !accessibleName().isEmpty())
        return;
    m_summary = summary;
    setAccessibleName(projectLine() + QStringLiteral(", ") + summary.total + QStringLiteral(", ") +
                      sinceLine() + QStringLiteral(", today ") + summary.today);
    updateGeometry();
    update();
}

QFont RunningHeader::largeFont() const {
    QFont large = theme::TabularFont(font());
    large.setPointSizeF(font().pointSizeF() * largeness);
    large.setWeight(QFont::DemiBold);
    return large;
}

QString RunningHeader::projectLine() const {
    return m_summary.state == DayState::Stopped ? QStringLiteral("No project is running")
                                                : m_summary.project;
}

QString RunningHeader::sinceLine() const {
    if (m_summary.state == DayState::Stopped)
        return m_summary.word + QStringLiteral(" \u00b7 choose one in \u201cProject Name\u201d");
    return m_summary.word + QStringLiteral(" \u00b7 since ") + m_summary.since;
}

QSize RunningHeader::sizeHint() const {
    const int text = QFontMetrics(largeFont()).height() + fontMetrics().height();
    return {360, std::max(text, markSize) + 2 * theme::Step};
}

QSize RunningHeader::minimumSizeHint() const {
    return {180, sizeHint().height()};
}

/// A disc in the state's colour with its sign: a triangle, two bars, a square.
void RunningHeader::drawMark(QPainter& painter, const QRectF& place) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::StateColor(m_summary.state, palette()));
    painter.drawEllipse(place);
    painter.setBrush(Qt::white);
    const QPointF middle = place.center();
    const double unit = place.width() / 12;
    if (m_summary.state == DayState::Running)
        painter.drawPolygon(
            QPolygonF({middle + QPointF(-1.7, -2.7) * unit, middle + QPointF(2.9, 0) * unit,
                       middle + QPointF(-1.7, 2.7) * unit}));
    else if (m_summary.state == DayState::OnBreak)
        for (const double x : {-2.2, 0.6})
            painter.drawRect(QRectF(middle + QPointF(x, -2.6) * unit, QSizeF(1.6, 5.2) * unit));
    else
        painter.drawRect(QRectF(middle + QPointF(-2.2, -2.2) * unit, QSizeF(4.4, 4.4) * unit));
}

void RunningHeader::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect inner = rect().adjusted(0, theme::Step, 0, -theme::Step);
    drawMark(painter,
             QRectF(inner.left(), inner.center().y() - markSize / 2.0, markSize, markSize));

    const QFontMetrics large(largeFont());
    const QFontMetrics small(font());
    QRect first = inner;
    first.setLeft(inner.left() + markSize + theme::Margin);
    first.setHeight(large.height());
    QRect second = first;
    second.moveTop(first.bottom() + 1);
    second.setHeight(small.height());

    const auto drawLine = [&](const QRect& line, const QFontMetrics& metrics, const QString& left,
                              const QString& right, const QColor& leftColor) {
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, right);
        const int room = line.width() - metrics.horizontalAdvance(right) - theme::Margin;
        painter.setPen(leftColor);
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(left, Qt::ElideMiddle, room));
    };
    const bool stopped = m_summary.state == DayState::Stopped;
    const QColor quiet = theme::SecondaryText(palette());
    painter.setFont(largeFont());
    drawLine(first, large, projectLine(), stopped ? m_summary.today : m_summary.total,
             stopped ? quiet : palette().color(QPalette::WindowText));
    painter.setFont(theme::TabularFont(font()));
    drawLine(second, small, sinceLine(),
             stopped ? QStringLiteral("today") : QStringLiteral("today ") + m_summary.today, quiet);
}

bool RunningHeader::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        // The name may be elided; the tip has all of it, as plain text whatever is in it.
        const QString tip = m_summary.project.isEmpty()
                                ? QString()
                                : QStringLiteral("<qt>") + m_summary.project.toHtmlEscaped();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
        return true;
    }
    return QWidget::event(event);
}

} // namespace kelvrane
