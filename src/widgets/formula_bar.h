// The line above a sheet: the name of the cell, and what stands in it. A name typed there goes to
// the cell.
#pragma once

#include "worksheet/sheet_session.h"

#include <QWidget>

class QLineEdit;

namespace kelvrane {

class CellLineEdit;
class FlatButton;

class FormulaBar : public QWidget {
    Q_OBJECT
  public:
    /// The session outlives it.
    explicit FormulaBar(SheetSession* session, QWidget* parent = nullptr);

    void goToName(); ///< puts the keys into the name
    CellLineEdit* line() const { return m_line; }

  signals:
    void sheetWanted(); ///< the keys belong to the sheet again

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    FlatButton* addButton(const char* name, const QString& caption, void (SheetSession::*step)());
    void goTo();
    void refresh();

    SheetSession* m_session;
    QLineEdit* m_name;
    FlatButton* m_cancel;
    FlatButton* m_accept;
    CellLineEdit* m_line;
};

} // namespace kelvrane
