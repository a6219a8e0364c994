// Pictures of the program's own windows, as they are on the screen: at its pixel ratio, without the
// desktop's frame, and whatever lies over them.
#pragma once

#include <QImage>
#include <QRect>

class QWidget;

namespace kelvrane {

/// A part of the window in its own logical pixels; what lies outside the window is left out. Null
/// for an empty part.
QImage CaptureWindow(QWidget& window, const QRect& part);
/// The whole client area.
QImage CaptureClient(QWidget& form);

} // namespace kelvrane
