// What is running, since when, and how much today: the largest text of the control screen.
#pragma once

#include "timekeeping/running_summary.h"

#include <QWidget>

namespace kelvrane {

class RunningHeader : public QWidget {
    Q_OBJECT
  public:
    explicit RunningHeader(QWidget* parent = nullptr);

    void setSummary(const RunningSummary& summary);
    const RunningSummary& summary() const { return m_summary; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    QFont largeFont() const;
    QString projectLine() const;
    QString sinceLine() const;
    void drawMark(QPainter& painter, const QRectF& place) const;

    RunningSummary m_summary;
};

} // namespace kelvrane
