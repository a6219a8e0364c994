// The control screen's status bar: heading, date, time.
#pragma once

#include <QWidget>

class QLabel;

namespace kelvrane {

class IntervalTimer;

class ControlStatusBar : public QWidget {
    Q_OBJECT
  public:
    explicit ControlStatusBar(QWidget* parent = nullptr);

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void showHeading();
    void showNow();

    QLabel* m_heading;
    QLabel* m_date;
    QLabel* m_time;
    IntervalTimer* m_minute; ///< fires on the minute, and only while the bar shows
};

} // namespace kelvrane
