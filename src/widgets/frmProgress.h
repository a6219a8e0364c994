// The progress of long work: a caption line and a bar.
#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace kelvrane {

class frmProgress : public QWidget {
    Q_OBJECT
  public:
    explicit frmProgress(QWidget* parent = nullptr);

    void setCaption(const QString& caption);
    void setPercent(int percent); ///< 0 to 100

  private:
    QLabel* m_caption;
    QProgressBar* m_bar;
};

} // namespace kelvrane
