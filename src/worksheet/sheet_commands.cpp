#include "worksheet/sheet_commands.h"

#include "worksheet/cell_measures.h"
#include "worksheet/sheet_layout.h"

#include <algorithm>
#include <cmath>

namespace kelvrane {

namespace {

constexpr double leastPoints = 1;
constexpr double mostPoints = 400;

using Line = CellBorder::Line;

constexpr BorderChoice borderChoices[] = {
    {"border_none", "No Borders", AllEdges, Line::None, 1},
    {"border_all", "All Borders", AllEdges, Line::Solid, 1},
    {"border_outline", "Outline", OuterEdges, Line::Solid, 1},
    {"border_thick", "Thick Outline", OuterEdges, Line::Solid, 2},
    {"border_inside", "Inside", InnerEdges, Line::Solid, 1},
    {"border_top", "Top", TopEdge, Line::Solid, 1},
    {"border_bottom", "Bottom", BottomEdge, Line::Solid, 1},
    {"border_thick_bottom", "Thick Bottom", BottomEdge, Line::Solid, 2},
    {"border_double_bottom", "Double Bottom", BottomEdge, Line::Double, 3},
    {"border_dotted_bottom", "Dotted Bottom", BottomEdge, Line::Dotted, 1},
    {"border_left", "Left", LeftEdge, Line::Solid, 1},
    {"border_right", "Right", RightEdge, Line::Solid, 1},
};

constexpr FormatChoice formatChoices[] = {
    {"General", "General"},
    {"1234", "0"},
    {"1234.50", "0.00"},
    {"1,234", "#,##0"},
    {"1,234.50", "#,##0.00"},
    {"12%", "0%"},
    {"12.50%", "0.00%"},
    {"$1,234.50", "$#,##0.00"},
    {"$1234.50", "$###0.00"},
    {"1/5/2003", "m/d/yyyy"},
    {"5 Jan", "d mmm"},
    {"5-Jan-2003", "d-mmm-yyyy"},
    {"January 5, 2003", "mmmm d, yyyy"},
    {"Sunday", "dddd"},
    {"1:30 PM", "h:mm AM/PM"},
    {"13:30", "h:mm"},
    {"37:30", "[h]:mm"},
    {"Text", "@"},
};

template <typename Visit>
void ForEachCell(const CellRange& range, Visit&& visit) {
    for (int row = range.first.row; row <= range.last.row; ++row)
        for (int column = range.first.column; column <= range.last.column; ++column)
            visit(CellAddress{row, column});
}

void ChangeStyle(Spreadsheet& sheet, const CellRange& range,
                 const std::function<void(CellStyle&)>& change) {
    sheet.edit([&](Worksheet& cells) { cells.changeStyle(range, change); });
}

template <typename Test>
bool AllCells(const Spreadsheet& sheet, const CellRange& range, Test&& test) {
    bool all = true;
    ForEachCell(range, [&](CellAddress cell) { all = all && test(sheet.worksheet().style(cell)); });
    return all;
}

bool& Switch(CellStyle& style, Toggle toggle) {
    bool* const switches[] = {&style.bold, &style.italic, &style.underline, &style.wraps};
    return *switches[static_cast<size_t>(toggle)];
}

/// Rows with a height of their own that is too low now become as high as they need; none becomes
/// lower, hidden ones stay so. All others are laid out by what they hold.
void GrowRows(Worksheet& cells, const CellRange& range) {
    for (int row = range.first.row; row <= range.last.row; ++row) {
        const int own = cells.contents().rowHeights.value(row, 0);
        if (own > 0 && own < WantedRowHeight(cells.contents(), row))
            cells.setRowHeight(row, WantedRowHeight(cells.contents(), row));
    }
}

void SetEdge(Worksheet& cells, CellAddress at, CellBorder CellStyle::*side,
             const CellBorder& border) {
    if (at.row < 0 || at.column < 0 || at.row >= SheetRows || at.column >= SheetColumns)
        return;
    CellStyle style = cells.style(at);
    style.*side = border;
    cells.setStyle(at, style);
}

struct EdgeRow {
    BorderEdge edge;
    CellBorder CellStyle::*side;
    CellBorder CellStyle::*facing; ///< the neighbour's border on the same edge
    int rows, columns;             ///< to that neighbour
};
constexpr EdgeRow edgeRows[] = {
    {LeftEdge, &CellStyle::left, &CellStyle::right, 0, -1},
    {TopEdge, &CellStyle::top, &CellStyle::bottom, -1, 0},
    {RightEdge, &CellStyle::right, &CellStyle::left, 0, 1},
    {BottomEdge, &CellStyle::bottom, &CellStyle::top, 1, 0},
};

void ChangeStructure(Spreadsheet& sheet, const StructureChange& change) {
    sheet.edit([&](Worksheet& cells) { cells.changeStructure(change); });
}

bool HoldsNumber(const Worksheet& cells, CellAddress at) {
    return at.row >= 0 && at.column >= 0 && IsNumber(cells.value(at));
}

bool IsBlank(const Worksheet& cells, const CellRange& range) {
    bool blank = true;
    ForEachCell(range, [&](CellAddress at) { blank = blank && IsEmpty(cells.value(at)); });
    return blank;
}

/// The numbers that end right before a cell, going back by the step; blanks in between belong to
/// the range. Nothing when there are none.
std::optional<CellRange> NumbersBefore(const Worksheet& cells, CellAddress at, CellAddress step,
                                       bool overBlanks) {
    const auto back = [step](CellAddress from) {
        return CellAddress{from.row - step.row, from.column - step.column};
    };
    const CellAddress last = back(at);
    CellAddress first = last;
    while (overBlanks && first.row >= 0 && first.column >= 0 && IsEmpty(cells.value(first)))
        first = back(first);
    if (!HoldsNumber(cells, first))
        return {};
    while (HoldsNumber(cells, back(first)))
        first = back(first);
    return CellRange{first, last};
}

struct Sum {
    CellAddress cell;
    CellRange numbers;
};

QList<Sum> SumForCell(const Worksheet& cells, CellAddress at) {
    constexpr CellAddress down{1, 0};
    constexpr CellAddress right{0, 1};
    for (const bool overBlanks : {false, true})
        for (const CellAddress step : {down, right})
            if (const auto numbers = NumbersBefore(cells, at, step, overBlanks))
                return {{at, *numbers}};
    return {};
}

QList<Sum> SumsForRange(const Worksheet& cells, const CellRange& range) {
    const auto [first, last] = range;
    QList<Sum> sums;
    const CellRange lastColumn{{first.row, last.column}, last};
    const bool acrossRows =
        range.columns() > 1 && (range.rows() == 1 || IsBlank(cells, lastColumn));
    if (acrossRows) {
        const bool inside = IsBlank(cells, lastColumn);
        const int end = inside ? last.column - 1 : last.column;
        for (int row = first.row; row <= last.row; ++row)
            sums.append(Sum{{row, end + 1}, {{row, first.column}, {row, end}}});
    } else {
        const bool inside = IsBlank(cells, {{last.row, first.column}, last});
        const int end = inside ? last.row - 1 : last.row;
        for (int column = first.column; column <= last.column; ++column)
            sums.append(Sum{{end + 1, column}, {{first.row, column}, {end, column}}});
    }
    // Neither over what is there nor under a merge.
    for (Sum& sum : sums)
        while (!IsBlank(cells, {sum.cell, sum.cell}) ||
               cells.contents().spanAt(sum.cell).first != sum.cell)
            ++(acrossRows ? sum.cell.column : sum.cell.row);
    sums.removeIf([&](const Sum& sum) {
        bool any = false;
        ForEachCell(sum.numbers, [&](CellAddress at) { any = any || HoldsNumber(cells, at); });
        return !any || sum.cell.row >= SheetRows || sum.cell.column >= SheetColumns;
    });
    return sums;
}

} // namespace

void EnterText(Spreadsheet& sheet, CellAddress cell, const QString& text) {
    if (sheet.worksheet().input(cell) == text)
        return;
    sheet.edit([&](Worksheet& cells) {
        cells.enter(cell, text);
        if (cells.style(cell).wraps || text.contains(QLatin1Char('\n')))
            GrowRows(cells, {cell, cell});
    });
}

void ClearValues(Spreadsheet& sheet, const CellRange& range) {
    sheet.edit([&](Worksheet& cells) { cells.clearValues(range); });
}

void ClearAll(Spreadsheet& sheet, const CellRange& range) {
    sheet.edit([&](Worksheet& cells) {
        cells.unmerge(range);
        ForEachCell(range, [&](CellAddress at) { cells.setCell(at, {}); });
    });
}

bool IsOn(const CellStyle& style, Toggle toggle) {
    CellStyle copy = style;
    return Switch(copy, toggle);
}

void ToggleFormat(Spreadsheet& sheet, const CellRange& range, Toggle toggle) {
    const bool on =
        !AllCells(sheet, range, [&](const CellStyle& style) { return IsOn(style, toggle); });
    sheet.edit([&](Worksheet& cells) {
        cells.changeStyle(range, [&](CellStyle& style) { Switch(style, toggle) = on; });
        if (toggle == Toggle::Wrap && on)
            GrowRows(cells, range);
    });
}

void ToggleAlign(Spreadsheet& sheet, const CellRange& range, HorizontalAlign align) {
    const bool on =
        !AllCells(sheet, range, [&](const CellStyle& style) { return style.horizontal == align; });
    ChangeStyle(sheet, range, [&](CellStyle& style) {
        style.horizontal = on ? align : HorizontalAlign::General;
    });
}

void SetVerticalAlign(Spreadsheet& sheet, const CellRange& range, VerticalAlign align) {
    ChangeStyle(sheet, range, [&](CellStyle& style) { style.vertical = align; });
}

void SetFontFamily(Spreadsheet& sheet, const CellRange& range, const QString& family) {
    const QString own = family == sheet.worksheet().contents().fontFamily ? QString() : family;
    ChangeStyle(sheet, range, [&](CellStyle& style) { style.fontFamily = own; });
}

void SetPointSize(Spreadsheet& sheet, const CellRange& range, double points) {
    if (!(points >= leastPoints && points <= mostPoints))
        return;
    sheet.edit([&](Worksheet& cells) {
        const double own = points == cells.contents().pointSize ? 0 : points;
        cells.changeStyle(range, [&](CellStyle& style) { style.pointSize = own; });
        GrowRows(cells, range);
    });
}

void SetInk(Spreadsheet& sheet, const CellRange& range, QRgb color) {
    ChangeStyle(sheet, range, [&](CellStyle& style) { style.ink = color; });
}

void SetFill(Spreadsheet& sheet, const CellRange& range, QRgb color) {
    ChangeStyle(sheet, range, [&](CellStyle& style) { style.fill = color; });
}

void SetNumberFormat(Spreadsheet& sheet, const CellRange& range, const QString& format) {
    const bool general = format.trimmed().compare(u"General", Qt::CaseInsensitive) == 0;
    const QString own = general ? QString() : format.trimmed();
    ChangeStyle(sheet, range, [&](CellStyle& style) { style.numberFormat = own; });
}

std::span<const BorderChoice> BorderChoices() {
    return borderChoices;
}

std::span<const FormatChoice> FormatChoices() {
    return formatChoices;
}

void SetBorders(Spreadsheet& sheet, const CellRange& range, const BorderChoice& choice,
                QRgb color) {
    CellBorder border;
    border.line = choice.line;
    if (choice.line != Line::None) {
        border.width = choice.width;
        border.color = color;
    }
    sheet.edit([&](Worksheet& cells) {
        ForEachCell(range, [&](CellAddress at) {
            for (const EdgeRow& row : edgeRows) {
                const CellAddress beside{at.row + row.rows, at.column + row.columns};
                const unsigned asked =
                    range.contains(beside) ? unsigned{InnerEdges} : unsigned{row.edge};
                if ((choice.edges & asked) == 0)
                    continue;
                SetEdge(cells, at, row.side, border);
                // Two cells share an edge; a line that goes must go from both.
                if (!range.contains(beside))
                    SetEdge(cells, beside, row.facing, {});
            }
        });
    });
}

void SetBorderColor(Spreadsheet& sheet, const CellRange& range, QRgb color) {
    ChangeStyle(sheet, range, [&](CellStyle& style) {
        for (const EdgeRow& row : edgeRows)
            if ((style.*row.side).line != Line::None)
                (style.*row.side).color = color;
    });
}

void InsertRows(Spreadsheet& sheet, const CellRange& range) {
    ChangeStructure(sheet, {true, range.first.row, range.rows()});
}
void InsertColumns(Spreadsheet& sheet, const CellRange& range) {
    ChangeStructure(sheet, {false, range.first.column, range.columns()});
}
void DeleteRows(Spreadsheet& sheet, const CellRange& range) {
    ChangeStructure(sheet, {true, range.first.row, -range.rows()});
}
void DeleteColumns(Spreadsheet& sheet, const CellRange& range) {
    ChangeStructure(sheet, {false, range.first.column, -range.columns()});
}

void ToggleMerge(Spreadsheet& sheet, const CellRange& range) {
    if (range.first == range.last)
        return;
    const bool isMerge = sheet.worksheet().contents().merges.contains(range);
    sheet.edit([&](Worksheet& cells) { isMerge ? cells.unmerge(range) : cells.merge(range); });
}

void SetColumnWidths(Spreadsheet& sheet, const CellRange& range, int pixels) {
    sheet.edit([&](Worksheet& cells) {
        for (int column = range.first.column; column <= range.last.column; ++column)
            cells.setColumnWidth(column, pixels);
    });
}

void SetRowHeights(Spreadsheet& sheet, const CellRange& range, int pixels) {
    sheet.edit([&](Worksheet& cells) {
        for (int row = range.first.row; row <= range.last.row; ++row)
            cells.setRowHeight(row, pixels);
    });
}

void FitColumns(Spreadsheet& sheet, const CellRange& range) {
    sheet.edit([&](Worksheet& cells) {
        for (int column = range.first.column; column <= range.last.column; ++column)
            cells.setColumnWidth(column, WantedColumnWidth(cells.contents(), column));
    });
}

void FitRows(Spreadsheet& sheet, const CellRange& range) {
    sheet.edit([&](Worksheet& cells) {
        for (int row = range.first.row; row <= range.last.row; ++row)
            cells.setRowHeight(row, WantedRowHeight(cells.contents(), row));
    });
}

void ShowColumns(Spreadsheet& sheet, const CellRange& range) {
    sheet.edit([&](Worksheet& cells) {
        for (int column = range.first.column; column <= range.last.column; ++column)
            if (ShownWidth(cells.contents(), column) == 0)
                cells.setColumnWidth(column, SheetContents::DefaultColumnWidth);
    });
}

void ShowRows(Spreadsheet& sheet, const CellRange& range) {
    sheet.edit([&](Worksheet& cells) {
        for (int row = range.first.row; row <= range.last.row; ++row)
            if (ShownHeight(cells.contents(), row) == 0)
                cells.setRowHeight(row, WantedRowHeight(cells.contents(), row));
    });
}

QList<CellAddress> AutoSum(Spreadsheet& sheet, const CellRange& range) {
    const Worksheet& cells = sheet.worksheet();
    const QList<Sum> sums = cells.contents().spanAt(range.first) == range
                                ? SumForCell(cells, range.first)
                                : SumsForRange(cells, range);
    QList<CellAddress> written;
    sheet.edit([&](Worksheet& changed) {
        for (const Sum& sum : sums) {
            changed.enter(sum.cell, QStringLiteral("=SUM(%1)").arg(RangeText(sum.numbers)));
            written.append(sum.cell);
        }
    });
    return written;
}

} // namespace kelvrane
