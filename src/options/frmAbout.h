// The version of the program and the maker's web address, on screen.
#pragma once

#include <QDialog>

namespace kelvrane {

class frmAbout : public QDialog {
    Q_OBJECT
  public:
    explicit frmAbout(QWidget* parent = nullptr);

    /// Esc and the close box are the OK button.
    void reject() override;
};

} // namespace kelvrane
