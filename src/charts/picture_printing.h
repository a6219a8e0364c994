// A picture on paper, as large as the page allows.
//
//     PrintPictureToFitPage(printer, picture);
#pragma once

#include <QImage>
#include <QPageLayout>
#include <QSizeF>

class QPagedPaintDevice;

namespace kelvrane {

/// Landscape for a picture that is wider than high; a square one stands in portrait.
QPageLayout::Orientation OrientationFor(const QSizeF& picture);
/// The largest size with the picture's proportions that fits into the page, in the page's unit.
/// Empty when either is.
QSizeF FitToPage(const QSizeF& picture, const QSizeF& page);

/// Turns the page as the picture wants it and paints the picture at the top left corner of the
/// printable part. The device gets its former orientation back afterwards. Raises BadArgument for
/// an empty picture, DeviceError when the device can't be painted on.
void PrintPictureToFitPage(QPagedPaintDevice& printer, const QImage& picture);

} // namespace kelvrane
