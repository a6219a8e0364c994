#include "widgets/capture.h"

#include <QPixmap>
#include <QWidget>

namespace kelvrane {

QImage CaptureWindow(QWidget& window, const QRect& part) {
    const QRect inside = part & window.rect();
    return inside.isEmpty() ? QImage() : window.grab(inside).toImage();
}

QImage CaptureClient(QWidget& form) {
    return CaptureWindow(form, form.rect());
}

} // namespace kelvrane
