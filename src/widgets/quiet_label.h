// A line of text in the quieter colour of captions and hints, in light and dark.
#pragma once

#include "widgets/theme.h"

#include <QEvent>
#include <QLabel>

namespace kelvrane {

class QuietLabel final : public QLabel {
  public:
    QuietLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
        setTextFormat(Qt::PlainText);
        tint();
    }

  protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            tint();
    }

  private:
    void tint() {
        QPalette quiet = parentWidget()->palette();
        quiet.setColor(QPalette::WindowText, theme::SecondaryText(quiet));
        setPalette(quiet); // the same palette again tells nobody
    }
};

} // namespace kelvrane
