#include "worksheet/sheet_clipboard.h"

#include "platform/error.h"
#include "worksheet/sheet_commands.h"
#include "worksheet/sheet_html.h"

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

constexpr QLatin1Char quote('"');
constexpr QLatin1String cutMark(" cut");
constexpr qsizetype longestFirstLine = 64;

/// A block of cells and where its formulas stood.
struct Block {
    SheetContents contents; ///< the block's first cell is A1
    int rows = 1;
    int columns = 1;
    CellRange origin;
    bool isCut = false;
};

QString Quoted(QString text) {
    if (!text.contains(QLatin1Char('\t')) && !text.contains(QLatin1Char('\n')) &&
        !text.contains(QLatin1Char('\r')) && !text.startsWith(quote))
        return text;
    text.replace(quote, QStringLiteral("\"\""));
    return quote + text + quote;
}

CellAddress Moved(CellAddress cell, int rows, int columns) {
    return {cell.row + rows, cell.column + columns};
}

CellRange Moved(const CellRange& range, int rows, int columns) {
    return {Moved(range.first, rows, columns), Moved(range.last, rows, columns)};
}

bool IsWithin(const CellRange& inner, const CellRange& outer) {
    return outer.contains(inner.first) && outer.contains(inner.last);
}

bool IsInSheet(CellAddress cell) {
    return cell.row < SheetRows && cell.column < SheetColumns;
}

/// The part of a sheet, its first cell at A1.
SheetContents PartOf(const SheetContents& contents, const CellRange& range) {
    SheetContents part;
    part.fontFamily = contents.fontFamily;
    part.pointSize = contents.pointSize;
    for (auto it = contents.cells.cbegin(); it != contents.cells.cend(); ++it)
        if (range.contains(it.key()))
            part.cells.insert(Moved(it.key(), -range.first.row, -range.first.column), *it);
    for (const CellRange& merge : contents.merges)
        if (IsWithin(merge, range))
            part.merges.append(Moved(merge, -range.first.row, -range.first.column));
    for (int column = range.first.column; column <= range.last.column; ++column)
        if (contents.columnWidths.contains(column))
            part.columnWidths.insert(column - range.first.column, contents.columnWidth(column));
    return part;
}

Block BlockOfCells(const QByteArray& cells) {
    const qsizetype end = cells.indexOf('\n');
    if (end < 0 || end > longestFirstLine)
        Raise(errors::BadArgument, QStringLiteral("The clipboard holds no cells"));
    QString name = QString::fromLatin1(cells.left(end));
    Block block;
    block.isCut = name.endsWith(cutMark);
    if (block.isCut)
        name.chop(cutMark.size());
    const auto origin = ParseRange(name);
    if (!origin)
        Raise(errors::BadArgument, QStringLiteral("The clipboard holds no cells"));
    block.origin = *origin;
    block.rows = origin->rows();
    block.columns = origin->columns();
    block.contents = ReadSheetHtml(cells.mid(end + 1));
    return block;
}

/// Formulas of other sheets would read cells that aren't here; their results come.
Block BlockOfHtml(const QByteArray& html) {
    Block block;
    block.contents = ReadSheetHtml(html);
    for (Cell& cell : block.contents.cells)
        cell.formula.clear();
    const CellRange used = block.contents.usedRange();
    block.rows = used.rows();
    block.columns = used.columns();
    return block;
}

QString PastedFormula(const Block& block, const QString& formula, int rows, int columns) {
    if (block.isCut) {
        const QList<CellRange> reads = Formula(formula).precedents();
        const bool staysInside =
            !reads.isEmpty() && std::ranges::all_of(reads, [&](const CellRange& range) {
                return IsWithin(range, block.origin);
            });
        if (!staysInside)
            return formula;
    }
    return ShiftedFormula(formula, rows, columns);
}

void PasteBlock(Worksheet& sheet, CellAddress corner, const Block& block) {
    const CellRange target{corner, Moved(corner, block.rows - 1, block.columns - 1)};
    // A single cell goes to a merge as to a cell.
    if (target.first != target.last || sheet.contents().spanAt(corner).first != corner)
        sheet.unmerge(target);
    const int rows = corner.row - block.origin.first.row;
    const int columns = corner.column - block.origin.first.column;
    for (int row = 0; row < block.rows; ++row)
        for (int column = 0; column < block.columns; ++column) {
            const CellAddress at = Moved(corner, row, column);
            if (!IsInSheet(at))
                continue;
            Cell cell = block.contents.cells.value({row, column});
            if (!cell.formula.isEmpty())
                cell.formula = PastedFormula(block, cell.formula, rows, columns);
            sheet.setCell(at, cell);
        }
    for (const CellRange& merge : block.contents.merges)
        if (const CellRange moved = Moved(merge, corner.row, corner.column); IsInSheet(moved.last))
            sheet.merge(moved);
}

CellRange WithinSheet(const CellRange& range) {
    return {
        range.first,
        {std::min(range.last.row, SheetRows - 1), std::min(range.last.column, SheetColumns - 1)}};
}

/// How often a block is laid along a selection; 0 where it isn't made for that. A single row or
/// column takes a block of any size.
int Repeats(int selected, int block) {
    return selected == 1 ? 1 : selected % block == 0 ? selected / block : 0;
}

