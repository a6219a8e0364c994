// A sheet to read: its cells on white paper, scrolled by mouse and keys. What it shows is what
// prints.
#pragma once

#include "worksheet/sheet_contents.h"

#include <QAbstractScrollArea>

namespace kelvrane {

class SheetView : public QAbstractScrollArea {
    Q_OBJECT
  public:
    explicit SheetView(QWidget* parent = nullptr);

    const SheetContents& contents() const { return m_contents; }
    /// Scrolls to its top.
    void setContents(const SheetContents& contents);

  signals:
    void menuWanted(const QPoint& globalPosition);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    QRect paperRect() const; ///< in the viewport
    void layOut();

    SheetContents m_contents;
    CellRange m_shown;
    QSize m_sheet; ///< CSS pixels
};

} // namespace kelvrane
