// The start-up trace on screen. A click on the list copies it for support, newest line first.
#pragma once

#include <QWidget>

class QListWidget;

namespace kelvrane {

class frmDebugWindow : public QWidget {
    Q_OBJECT
  public:
    explicit frmDebugWindow(QWidget* parent = nullptr);

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void append(const QString& line);

    QListWidget* List1;
};

} // namespace kelvrane
