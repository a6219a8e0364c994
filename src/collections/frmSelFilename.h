// The dialog that names the sheet to be filed, on screen.
#pragma once

#include <QDialog>

class QLineEdit;

namespace kelvrane {

class frmSelFilename : public QDialog {
    Q_OBJECT
  public:
    explicit frmSelFilename(QWidget* parent = nullptr);

    /// Esc and the close box: nothing is filed.
    void reject() override;

  private:
    void arrange();

    QLineEdit* txtFileName;
};

} // namespace kelvrane
