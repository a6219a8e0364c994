// Sheets on paper: one painter for the read-only view, print and PDF, so that what is printed is
// what is seen.
//
//     SheetPages pages(contents, PaperOf(device));
//     for (int page = 0; page < pages.count(); ++page) pages.paint(painter, page);
#pragma once

#include "worksheet/sheet_contents.h"

#include <QPageLayout>
#include <QRectF>
#include <QSizeF>
#include <QString>

class QPagedPaintDevice;
class QPainter;

namespace kelvrane {

/// Paints the cells of a range, the range's corner at (0, 0), a CSS pixel a unit: fills, borders,
/// text under its number format, text that runs over empty neighbours, merges, "###" for numbers
/// that have no room. Ink and paper as the sheet says; a sheet is paper in dark palettes too.
void PaintCells(QPainter& painter, const SheetContents& contents, const CellRange& range);

/// Left and top edges in CSS pixels from A1.
int ColumnLeft(const SheetContents& contents, int column);
int RowTop(const SheetContents& contents, int row);
QRectF RangeRect(const SheetContents& contents, const CellRange& range);

class SheetPages {
  public:
    /// Everything filled or styled is printed, scaled down (never up) so that all columns fit the
    /// width between the margins; rows break between rows, merged ones and a row taller than a page
    /// aside. Sizes in points.
    SheetPages(const SheetContents& contents, const QPageLayout& layout);

    int count() const;    ///< 1 at least
    double scale() const; ///< CSS pixels to points
    /// Page counts from 0; the painter's unit is a point, its corner the paper's.
    void paint(QPainter& painter, int page) const;

  private:
    SheetContents m_contents;
    QPageLayout m_layout;
    CellRange m_printed;
    double m_scale = 0.75;
    QList<int> m_firstRows; ///< of each page
};

/// Prints all pages to a printer or PDF; 0.5 inch margins unless the device has larger ones.
void PrintSheet(const SheetContents& contents, QPagedPaintDevice& device);

} // namespace kelvrane
