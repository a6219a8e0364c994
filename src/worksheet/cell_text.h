// The text of a cell, laid out: where its lines break, how wide and high they are, and drawing it.
#pragma once

#include "worksheet/sheet_contents.h"

#include <QFont>
#include <QTextLayout>

#include <memory>

class QPainter;

namespace kelvrane {

/// Room between a cell's edge and its text, left and right, and above and below. CSS pixels.
inline constexpr int CellPadX = 3;
inline constexpr int CellPadY = 1;

/// The font of a family. Where the machine doesn't have it, one of the same widths, else one of
/// those that the program depends on, so that a sheet looks the same on every machine.
QFont SheetFont(const QString& family);

/// Bold, italic and underline included; the size in CSS pixels times the layout's scale.
class CellFonts {
  public:
    explicit CellFonts(const SheetContents& contents) : m_contents(contents) {}
    const QFont& font(const CellStyle& style);

  private:
    const SheetContents& m_contents;
    QHash<QString, QFont> m_fonts;
};

class CellText {
  public:
    /// Breaks at line feeds, and at the width when it isn't negative. Sizes in CSS pixels. A line
    /// is as high as the font asks, whatever fonts its letters come from; a font that the machine
    /// doesn't have asks the same everywhere.
    CellText(const QString& text, const QFont& font, double width);

    double width() const { return m_width; }
    double height() const { return m_height; }
    /// Draws the lines with the painter's pen, each aligned within a room that starts at x.
    void draw(QPainter& painter, double x, double y, double room, HorizontalAlign align);

  private:
    QTextLayout m_layout;
    double m_width = 0;
    double m_height = 0;
};

/// The font size of a cell in points, within bounds.
double ShownPointSize(const SheetContents& contents, const CellStyle& style);
/// Where General puts a cell's value: left, right or centre, by what the cell holds.
HorizontalAlign NaturalAlign(const Cell& cell);
/// Left, right or centre.
HorizontalAlign ShownAlign(const Cell& cell);
/// Under the number format, bounded in length.
QString ShownText(const Cell& cell);
/// The same for a number without the room for all of it: fewer decimals where the format is
/// General, "###" where that doesn't do. Room in CSS pixels.
QString TextInRoom(const Cell& cell, const QFont& font, double room);

} // namespace kelvrane
