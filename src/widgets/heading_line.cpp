#include "widgets/heading_line.h"

#include "widgets/captions.h"
#include "widgets/theme.h"

#include <QPainter>
#include <QResizeEvent>

namespace kelvrane {

HeadingLine::HeadingLine(const QString& text, QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setText(text);
}

void HeadingLine::setText(const QString& text) {
    m_text = ShownCaption(text);
    setAccessibleName(m_text);
    setVisible(!m_text.isEmpty());
    updateGeometry();
    update();
}

QFont HeadingLine::headingFont() const {
    QFont heading = font();
    heading.setWeight(QFont::DemiBold);
    return heading;
}

QSize HeadingLine::sizeHint() const {
    const QFontMetrics metrics(headingFont());
    return {metrics.horizontalAdvance(m_text) + 2 * theme::Margin,
            metrics.height() + 2 * theme::Step + 4};
}

QSize HeadingLine::minimumSizeHint() const {
    return {6 * theme::Margin, sizeHint().height()};
}

void HeadingLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(headingFont());
    painter.setPen(palette().color(QPalette::Text));
    const QRect place = rect().adjusted(theme::Margin, 0, -theme::Margin, -1);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(m_text, Qt::ElideRight, place.width()));
    painter.fillRect(QRect(0, height() - 1, width(), 1), theme::Hairline(palette()));
}

void HeadingLine::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    setToolTip(width() < sizeHint().width() ? PlainToolTip(m_text) : QString());
}

} // namespace kelvrane
