// A chart turned into shapes and labels for one size, ready to be painted any number of times and
// to be asked what lies under the pointer.
//
//     Scene scene(chart, QSizeF(480, 300), ThemeOf(palette()), font());
//     scene.paint(painter);
//     if (auto hit = scene.hitTest(position)) tip = hit->text;
//
// Coordinates are logical pixels from the top left corner.
#pragma once

#include "chartspace/chart.h"
#include "chartspace/palette.h"

#include <QBrush>
#include <QFont>
#include <QList>
#include <QPen>
#include <QPolygonF>

#include <optional>

class QPainter;

namespace kelvrane::chartspace {

/// A painted piece. Later marks lie over earlier ones.
struct Mark {
    QPolygonF outline;
    QBrush fill; ///< none: the outline is an open line
    QPen pen = Qt::NoPen;
    int series = -1; ///< both 0-based; -1: stands for no value
    int category = -1;
};

enum class LabelRole { Title, Empty, Category, Value, Series, Legend, Share };

struct Label {
    QString text;
    QPointF pivot;
    QRectF box;       ///< from the pivot, before turning
    double angle = 0; ///< degrees clockwise around the pivot
    QFont font;
    QColor color;
    Qt::Alignment alignment = Qt::AlignCenter;
    LabelRole role = LabelRole::Category;

    /// The corners of the text's room on the picture.
    QPolygonF outline() const;
};

struct Hit {
    int series;
    int category;
    QString text; ///< "Work, Alpha Value: 1.5", of a pie "Alpha Value: 1.5 (25%)"
};

class Scene {
  public:
    Scene() = default;
    Scene(const Chart& chart, const QSizeF& size, const ChartTheme& theme, const QFont& font);

    void paint(QPainter& painter) const;
    /// The value whose mark is topmost at the point.
    std::optional<Hit> hitTest(const QPointF& point) const;

    const QList<Mark>& marks() const { return m_marks; }
    const QList<Label>& labels() const { return m_labels; }
    /// Where the values are shown, without axes and legend; empty when there is nothing to show.
    const QRectF& plot() const { return m_plot; }

  private:
    QString tipText(int series, int category) const;

    Chart m_chart;
    QSizeF m_size;
    QColor m_background;
    QList<Mark> m_marks;
    QList<Label> m_labels;
    QRectF m_plot;
};

/// Builds and paints in one go, for paper: the chart is laid out at 96 dots an inch and scaled to
/// the device.
void PaintChart(QPainter& painter, const QRectF& target, const Chart& chart,
                const ChartTheme& theme, const QFont& font);

} // namespace kelvrane::chartspace
