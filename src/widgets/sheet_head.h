// The names beside a sheet: a strip of column letters or row numbers. A click selects, a drag on an
// edge sizes, a double click on an edge fits.
#pragma once

#include "worksheet/sheet_session.h"

#include <QWidget>

namespace kelvrane {

class SheetHead : public QWidget {
    Q_OBJECT
  public:
    /// Horizontal: columns. The session outlives it.
    SheetHead(Qt::Orientation orientation, SheetSession* session, QWidget* parent = nullptr);

    /// How far the sheet is scrolled. Pixels.
    void setOffset(int offset);
    /// Room for the widest name.
    int breadth() const;

  signals:
    void pressed();
    /// Where the edge that is dragged would come to lie, in pixels of this widget; -1: no longer.
    void sizing(int edge);
    void menuWanted(const QPoint& globalPosition);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    bool isColumns() const { return m_orientation == Qt::Horizontal; }
    int along(const QPoint& point) const { return isColumns() ? point.x() : point.y(); }
    int count() const;
    int edge(int section) const; ///< its near edge, pixels of this widget
    int sectionAt(int position) const;
    int sizedAt(int position) const; ///< whose far edge is there; -1: none
    bool isSelected(int section, bool wholly) const;
    void select(int first, int last);
    CellRange sizedRange(int section) const;

    Qt::Orientation m_orientation;
    SheetSession* m_session;
    int m_offset = 0;
    int m_sized = -1;   ///< section whose edge is dragged
    int m_grip = 0;     ///< from the pointer to that edge
    int m_pressed = -1; ///< section where a selection by drag began
};

} // namespace kelvrane
