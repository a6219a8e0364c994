// The bar that looks for a text in what is above it: a field, back and forth, and whether there is
// any such place. Enter and F3 go on, with Shift back; Esc closes it.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace kelvrane {

class FindBar : public QWidget {
    Q_OBJECT
  public:
    explicit FindBar(QWidget* parent = nullptr);

    /// Shows the bar with its text selected, ready to be typed over.
    void open();
    /// Hides the bar.
    void shut();
    /// The next place; opens the bar while there is nothing to look for.
    void step(bool backward);
    /// Says whether the last search went in vain.
    void setFound(bool found);

  signals:
    /// typing: the text changed, so the present place may serve.
    void wanted(const QString& text, bool backward, bool typing);
    void closed();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* addButton(const char* name, const char* icon, const QString& caption);

    QLineEdit* m_text;
    QLabel* m_answer;
};

} // namespace kelvrane
