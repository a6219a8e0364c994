// A line in which a cell is typed: over the cell and in the formula bar. Both show what the session
// holds and give it what is typed.
#pragma once

#include "worksheet/sheet_session.h"

#include <QLineEdit>

namespace kelvrane {

class CellLineEdit : public QLineEdit {
    Q_OBJECT
  public:
    /// The session outlives it.
    explicit CellLineEdit(SheetSession* session, QWidget* parent = nullptr);

    /// False: arrows always move in the text.
    void setInCell(bool inCell) { m_inCell = inCell; }
    /// Shows the session's text and caret.
    void showEdit();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool takesKey(const QKeyEvent& event);

    SheetSession* m_session;
    bool m_inCell = false;
};

} // namespace kelvrane
