// A field for a date: "+" and "-" go to the next and the former day, a whole date is taken with
// Enter or when the field is left. The field decides nothing: it shows what it is told to.
#pragma once

#include <QLineEdit>

namespace kelvrane {

class DateField : public QLineEdit {
    Q_OBJECT
  public:
    explicit DateField(QWidget* parent = nullptr);

    /// What stands there; whatever is being typed goes.
    void setDateText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  signals:
    void stepped(int direction); ///< 1 or -1
    void typed(const QString& text);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void takeTyped();

    QString m_shown;
};

} // namespace kelvrane
