#include "widgets/card.h"

#include "widgets/theme.h"

#include <QPainter>

namespace kelvrane {

void Card::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(rect(), theme::Step, theme::Step);
}

} // namespace kelvrane
