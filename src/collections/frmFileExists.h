// The clash dialog on screen: what to do with a sheet whose name the collection has, and its new
// name. Closing it in any way is "Skip".
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace kelvrane {

class frmFileExists : public QDialog {
    Q_OBJECT
  public:
    explicit frmFileExists(QWidget* parent = nullptr);

    /// Esc: back from the new name, else "Skip".
    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QWidget* createMain();
    QWidget* createRename();
    void refresh();
    void showFrame();
    void fitHeight();

    QWidget* FraMain;
    QWidget* fraRename;
    QLabel* Label1;
    QLineEdit* txtFileName;
};

} // namespace kelvrane
