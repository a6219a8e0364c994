// How the program looks: grid, colours, fonts and icons. Everything comes from the system palette
// but the colours of states and of data.
#pragma once

#include "platform/keyed_items.h"
#include "platform/ports.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QPixmap>

namespace kelvrane::theme {

// Logical pixels.
inline constexpr int Step = 6;       ///< between related controls
inline constexpr int Margin = 12;    ///< around the content of a window
inline constexpr int Gap = 18;       ///< between groups
inline constexpr int RowHeight = 26; ///< of a row in a panel
inline constexpr int Radius = 4;     ///< of a lit row, a button, a field

/// Green running, amber on break, grey stopped. For marks and fills; a word or shape goes with it.
QColor StateColor(DayState state, const QPalette& palette);
/// Blue for values, red for inactive ones, as text: 4.5 to 1 on the palette's backgrounds.
QColor ValueColor(TextRole role, const QPalette& palette);
/// Captions and hints: quieter than text, still 4.5 to 1.
QColor SecondaryText(const QPalette& palette);
QColor Hairline(const QPalette& palette);
/// A wash of the text colour behind what the pointer is on (strength 0 to 1).
QColor Wash(const QPalette& palette, double strength = 0.06);
/// The nearest shade of ink that has the contrast on paper.
QColor ReadableOn(const QColor& ink, const QColor& paper, double contrast = 4.5);
/// Contrast of two opaque colours, 1 to 21.
double Contrast(const QColor& first, const QColor& second);
bool IsDark(const QPalette& palette);

/// Icon of the program by its name, in any case; tinted with the palette's text colour whenever it
/// is painted, so it follows a change between light and dark. A null icon for an empty or unknown
/// name.
QIcon Icon(const QString& name);
/// The same in one colour. Size in logical pixels.
QPixmap IconPixmap(const QString& name, int size, const QColor& color, double devicePixelRatio = 1);
/// The clock of the tray with the state's mark, in its own colours.
QIcon TrayStateIcon(DayState state);
/// The program's icon, in its own colours.
QIcon AppIcon();

/// The font with figures of one width.
QFont TabularFont(const QFont& font);

// 15 twips a logical pixel.
int FromTwips(double twips);
double ToTwips(int pixels);

} // namespace kelvrane::theme
