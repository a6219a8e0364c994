// A rounded sheet of paper behind its content, as the keyed panels have it.
#pragma once

#include <QWidget>

namespace kelvrane {

class Card : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kelvrane
