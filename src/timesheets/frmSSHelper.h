// The dialog that adds or changes a database of the list: its alias and its file.
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace kelvrane {

class frmSSHelper : public QDialog {
    Q_OBJECT
  public:
    explicit frmSSHelper(QWidget* parent = nullptr);

    /// Esc and the close box are the Cancel button.
    void reject() override;

  private:
    QLineEdit* addField(const QString& key);
    QLabel* labelOf(QLineEdit* field);
    void arrange();

    QLineEdit* txtAlias;
    QLineEdit* txtDBLocation;
};

} // namespace kelvrane
