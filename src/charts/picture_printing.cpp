#include "charts/picture_printing.h"

#include "platform/error.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QScopeGuard>

namespace kelvrane {

QPageLayout::Orientation OrientationFor(const QSizeF& picture) {
    return picture.height() < picture.width() ? QPageLayout::Landscape : QPageLayout::Portrait;
}

QSizeF FitToPage(const QSizeF& picture, const QSizeF& page) {
    if (picture.isEmpty() || page.isEmpty())
        return {};
    const double proportion = picture.width() / picture.height();
    if (proportion >= page.width() / page.height())
        return {page.width(), page.width() / proportion};
    return {page.height() * proportion, page.height()};
}

void PrintPictureToFitPage(QPagedPaintDevice& printer, const QImage& picture) {
    if (picture.isNull())
        Raise(errors::BadArgument);
    // The printer is the program's for the next sheet too.
    const auto former = printer.pageLayout().orientation();
    const auto restore = qScopeGuard([&] { printer.setPageOrientation(former); });
    printer.setPageOrientation(OrientationFor(picture.size()));
    QPainter painter;
    if (!painter.begin(&printer))
        Raise(errors::DeviceError);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    const QSizeF page = printer.pageLayout().paintRectPixels(printer.logicalDpiX()).size();
    painter.drawImage(QRectF(QPointF(), FitToPage(picture.size(), page)), picture);
    if (!painter.end())
        Raise(errors::DeviceError);
}

} // namespace kelvrane
