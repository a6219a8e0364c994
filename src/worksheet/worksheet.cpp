#include "worksheet/worksheet.h"

#include "platform/ports.h"
#include "platform/texts.h"
#include "worksheet/number_format.h"
#include "worksheet/typed_value.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace kelvrane {

namespace {

size_t hashOf(CellAddress cell) {
    return qHash(cell);
}

constexpr int fewestPixels = 0;
constexpr int mostPixels = 2000;
const QString dateFormat = QStringLiteral("m/d/yyyy");

/// A text that would be read as something else needs its apostrophe.
QString typedText(const QString& text, const CellStyle& style) {
    const bool marked = text.startsWith(QLatin1Char('\''));
    const bool isText = IsTextFormat(style.numberFormat) ||
                        (!text.startsWith(QLatin1Char('=')) && IsText(ParseTyped(text).value));
    return isText && !marked ? text : QLatin1Char('\'') + text;
}

QString typedNumber(double number, const CellStyle& style) {
    if (!IsDateFormat(style.numberFormat))
        return DoubleText(number);
    const QDateTime moment = MomentOfSerial(number);
    if (!moment.isValid() || number < 0)
        return DoubleText(number);
    const QString time = SystemTimeText(moment.time());
    if (number < 1)
        return time;
    const QString date = DateText(moment.date());
    return moment.time() == QTime(0, 0) ? date : date + QLatin1Char(' ') + time;
}

CellRange joined(const CellRange& one, const CellRange& other) {
    return {
        {std::min(one.first.row, other.first.row), std::min(one.first.column, other.first.column)},
        {std::max(one.last.row, other.last.row), std::max(one.last.column, other.last.column)}};
}

/// Where a row or column goes by a change of structure; -1: it is removed.
int movedPlace(int place, const StructureChange& change) {
    if (place < change.at)
        return place;
    if (change.count < 0 && place < change.at - change.count)
        return -1;
    return place + change.count;
}

CellAddress movedCell(CellAddress cell, const StructureChange& change) {
    int& place = change.rows ? cell.row : cell.column;
    place = movedPlace(place, change);
    return cell;
}

bool isInSheet(CellAddress cell) {
    return cell.row >= 0 && cell.row < SheetRows && cell.column >= 0 && cell.column < SheetColumns;
}

QMap<int, int> movedSizes(const QMap<int, int>& sizes, const StructureChange& change, int limit) {
    QMap<int, int> moved;
    for (auto size = sizes.begin(); size != sizes.end(); ++size)
        if (const int place = movedPlace(size.key(), change); place >= 0 && place < limit)
            moved.insert(place, size.value());
    return moved;
}

/// A merge as far as it is still there.
CellRange movedMerge(CellRange merge, const StructureChange& change) {
    int& first = change.rows ? merge.first.row : merge.first.column;
    int& last = change.rows ? merge.last.row : merge.last.column;
    const int removedEnd = change.at - change.count; // behind what is removed
    if (change.count < 0) {
        const int before = std::max(0, std::min(last + 1, change.at) - first);
        const int after = std::max(0, last + 1 - std::max(first, removedEnd));
        first = first < change.at ? first : std::max(change.at, first + change.count);
        last = first + before + after - 1;
        return merge;
    }
    first = first >= change.at ? first + change.count : first;
    last = last >= change.at ? last + change.count : last;
    return merge;
}

} // namespace

Worksheet::Worksheet(QObject* parent) : QObject(parent), m_formulas(16, hashOf) {}
Worksheet::~Worksheet() = default;

void Worksheet::setContents(const SheetContents& contents) {
    m_contents = contents;
    m_formulas.clear();
    m_graph.clear();
    m_touched.clear();
    for (auto cell = contents.cells.begin(); cell != contents.cells.end(); ++cell)
        if (!cell->formula.isEmpty())
            takeFormula(cell.key(), cell->formula);
    recompute(m_graph.all());
    m_touched.clear();
    m_layoutTouched = false;
    emit Reset();
}

