// One hint about the program, on screen.
#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;

namespace kelvrane {

class frmTip : public QDialog {
    Q_OBJECT
  public:
    /// Unloads itself at once where the user doesn't want tips.
    explicit frmTip(QWidget* parent = nullptr);

    void reject() override;

  private:
    void arrange();
    void refresh();

    QLabel* lblTipText = nullptr;
    QCheckBox* chkLoadTipsAtStartup = nullptr;
};

} // namespace kelvrane
