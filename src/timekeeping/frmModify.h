// The modify screen: a small window over Modify().
#pragma once

#include <QWidget>

class QPushButton;

namespace kelvrane {

class KeyedPanel;

class frmModify : public QWidget {
    Q_OBJECT
  public:
    explicit frmModify(QWidget* parent = nullptr);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void arrange();

    KeyedPanel* SmuiModify;
    QPushButton* cmdUpdate;
    QPushButton* cmdCancel;
};

} // namespace kelvrane