CellValue Worksheet::value(CellAddress cell) const {
    const auto found = m_contents.cells.constFind(cell);
    return found == m_contents.cells.constEnd() ? CellValue() : found->value;
}

QString Worksheet::text(CellAddress cell) const {
    const auto found = m_contents.cells.constFind(cell);
    return found == m_contents.cells.constEnd()
               ? QString()
               : FormatCellValue(found->value, found->style.numberFormat);
}

QString Worksheet::input(CellAddress cell) const {
    const auto found = m_contents.cells.constFind(cell);
    if (found == m_contents.cells.constEnd())
        return {};
    if (!found->formula.isEmpty())
        return found->formula;
    if (const QString* text = std::get_if<QString>(&found->value))
        return typedText(*text, found->style);
    if (const double* number = std::get_if<double>(&found->value))
        return typedNumber(*number, found->style);
    return FormatCellValue(found->value, {});
}

const CellStyle& Worksheet::style(CellAddress cell) const {
    static const CellStyle bare;
    const auto found = m_contents.cells.constFind(cell);
    return found == m_contents.cells.constEnd() ? bare : found->style;
}

void Worksheet::enter(CellAddress cell, const QString& text) {
    Cell entered = m_contents.cells.value(cell);
    entered.formula.clear();
    if (IsTextFormat(entered.style.numberFormat)) {
        const QString plain = text.startsWith(QLatin1Char('\'')) ? text.sliced(1) : text;
        entered.value = text.isEmpty() ? CellValue() : CellValue(plain);
    } else if (text.size() > 1 && text.startsWith(QLatin1Char('='))) {
        entered.formula = text;
    } else {
        const TypedValue typed = ParseTyped(text);
        entered.value = typed.value;
        if (entered.style.numberFormat.isEmpty())
            entered.style.numberFormat = typed.format;
    }
    setCell(cell, entered);
}

void Worksheet::setValue(CellAddress cell, const CellValue& value) {
    Cell changed = m_contents.cells.value(cell);
    changed.value = value;
    changed.formula.clear();
    setCell(cell, changed);
}

void Worksheet::setStyle(CellAddress cell, const CellStyle& style) {
    Cell changed = m_contents.cells.value(cell);
    changed.style = style;
    setCell(cell, changed);
}

void Worksheet::changeStyle(const CellRange& range, const std::function<void(CellStyle&)>& change) {
    const Changes changes(*this);
    for (int row = range.first.row; row <= range.last.row; ++row)
        for (int column = range.first.column; column <= range.last.column; ++column) {
            CellStyle style = this->style({row, column});
            change(style);
            setStyle({row, column}, style);
        }
}

void Worksheet::clearValues(const CellRange& range) {
    const Changes changes(*this);
    QList<CellAddress> filled;
    for (auto cell = m_contents.cells.constBegin(); cell != m_contents.cells.constEnd(); ++cell)
        if (range.contains(cell.key()))
            filled.append(cell.key());
    for (const CellAddress cell : filled)
        setValue(cell, {});
}

void Worksheet::setCell(CellAddress cell, const Cell& contents) {
    if (!isInSheet(cell) || m_contents.cells.value(cell) == contents)
        return;
    const Changes changes(*this);
    if (m_formulas.erase(cell) > 0)
        m_graph.remove(cell);
    if (contents.isBare())
        m_contents.cells.remove(cell);
    else
        m_contents.cells.insert(cell, contents);
    if (!contents.formula.isEmpty())
        takeFormula(cell, contents.formula);
    touch(cell);
}

void Worksheet::merge(const CellRange& range) {
    const Changes changes(*this);
    unmerge(range);
    for (int row = range.first.row; row <= range.last.row; ++row)
        for (int column = range.first.column; column <= range.last.column; ++column)
            if (CellAddress{row, column} != range.first)
                setValue({row, column}, {});
    if (range.first != range.last)
        m_contents.merges.append(range);
    m_layoutTouched = true;
}

