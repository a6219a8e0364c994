// The picker of hours and minutes on screen: a modal window over NewTimeControls().
#pragma once

#include <QDialog>

class QComboBox;
class QPushButton;

namespace kelvrane {

class frmSelNewTime : public QDialog {
    Q_OBJECT
  public:
    explicit frmSelNewTime(QWidget* parent = nullptr);

    /// Esc and the close box are the Cancel button.
    void reject() override;

  private:
    QComboBox* addList(const QString& key);
    void arrange();

    QComboBox* cboHours;
    QComboBox* cboMinutes;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
};

} // namespace kelvrane
