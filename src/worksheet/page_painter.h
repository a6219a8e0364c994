// Sheets on paper: one painter for the read-only view, print and PDF, so that what is printed is
// what is seen.
//
//     SheetPages pages(contents, device.pageLayout());
//     for (int page = 0; page < pages.count(); ++page) pages.paint(painter, page);
#pragma once

#include "worksheet/cell_painter.h"
#include "worksheet/sheet_contents.h"

#include <QPageLayout>
#include <QRectF>
#include <QString>

class QPagedPaintDevice;
class QPainter;

namespace kelvrane {

/// Left and top edges in CSS pixels from A1.
int ColumnLeft(const SheetContents& contents, int column);
int RowTop(const SheetContents& contents, int row);
QRectF RangeRect(const SheetContents& contents, const CellRange& range);

/// From A1 to the last cell that shows anything: content, fill, border or merge, and as far right
/// as texts run over empty cells. A1 alone for an empty sheet.
CellRange ShownRange(const SheetContents& contents);

class SheetPages {
  public:
    /// All that shows is printed, scaled down (never up) so that all columns fit the width between
    /// the margins; rows break between rows, merged ones stay together where a page holds them. A
    /// row taller than a page goes on on the next.
    SheetPages(const SheetContents& contents, const QPageLayout& layout);

    int count() const { return static_cast<int>(m_bands.size()); } ///< 1 at least
    double scale() const { return m_scale; }                       ///< CSS pixels to points
    /// Page counts from 0; the painter's unit is a point, its corner the paper's.
    void paint(QPainter& painter, int page) const;

  private:
    struct Band { ///< a page's part of the sheet, CSS pixels from its top
        int top;
        int bottom;
    };
    void breakRows(int pageHeight);
    QList<int> breakableEdges() const;

    SheetContents m_contents;
    QRectF m_paper; ///< between the margins, points
    CellRange m_printed;
    double m_scale = 0.75;
    QList<Band> m_bands;
};

/// Prints all pages to a printer or PDF; 0.5 inch margins unless the device has larger ones. Raises
/// DeviceError where the device doesn't take them.
void PrintSheet(const SheetContents& contents, QPagedPaintDevice& device);

} // namespace kelvrane
