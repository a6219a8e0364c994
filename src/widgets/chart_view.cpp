#include "widgets/chart_view.h"

#include "widgets/theme.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <utility>

namespace kelvrane {

using namespace chartspace;

namespace {

/// The numbers in words, for those who can't see the picture.
QString Spoken(const Chart& chart) {
    if (chart.categories.isEmpty() || chart.series.isEmpty())
        return chart.emptyText;
    constexpr qsizetype most = 30;
    QStringList parts;
    for (qsizetype i = 0; i < std::min(chart.categories.size(), most); ++i) {
        QStringList values;
        for (const Series& series : chart.series)
            if (i < series.values.size())
                values.append(series.name + QStringLiteral(" ") +
                              QString::number(series.values[i], 'g', 4));
        parts.append(chart.categories[i] + QStringLiteral(": ") +
                     values.join(QStringLiteral(", ")));
    }
    return parts.join(QStringLiteral("; "));
}

} // namespace

ChartView::ChartView(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Chart"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartView::setChart(const Chart& chart) {
    if (chart == m_chart)
        return;
    m_chart = chart;
    setAccessibleDescription(Spoken(m_chart));
    refresh();
}

void ChartView::setType(ChartType type) {
    Chart changed = m_chart;
    changed.type = type;
    setChart(changed);
}

void ChartView::setLegend(bool shown) {
    Chart changed = m_chart;
    changed.legend = shown;
    setChart(changed);
}

void ChartView::setTitle(const QString& title) {
    Chart changed = m_chart;
    changed.title = title;
    setChart(changed);
}

void ChartView::setView3D(const View3D& view) {
    Chart changed = m_chart;
    changed.view = view;
    setChart(changed);
}

void ChartView::setTipFormatter(std::function<QString(const QString&)> formatter) {
    m_formatter = std::move(formatter);
}

QString ChartView::tipAt(const QPoint& position) const {
    const auto hit = scene().hitTest(position);
    if (!hit)
        return {};
    return m_formatter ? m_formatter(hit->text) : hit->text;
}

void ChartView::refresh() {
    m_sceneSize = QSize();
    m_picture = QPixmap();
    update();
}

const Scene& ChartView::scene() const {
    if (m_sceneSize != size()) {
        m_scene = Scene(m_chart, size(), ThemeOf(palette()), font());
        m_sceneSize = size();
        ++m_layouts;
    }
    return m_scene;
}

void ChartView::paintEvent(QPaintEvent*) {
    const QSize pixels = size() * devicePixelRatioF();
    if (m_picture.size() != pixels || m_sceneSize != size()) {
        m_picture = QPixmap(pixels);
        m_picture.setDevicePixelRatio(devicePixelRatioF());
        QPainter painter(&m_picture);
        scene().paint(painter);
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), theme::Radius,
                                theme::Radius);
    }
}

void ChartView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
        event->type() == QEvent::StyleChange)
        refresh();
    QWidget::changeEvent(event);
}

bool ChartView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString tip = tipAt(help->pos());
    if (tip.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        // Names may hold what looks like markup; around the pointer the tip stays while it is on
        // the same pixel block only, so that it follows from bar to bar.
        QToolTip::showText(help->globalPos(), tip.toHtmlEscaped(), this,
                           QRect(help->pos() - QPoint(2, 2), QSize(5, 5)));
    }
    return true;
}

} // namespace kelvrane
