// The marks of checks and choices. Drawn by the program: the system's vanish on the dark paper of a
// panel.
#pragma once

#include <QPalette>
#include <QRectF>

class QPainter;

namespace kelvrane {

inline constexpr int MarkSide = 16; ///< logical pixels

enum class MarkShape { Box, Dot };

struct MarkState {
    MarkShape shape;
    bool ticked;
    bool enabled;
    bool lit; ///< the pointer is on it
};

void PaintMark(QPainter& painter, const QRect& place, const MarkState& state,
               const QPalette& palette);

} // namespace kelvrane
