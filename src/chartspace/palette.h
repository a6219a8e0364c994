// Colours of charts: two fixed ones for work and break, twelve hues for projects, and the quiet
// colours of text, grid and walls, which follow the desktop's palette.
#pragma once

#include <QColor>
#include <QHash>
#include <QPalette>
#include <QString>

namespace kelvrane::chartspace {

inline constexpr QRgb workBlue = 0xff3b78d8;
inline constexpr QRgb breakAmber = 0xffe8a33d;
inline constexpr int hueCount = 12;

/// "Work" and "Break" by name, else by the 0-based index: blue, amber, then the hues.
QColor SeriesColor(const QString& name, int index);

/// One of the hues; counted on beyond the twelfth, it comes again lighter, then darker.
QColor HueAt(int index);

/// Remembers which project has which hue, so that it is the same in every chart.
class ProjectHues {
  public:
    /// A name that is new takes the next hue.
    QColor colorOf(const QString& project);
    void reset() { m_places.clear(); }

  private:
    QHash<QString, int> m_places;
};

/// The hues of this run.
inline ProjectHues projectHues;

/// share 0 gives a, 1 gives b.
QColor Mixed(const QColor& a, const QColor& b, double share);
/// Contrast of two colours, 1 to 21, as accessibility rules count it.
double Contrast(const QColor& a, const QColor& b);
/// Black or white, whichever reads better on the colour.
QColor InkOn(const QColor& ground);

struct ChartTheme {
    QColor background;
    QColor text;
    QColor mutedText; ///< axis labels; at least 4.5 to 1 on the background
    QColor grid;
    QColor baseLine;
    QColor wall;  ///< back and side of a solid chart
    QColor floor; ///< its ground

    bool operator==(const ChartTheme&) const = default;
};

ChartTheme ThemeOf(const QPalette& palette);
/// Dark on white.
ChartTheme PaperTheme();

} // namespace kelvrane::chartspace