/// The corners at which blocks of a size are laid to fill the selection.
QList<CellAddress> Corners(const CellRange& selection, int rows, int columns) {
    const int down = Repeats(selection.rows(), rows);
    const int across = Repeats(selection.columns(), columns);
    if (down == 0 || across == 0)
        return {selection.first};
    QList<CellAddress> corners;
    for (int row = 0; row < down; ++row)
        for (int column = 0; column < across; ++column)
            corners.append(Moved(selection.first, row * rows, column * columns));
    return corners;
}

CellRange Filled(const QList<CellAddress>& corners, int rows, int columns) {
    return WithinSheet({corners.first(), Moved(corners.last(), rows - 1, columns - 1)});
}

CellRange PasteText(Spreadsheet& sheet, const CellRange& selection, const QString& text) {
    if (text.size() > LargestSheetFile)
        Raise(errors::BadArgument, QStringLiteral("The text is too long for a sheet"));
    const QList<QStringList> table = TableOfText(text);
    qsizetype widest = 1;
    for (const QStringList& row : table)
        widest = std::max(widest, row.size());
    const int rows = static_cast<int>(std::clamp<qsizetype>(table.size(), 1, SheetRows));
    const int columns = static_cast<int>(std::min<qsizetype>(widest, SheetColumns));
    const QList<CellAddress> corners = Corners(selection, rows, columns);
    sheet.edit([&](Worksheet& cells) {
        for (const CellAddress corner : corners)
            for (int row = 0; row < rows && row < table.size(); ++row)
                for (int column = 0; column < table[row].size() && column < columns; ++column)
                    if (const CellAddress at = Moved(corner, row, column);
                        IsInSheet(at) && cells.contents().spanAt(at).first == at)
                        cells.enter(at, table[row][column]); // never under a merge, unseen
    });
    return Filled(corners, rows, columns);
}

SheetClip ClipOf(const Worksheet& sheet, const CellRange& range, QLatin1String mark) {
    SheetContents part = PartOf(sheet.contents(), range);
    SheetClip clip;
    clip.cells = (RangeText(range) + mark + QLatin1Char('\n') + WriteSheetHtml(part)).toUtf8();
    for (Cell& cell : part.cells)
        cell.formula.clear();
    clip.html = WriteSheetHtml(part).toUtf8();
    QStringList lines;
    for (int row = range.first.row; row <= range.last.row; ++row) {
        QStringList texts;
        for (int column = range.first.column; column <= range.last.column; ++column)
            texts.append(Quoted(sheet.text({row, column})));
        lines.append(texts.join(QLatin1Char('\t')));
    }
    clip.text = lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    return clip;
}

} // namespace

SheetClip CopyCells(const Worksheet& sheet, const CellRange& range) {
    return ClipOf(sheet, range, {});
}

SheetClip CutCells(Spreadsheet& sheet, const CellRange& range) {
    const SheetClip clip = ClipOf(sheet.worksheet(), range, cutMark);
    ClearAll(sheet, range);
    return clip;
}

CellRange PasteCells(Spreadsheet& sheet, const CellRange& chosen, const SheetClip& clip) {
    if (clip.isEmpty())
        return chosen;
    // A merge is one cell to the user.
    const bool isMerge = sheet.worksheet().contents().spanAt(chosen.first) == chosen;
    const CellRange selection = isMerge ? CellRange{chosen.first, chosen.first} : chosen;
    if (clip.cells.isEmpty() && clip.html.isEmpty())
        return PasteText(sheet, selection, clip.text);
    Block block;
    try {
        block = clip.cells.isEmpty() ? BlockOfHtml(clip.html) : BlockOfCells(clip.cells);
    } catch (const RuntimeError&) {
        // HTML without a table is what a browser or a word processor copies: its text will do.
        if (clip.text.isEmpty())
            throw;
        return PasteText(sheet, selection, clip.text);
    }
    const QList<CellAddress> corners = Corners(selection, block.rows, block.columns);
    sheet.edit([&](Worksheet& cells) {
        for (const CellAddress corner : corners)
            PasteBlock(cells, corner, block);
    });
    return Filled(corners, block.rows, block.columns);
}

QList<QStringList> TableOfText(const QString& text) {
    QList<QStringList> table;
    QStringList row;
    QString cell;
    bool inQuotes = false;
    const auto endCell = [&] { row.append(std::exchange(cell, {})); };
    const auto endRow = [&] {
        endCell();
        table.append(std::exchange(row, {}));
    };
    // A quote that is never closed is a plain character, such as an inch after no number.
    bool quotesClose = true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (inQuotes) {
            if (c != quote)
                cell += c;
            else if (i + 1 < text.size() && text[i + 1] == quote)
                cell += text[++i];
            else
                inQuotes = false;
        } else if (c == quote && cell.isEmpty() && quotesClose) {
            quotesClose = text.indexOf(quote, i + 1) > 0;
            inQuotes = quotesClose;
            if (!quotesClose)
                cell += c;
        } else if (c == QLatin1Char('\t')) {
            endCell();
        } else if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
            if (c == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n'))
                ++i;
            endRow();
        } else {
            cell += c;
        }
    }
    if (!row.isEmpty() || !cell.isEmpty())
        endRow();
    return table;
}

} // namespace kelvrane
