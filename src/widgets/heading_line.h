// The quiet heading of a panel: one line of semibold text over a hairline, elided when narrow.
#pragma once

#include <QWidget>

namespace kelvrane {

class HeadingLine : public QWidget {
    Q_OBJECT
  public:
    explicit HeadingLine(const QString& text, QWidget* parent = nullptr);

    QString text() const { return m_text; }
    /// Hides itself for an empty text.
    void setText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QFont headingFont() const;

    QString m_text;
};

} // namespace kelvrane