void Worksheet::unmerge(const CellRange& range) {
    const Changes changes(*this);
    if (m_contents.merges.removeIf(
            [&](const CellRange& merge) { return merge.intersects(range); }) > 0)
        m_layoutTouched = true;
}

void Worksheet::setColumnWidth(int column, int pixels) {
    const Changes changes(*this);
    m_contents.columnWidths.insert(column, std::clamp(pixels, fewestPixels, mostPixels));
    m_layoutTouched = true;
}

void Worksheet::setRowHeight(int row, int pixels) {
    const Changes changes(*this);
    m_contents.rowHeights.insert(row, std::clamp(pixels, fewestPixels, mostPixels));
    m_layoutTouched = true;
}

void Worksheet::changeStructure(const StructureChange& change) {
    if (change.count == 0)
        return;
    SheetContents moved = m_contents;
    moved.cells.clear();
    for (auto cell = m_contents.cells.constBegin(); cell != m_contents.cells.constEnd(); ++cell) {
        const CellAddress place = movedCell(cell.key(), change);
        if (!isInSheet(place))
            continue;
        Cell kept = *cell;
        if (!kept.formula.isEmpty())
            kept.formula = AdjustedFormula(kept.formula, change);
        moved.cells.insert(place, kept);
    }
    moved.merges.clear();
    for (const CellRange& merge : std::as_const(m_contents.merges)) {
        const CellRange kept = movedMerge(merge, change);
        if (kept.last.row >= kept.first.row && kept.last.column >= kept.first.column &&
            kept.first != kept.last && isInSheet(kept.last))
            moved.merges.append(kept);
    }
    if (change.rows)
        moved.rowHeights = movedSizes(m_contents.rowHeights, change, SheetRows);
    else
        moved.columnWidths = movedSizes(m_contents.columnWidths, change, SheetColumns);
    setContents(moved);
}

Worksheet::Changes::Changes(Worksheet& sheet)
    : m_sheet(sheet), m_exceptions(std::uncaught_exceptions()) {
    ++m_sheet.m_openChanges;
}

Worksheet::Changes::~Changes() noexcept(false) {
    if (--m_sheet.m_openChanges > 0)
        return;
    if (std::uncaught_exceptions() == m_exceptions) {
        m_sheet.flush();
        return;
    }
    try {
        m_sheet.flush();
    } catch (...) {
        // The exception under way says what went wrong first; a second one would end the program.
    }
}

CellRange Worksheet::usedRange() const {
    return m_contents.usedRange();
}

QDateTime Worksheet::now() const {
    return ports.clock ? ports.clock->now() : QDateTime::currentDateTime();
}

void Worksheet::touch(CellAddress cell) {
    m_touched.append(cell);
}

void Worksheet::takeFormula(CellAddress cell, const QString& formula) {
    Formula read(formula);
    m_graph.setPrecedents(cell, read.precedents());
    m_formulas.insert_or_assign(cell, std::move(read));
}

void Worksheet::recompute(const DependencyGraph::Order& order) {
    const auto take = [this](CellAddress cell, const CellValue& value) {
        const auto held = std::as_const(m_contents.cells).constFind(cell);
        if (held == m_contents.cells.constEnd() || held->value == value)
            return;
        m_contents.cells[cell].value = value;
        touch(cell);
    };
    for (const CellAddress cell : order.cells)
        if (const auto formula = m_formulas.find(cell); formula != m_formulas.end())
            take(cell, formula->second.evaluate(*this));
    for (const CellAddress cell : order.cycles)
        take(cell, CellError::Cycle);
}

void Worksheet::flush() {
    if (const QList<CellAddress> changed = m_touched; !changed.isEmpty()) {
        recompute(m_graph.affectedBy(changed));
        CellRange range{m_touched.constFirst(), m_touched.constFirst()};
        for (const CellAddress cell : std::exchange(m_touched, {}))
            range = joined(range, {cell, cell});
        emit Changed(range);
    }
    if (std::exchange(m_layoutTouched, false))
        emit LayoutChanged();
}

} // namespace kelvrane
