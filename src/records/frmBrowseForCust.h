// The customer browser on screen: a modal window over the one CustomerBrowser.
#pragma once

#include <QDialog>

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace kelvrane {

class KeyedPanel;
struct KeyedItem;

class frmBrowseForCust : public QDialog {
    Q_OBJECT
  public:
    explicit frmBrowseForCust(QWidget* parent = nullptr);

    /// Esc and the close box: the record panel stays as it is.
    void reject() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* createBarItem(const KeyedItem& item);
    void arrange();
    void bind();
    void showRecordNumber();

    KeyedPanel* smuiCustInfo;
    QWidget* SmartStatusBar;
    QLabel* RECORDNUM = nullptr;
    QLineEdit* FINDWHAT = nullptr;
};

} // namespace kelvrane
