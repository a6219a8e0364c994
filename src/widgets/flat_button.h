// A button without a frame: icon, word, a wash under the pointer, a ring with the focus.
#pragma once

#include <QToolButton>

namespace kelvrane {

class FlatButton : public QToolButton {
    Q_OBJECT
  public:
    explicit FlatButton(QWidget* parent = nullptr);

    /// The word shown, without mnemonics. It is also the accessible name.
    void setCaption(const QString& caption);
    QString caption() const { return m_caption; }
    void setWordShown(bool shown);
    /// Side on which icon and word stand; the middle unless set.
    void setContentAlignment(Qt::Alignment alignment);
    /// The tool tip; while the word isn't shown, the word comes first.
    void setHint(const QString& hint);

    /// Shows the small arrow of a button with a menu, where the click opens something else.
    void setOpensList(bool opens);

    int widthWith(bool word) const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void updateToolTip();
    bool hasArrow() const { return menu() || m_opensList; }

    QString m_caption;
    QString m_hint;
    Qt::Alignment m_alignment = Qt::AlignHCenter;
    bool m_wordShown = true;
    bool m_opensList = false;
};

} // namespace kelvrane
