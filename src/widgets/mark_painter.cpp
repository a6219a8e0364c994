#include "widgets/mark_painter.h"

#include "widgets/theme.h"

#include <QPainter>
#include <QPolygonF>

namespace kelvrane {

void PaintMark(QPainter& painter, const QRect& place, const MarkState& state,
               const QPalette& palette) {
    const auto group = state.enabled ? QPalette::Active : QPalette::Disabled;
    QColor edge = state.enabled ? theme::SecondaryText(palette)
                                : palette.color(QPalette::Disabled, QPalette::Text);
    QColor fill = palette.color(QPalette::Base);
    if (state.ticked) {
        fill = state.enabled ? palette.color(QPalette::Highlight) : edge;
        edge = fill;
    }
    if (state.lit && !state.ticked)
        edge = palette.color(QPalette::Highlight);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(place).adjusted(0.75, 0.75, -0.75, -0.75);
    painter.setPen(QPen(edge, 1.25));
    painter.setBrush(fill);
    if (state.shape == MarkShape::Box)
        painter.drawRoundedRect(frame, 3.5, 3.5);
    else
        painter.drawEllipse(frame);
    if (state.ticked) {
        const QColor ink = state.enabled ? palette.color(group, QPalette::HighlightedText)
                                         : palette.color(QPalette::Base);
        const QPointF center = frame.center();
        if (state.shape == MarkShape::Box) {
            painter.setPen(QPen(ink, 1.75, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawPolyline(QPolygonF{center + QPointF(-3.4, 0.2), center + QPointF(-1, 2.6),
                                           center + QPointF(3.6, -2.4)});
        } else {
            painter.setPen(Qt::NoPen);
            painter.setBrush(ink);
            painter.drawEllipse(center, 2.8, 2.8);
        }
    }
    painter.restore();
}

} // namespace kelvrane
