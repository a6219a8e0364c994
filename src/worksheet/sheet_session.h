// A sheet under the hands of its user: what is selected, how keys move, what is being typed.
// Screens show it and hand keys and clicks to it.
//
//     SheetSession session(&sheet);
//     session.move(Step::JumpDown, Extend::Yes);
//     session.beginEdit(EditMode::Typing, "4");
//     session.commit();
#pragma once

#include "worksheet/sheet_layout.h"
#include "worksheet/spreadsheet.h"

namespace kelvrane {

enum class Step {
    Left,
    Right,
    Up,
    Down,
    JumpLeft, ///< to the end of what is filled, or to the next that is
    JumpRight,
    JumpUp,
    JumpDown,
    RowStart,
    SheetStart,
    SheetEnd, ///< the last cell that holds something
    PageUp,
    PageDown
};
enum class Extend { No, Yes };
enum class EditMode {
    Typing,  ///< began by typing: arrows take the text over and move on
    InPlace, ///< arrows move in the text
};

/// Where Ctrl and an arrow lead to from a cell, within the first rows and columns of a sheet.
CellAddress JumpFrom(const SheetContents& contents, CellAddress from, Step jump, int rows,
                     int columns);

class SheetSession : public QObject {
    Q_OBJECT
  public:
    /// The sheet outlives the session.
    explicit SheetSession(Spreadsheet* sheet, QObject* parent = nullptr);

    Spreadsheet& sheet() const { return *m_sheet; }
    const SheetContents& contents() const { return m_sheet->worksheet().contents(); }

    /// The contents with the heights at which rows are laid out. For the moment: while a copy is
    /// held, each change of a cell copies all of them.
    SheetContents shown() const;

    /// The rows and columns on view: the viewable ones, A to Z at least, and those beyond that hold
    /// something.
    const SheetLayout& layout() const { return m_layout; }
    /// Looks again at the viewable rows, whose change has no signal.
    void refreshLayout();

    /// The cell that is typed into; of merged cells the first.
    CellAddress active() const { return m_active; }
    /// Merged cells are in it as a whole.
    CellRange selected() const;
    /// The corner that extending moves.
    CellAddress corner() const { return m_corner; }

    void select(const CellRange& range);
    void selectRows(int first, int last);
    void selectColumns(int first, int last);
    void selectAll();
    void extendTo(CellAddress corner);
    /// A page has so many rows.
    void move(Step step, Extend extend = Extend::No, int pageRows = 1);
    /// Enter goes down, Tab right, with Shift back: cell by cell around a larger selection, and
    /// Enter after Tabs to below the first of them.
    void advance(Step step);

    bool isEditing() const { return m_editing; }
    EditMode editMode() const { return m_mode; }
    const QString& editText() const { return m_text; }
    int caret() const { return m_caret; }
    void setEditMode(EditMode mode); ///< of the edit that goes on
    void beginEdit(EditMode mode);   ///< with what the cell holds, or goes on with what is typed
    void beginEdit(EditMode mode, const QString& text);
    void setEditText(const QString& text, int caret);
    void commit(); ///< nothing when nothing is being edited
    /// The text goes to every selected cell, a formula shifted.
    void commitToSelection();
    void cancel();
    /// Puts the name of a range where the caret stands, or in the place of the name put there last.
    /// False when no formula is being typed or no name may stand there.
    bool pointAt(const CellRange& range);

  signals:
    void SelectionChanged();
    void LayoutChanged();
    void EditingChanged();  ///< began or ended
    void EditTextChanged(); ///< text or caret, other than by setEditText

  private:
    void layOut();
    void onChanged(const CellRange& range);
    void setSelection(CellAddress active, CellAddress anchor, CellAddress corner);
    CellAddress stepFrom(CellAddress from, Step step, int pageRows) const;
    CellAddress within(CellAddress cell) const;
    void advanceInside(const CellRange& range, Step step);
    void endEdit();

    Spreadsheet* m_sheet;
    SheetLayout m_layout;
    QMap<int, int> m_heights; ///< of rows that aren't of the default height
    int m_viewableRows = 0;
    CellAddress m_active;
    CellAddress m_anchor;
    CellAddress m_corner;
    int m_tabColumn = -1; ///< where a run of Tabs began; -1: none
    bool m_editing = false;
    EditMode m_mode = EditMode::InPlace;
    QString m_text;
    int m_caret = 0;
    int m_pointStart = -1; ///< of the name put in last; -1: none
    int m_pointLength = 0;
};

} // namespace kelvrane
