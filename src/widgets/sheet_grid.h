// The cells of a sheet session with their heads: shows them, and hands mouse and keys on. The sheet
// is paper, white in dark palettes too.
#pragma once

#include "worksheet/sheet_session.h"

#include <QAbstractScrollArea>

class QToolButton;

namespace kelvrane {

struct SheetAction;
class CellLineEdit;
class SheetHead;

class SheetGrid : public QAbstractScrollArea {
    Q_OBJECT
  public:
    /// The session outlives it.
    explicit SheetGrid(SheetSession* session, QWidget* parent = nullptr);

    /// Where a range lies in the viewport.
    QRect place(const CellRange& range) const;
    void scrollTo(CellAddress cell);

  signals:
    void Clicked();
    void actionWanted(const kelvrane::SheetAction& action);
    void cellMenuWanted(const QPoint& globalPosition);
    void rowMenuWanted(const QPoint& globalPosition);
    void columnMenuWanted(const QPoint& globalPosition);

  protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    SheetHead* addHead(Qt::Orientation orientation);
    QPoint offset() const;
    QRect sheetRect() const; ///< in the viewport
    CellAddress cellAt(const QPoint& position) const;
    int pageRows() const;
    bool selectsMore() const;
    void layOut();
    void showSelection();
    void showEditing();
    void placeEditor();
    void repaintRange(const CellRange& range);
    void describeActive();
    void paintSheet(QPainter& painter, const QRect& exposed);
    void paintSelection(QPainter& painter);
    void takeKey(QKeyEvent* event);
    bool typesText(const QKeyEvent& event);

    SheetSession* m_session;
    SheetHead* m_columns;
    SheetHead* m_rows;
    QToolButton* m_corner;
    CellLineEdit* m_edit;
    QRect m_shownSelection; ///< of the sheet, CSS pixels
    int m_columnEdge = -1;  ///< of a column being sized, in the viewport; -1: none
    int m_rowEdge = -1;
    CellAddress m_pointStart;
    bool m_pointing = false; ///< the drag puts a name into the formula
    bool m_selecting = false;
    bool m_forwarding = false; ///< a key to the line in which the cell is typed
};

} // namespace kelvrane
