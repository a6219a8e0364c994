// Shows a chart in a window. It is laid out anew only when the chart, the size, the font or the
// palette is another one; a refresh with an equal chart costs nothing.
//
//     view->setTipFormatter(&ReformatChartValueText);
//     view->setChart(chart);
#pragma once

#include "chartspace/scene.h"

#include <QPixmap>
#include <QWidget>

#include <functional>

namespace kelvrane {

class ChartView : public QWidget {
    Q_OBJECT
  public:
    explicit ChartView(QWidget* parent = nullptr);

    const chartspace::Chart& chart() const { return m_chart; }
    void setChart(const chartspace::Chart& chart);
    /// The same data as another type.
    void setType(chartspace::ChartType type);
    void setLegend(bool shown);
    /// Empty: no title.
    void setTitle(const QString& title);
    void setView3D(const chartspace::View3D& view);

    /// Turns the text of a value into its tip; an empty result is no tip. Without a formatter the
    /// text itself is the tip.
    void setTipFormatter(std::function<QString(const QString&)> formatter);
    /// The tip at a position of the widget; empty: none.
    QString tipAt(const QPoint& position) const;

    /// How often the chart was laid out so far.
    int layoutCount() const { return m_layouts; }

    QSize sizeHint() const override { return {480, 300}; }
    QSize minimumSizeHint() const override { return {120, 80}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void refresh();
    const chartspace::Scene& scene() const;

    chartspace::Chart m_chart;
    std::function<QString(const QString&)> m_formatter;
    // Built when first asked for after a change.
    mutable chartspace::Scene m_scene;
    mutable QSize m_sceneSize;
    mutable int m_layouts = 0;
    QPixmap m_picture;
};

} // namespace kelvrane
