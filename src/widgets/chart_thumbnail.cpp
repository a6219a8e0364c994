#include "widgets/chart_thumbnail.h"

#include "chartspace/form.h"
#include "chartspace/scene.h"

#include <QFont>
#include <QPainter>
#include <QScopeGuard>

namespace kelvrane {

using namespace chartspace;

namespace {

constexpr QSizeF drawnSize(220, 160); // large enough for the renderer to give the plot its room

Chart sample(ChartType type) {
    Chart chart;
    chart.type = type;
    chart.legend = false;
    chart.view = {.rotation = 25,
                  .inclination = 20,
                  .perspective = 20,
                  .lightRotation = 315,
                  .lightInclination = 45};
    chart.series = {{QStringLiteral("Work"), {4, 2.5, 5}}, {QStringLiteral("Break"), {1.5, 1, 2}}};
    for (int category = 0; category < 3; ++category)
        chart.categories.append(QString(category + 1, QLatin1Char(' ')));
    return chart;
}

} // namespace

QPixmap ChartThumbnail(ChartType type, const QSize& size, double pixelRatio,
                       const QPalette& palette) {
    // The samples' hues are theirs alone: the projects of the run keep their own.
    const ProjectHues kept = projectHues;
    const auto restore = qScopeGuard([&] { projectHues = kept; });
    projectHues.reset();
    const Scene scene(sample(type), drawnSize, ThemeOf(palette), QFont());
    QRectF drawn;
    for (const Mark& mark : scene.marks())
        if (mark.series >= 0)
            drawn |= mark.outline.boundingRect();

    QPixmap picture(size * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    picture.fill(Qt::transparent);
    if (drawn.isEmpty())
        return picture;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF into = QRectF(QPointF(), size).adjusted(1, 1, -1, -1);
    const double scale = qMin(into.width() / drawn.width(), into.height() / drawn.height());
    painter.translate(into.center());
    painter.scale(scale, scale);
    painter.translate(-drawn.center());
    for (const Mark& mark : scene.marks()) {
        if (mark.series < 0)
            continue;
        painter.setPen(mark.pen);
        painter.setBrush(mark.fill);
        painter.drawPolygon(mark.outline);
    }
    return picture;
}

} // namespace kelvrane
