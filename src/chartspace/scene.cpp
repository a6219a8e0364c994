#include "chartspace/scene.h"

#include "chartspace/composition.h"
#include "chartspace/labels.h"

#include <QFontInfo>
#include <QPaintDevice>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace kelvrane::chartspace {

namespace {

QFont InPixels(const QFont& font, double factor) {
    QFont result = font;
    result.setPixelSize(
        std::max(9, static_cast<int>(std::lround(QFontInfo(font).pixelSize() * factor))));
    return result;
}

void Draw(Composition& c) {
    if (c.values.isEmpty()) {
        AddEmptyText(c);
        return;
    }
    AddTitle(c);
    AddLegend(c);
    const bool pie = c.form.family == Family::Pie;
    if (pie)
        c.form.solid ? DrawSolidPie(c) : DrawPie(c);
    else
        c.form.solid ? DrawSolid(c) : DrawFlat(c);
}

} // namespace

Composition::Composition(const Chart& shownChart, const QSizeF& size, const ChartTheme& shownTheme,
                         const QFont& shownFont)
    : chart(shownChart), form(FormOf(shownChart.type)), theme(shownTheme), values(shownChart),
      font(InPixels(shownFont, 0.92)), metrics(font), sheet(QPointF(0, 0), size) {
    const double margin = std::clamp(std::min(size.width(), size.height()) * 0.03, 4.0, 12.0);
    room = sheet.adjusted(margin, margin, -margin, -margin);
}

QColor Composition::seriesColor(int series) const {
    return SeriesColor(chart.series[series].name, series);
}

QColor Composition::categoryColor(int category) const {
    return projectHues.colorOf(chart.categories[category]);
}

QPolygonF Label::outline() const {
    return QTransform().translate(pivot.x(), pivot.y()).rotate(angle).map(QPolygonF(box));
}

Scene::Scene(const Chart& chart, const QSizeF& size, const ChartTheme& theme, const QFont& font)
    : m_chart(chart), m_size(size), m_background(theme.background) {
    if (size.width() < 8 || size.height() < 8)
        return;
    Composition composition(m_chart, size, theme, font);
    Draw(composition);
    m_marks = std::move(composition.marks);
    m_labels = std::move(composition.labels);
    m_plot = composition.plot;
}

void Scene::paint(QPainter& painter) const {
    painter.save();
    painter.fillRect(QRectF(QPointF(0, 0), m_size), m_background);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const Mark& mark : m_marks) {
        painter.setPen(mark.pen);
        painter.setBrush(mark.fill);
        if (mark.fill.style() == Qt::NoBrush)
            painter.drawPolyline(mark.outline);
        else
            painter.drawPolygon(mark.outline);
    }
    for (const Label& label : m_labels) {
        painter.setFont(label.font);
        painter.setPen(label.color);
        const int flags = static_cast<int>(label.alignment) | Qt::TextDontClip;
        if (label.angle == 0) {
            painter.drawText(label.box.translated(label.pivot), flags, label.text);
            continue;
        }
        painter.save();
        painter.translate(label.pivot);
        painter.rotate(label.angle);
        painter.drawText(label.box, flags, label.text);
        painter.restore();
    }
    painter.restore();
}

std::optional<Hit> Scene::hitTest(const QPointF& point) const {
    for (auto mark = m_marks.crbegin(); mark != m_marks.crend(); ++mark) {
        if (mark->series >= 0 && mark->outline.boundingRect().contains(point) &&
            mark->outline.containsPoint(point, Qt::OddEvenFill))
            return Hit{mark->series, mark->category, tipText(mark->series, mark->category)};
    }
    return std::nullopt;
}

QString Scene::tipText(int series, int category) const {
    const Series& shown = m_chart.series[series];
    const double value = shown.values[category];
    const QString text =
        m_chart.categories[category] + QStringLiteral(" Value: ") + QString::number(value, 'g', 15);
    if (FormOf(m_chart.type).family != Family::Pie)
        return shown.name + QStringLiteral(", ") + text;
    const double total = Values(m_chart).seriesTotal(series);
    const long percent = std::lround(value / total * 100);
    return text + QStringLiteral(" (%1%)").arg(percent);
}

void PaintChart(QPainter& painter, const QRectF& target, const Chart& chart,
                const ChartTheme& theme, const QFont& font) {
    const double scale = painter.device()->logicalDpiX() / 96.0;
    QFont screenFont = font;
    if (font.pixelSize() < 0)
        screenFont.setPixelSize(std::max(1, static_cast<int>(font.pointSizeF() * 96 / 72)));
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(scale, scale);
    Scene(chart, target.size() / scale, theme, screenFont).paint(painter);
    painter.restore();
}

} // namespace kelvrane::chartspace
