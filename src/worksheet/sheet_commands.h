// What the user does to a sheet: each routine is one step of undo, or none when nothing changes.
//
//     ToggleFormat(sheet, selected, Toggle::Bold);
//     InsertRows(sheet, selected);
//     if (AutoSum(sheet, selected).isEmpty()) ...   // nothing to add up there
#pragma once

#include "worksheet/spreadsheet.h"

#include <span>

namespace kelvrane {

/// Types a text into a cell; its row grows to show all lines.
void EnterText(Spreadsheet& sheet, CellAddress cell, const QString& text);
void ClearValues(Spreadsheet& sheet, const CellRange& range);
/// Styles go too, and merges in the range.
void ClearAll(Spreadsheet& sheet, const CellRange& range);

// Formats

enum class Toggle { Bold, Italic, Underline, Wrap };
bool IsOn(const CellStyle& style, Toggle toggle);
/// On for all cells, or off where all of them have it.
void ToggleFormat(Spreadsheet& sheet, const CellRange& range, Toggle toggle);
/// On for all cells, or General where all of them have it.
void ToggleAlign(Spreadsheet& sheet, const CellRange& range, HorizontalAlign align);
void SetVerticalAlign(Spreadsheet& sheet, const CellRange& range, VerticalAlign align);
void SetFontFamily(Spreadsheet& sheet, const CellRange& range, const QString& family);
/// Rows that are too low for the font grow. Points; nothing outside 1 to 400.
void SetPointSize(Spreadsheet& sheet, const CellRange& range, double points);
void SetInk(Spreadsheet& sheet, const CellRange& range, QRgb color);
void SetFill(Spreadsheet& sheet, const CellRange& range, QRgb color);
/// "General" and "" are General.
void SetNumberFormat(Spreadsheet& sheet, const CellRange& range, const QString& format);

/// Borders of a selection: which of its edges get a line. Those that aren't named stay as they are.
struct BorderChoice {
    const char* key;
    const char* caption;
    unsigned edges; ///< BorderEdge values
    CellBorder::Line line;
    int width; ///< CSS pixels
};
enum BorderEdge : unsigned {
    LeftEdge = 1,
    TopEdge = 2,
    RightEdge = 4,
    BottomEdge = 8,
    OuterEdges = 15,
    InnerEdges = 16,
    AllEdges = 31
};
std::span<const BorderChoice> BorderChoices();
void SetBorders(Spreadsheet& sheet, const CellRange& range, const BorderChoice& choice,
                QRgb color = 0xff000000);
/// Gives the lines that are there another colour.
void SetBorderColor(Spreadsheet& sheet, const CellRange& range, QRgb color);

/// Number formats that are offered: caption and picture.
struct FormatChoice {
    const char* caption;
    const char* format;
};
std::span<const FormatChoice> FormatChoices();

// Structure

/// As many as the range has, before its first one.
void InsertRows(Spreadsheet& sheet, const CellRange& range);
void InsertColumns(Spreadsheet& sheet, const CellRange& range);
void DeleteRows(Spreadsheet& sheet, const CellRange& range);
void DeleteColumns(Spreadsheet& sheet, const CellRange& range);
/// Merges the range, or splits the merges in it when it is one. Nothing for a single cell.
void ToggleMerge(Spreadsheet& sheet, const CellRange& range);
/// CSS pixels, for all columns (rows) of the range.
void SetColumnWidths(Spreadsheet& sheet, const CellRange& range, int pixels);
void SetRowHeights(Spreadsheet& sheet, const CellRange& range, int pixels);
/// So that all that stands there is seen.
void FitColumns(Spreadsheet& sheet, const CellRange& range);
void FitRows(Spreadsheet& sheet, const CellRange& range);
/// Gives hidden ones a size again.
void ShowColumns(Spreadsheet& sheet, const CellRange& range);
void ShowRows(Spreadsheet& sheet, const CellRange& range);

// Sums

/// A single cell gets the sum of the numbers above it, else of those to its left. A larger range
/// gets its sums in its last row or column where that is empty, else below it (right of a single
/// row). Returns where sums were written; nothing when there was nothing to add up.
QList<CellAddress> AutoSum(Spreadsheet& sheet, const CellRange& range);

} // namespace kelvrane
