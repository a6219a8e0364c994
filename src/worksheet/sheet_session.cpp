#include "worksheet/sheet_session.h"

#include "worksheet/cell_measures.h"
#include "worksheet/sheet_commands.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int fewestColumns = 26;
/// A name may follow these in a formula.
const QString operatorSigns = QStringLiteral("=(,;+-*/^&<>:");

struct StepRow {
    Step step;
    int rows, columns;
    bool jumps;
};
constexpr StepRow stepRows[] = {
    {Step::Left, 0, -1, false},  {Step::Right, 0, 1, false},    {Step::Up, -1, 0, false},
    {Step::Down, 1, 0, false},   {Step::JumpLeft, 0, -1, true}, {Step::JumpRight, 0, 1, true},
    {Step::JumpUp, -1, 0, true}, {Step::JumpDown, 1, 0, true},
};

const StepRow* RowOf(Step step) {
    const auto* found = std::ranges::find(stepRows, step, &StepRow::step);
    return found == std::end(stepRows) ? nullptr : found;
}

bool IsFilled(const SheetContents& contents, CellAddress at) {
    const auto found = contents.cells.constFind(at);
    return found != contents.cells.cend() && (!IsEmpty(found->value) || !found->formula.isEmpty());
}

/// The range with every merge that it touches.
CellRange WithMerges(const SheetContents& contents, CellRange range) {
    for (bool grew = true; grew;) {
        grew = false;
        for (const CellRange& merge : contents.merges) {
            if (!merge.intersects(range) ||
                (range.contains(merge.first) && range.contains(merge.last)))
                continue;
            range = {{std::min(range.first.row, merge.first.row),
                      std::min(range.first.column, merge.first.column)},
                     {std::max(range.last.row, merge.last.row),
                      std::max(range.last.column, merge.last.column)}};
            grew = true;
        }
    }
    return range;
}

} // namespace

CellAddress JumpFrom(const SheetContents& contents, CellAddress from, Step jump, int rows,
                     int columns) {
    const StepRow* row = RowOf(jump);
    if (!row)
        return from;
    const CellRange bounds{{0, 0}, {rows - 1, columns - 1}};
    const auto next = [row](CellAddress at) {
        return CellAddress{at.row + row->rows, at.column + row->columns};
    };
    const bool runs = IsFilled(contents, from) && IsFilled(contents, next(from));
    CellAddress at = from;
    while (bounds.contains(next(at))) {
        if (runs && !IsFilled(contents, next(at)))
            break;
        at = next(at);
        if (!runs && IsFilled(contents, at))
            break;
    }
    return at;
}

SheetSession::SheetSession(Spreadsheet* sheet, QObject* parent) : QObject(parent), m_sheet(sheet) {
    const Worksheet* cells = &sheet->worksheet();
    connect(cells, &Worksheet::Changed, this, &SheetSession::onChanged);
    connect(cells, &Worksheet::LayoutChanged, this, &SheetSession::layOut);
    connect(cells, &Worksheet::Reset, this, [this] {
        cancel();
        layOut();
    });
    layOut();
}

void SheetSession::layOut() {
    const CellRange used = contents().usedRange();
    m_viewableRows = m_sheet->viewableRows();
    m_heights = WithFittedRows(contents()).rowHeights;
    m_layout = SheetLayout(shown(), std::clamp(used.last.row + 1, m_viewableRows, SheetRows),
                           std::clamp(used.last.column + 1, fewestColumns, SheetColumns));
    emit LayoutChanged();
    const int tabColumn = m_tabColumn; // a row may grow between two Tabs
    setSelection(within(m_active), within(m_anchor), within(m_corner));
    m_tabColumn = tabColumn;
}

void SheetSession::refreshLayout() {
    if (m_viewableRows != m_sheet->viewableRows())
        layOut();
}

SheetContents SheetSession::shown() const {
    SheetContents shown = contents();
    shown.rowHeights = m_heights;
    return shown;
}

void SheetSession::onChanged(const CellRange& range) {
    bool grew = range.last.row >= m_layout.rows() || range.last.column >= m_layout.columns();
    for (int row = range.first.row; row <= range.last.row && !grew; ++row)
        grew = m_heights.value(row, SheetContents::DefaultRowHeight) !=
               FittedRowHeight(contents(), row);
    if (grew)
        layOut();
}

CellAddress SheetSession::within(CellAddress cell) const {
    return {std::clamp(cell.row, 0, m_layout.rows() - 1),
            std::clamp(cell.column, 0, m_layout.columns() - 1)};
}

CellRange SheetSession::selected() const {
    return WithMerges(contents(), RangeBetween(m_anchor, m_corner));
}

void SheetSession::setSelection(CellAddress active, CellAddress anchor, CellAddress corner) {
    m_active = contents().spanAt(active).first;
    m_anchor = anchor;
    m_corner = corner;
    m_tabColumn = -1;
    emit SelectionChanged();
}

void SheetSession::select(const CellRange& range) {
    const CellAddress first = within(range.first);
    setSelection(first, first, within(range.last));
}

void SheetSession::selectRows(int first, int last) {
    const CellAddress start = within({first, 0});
    setSelection(start, start, within({last, m_layout.columns() - 1}));
}

void SheetSession::selectColumns(int first, int last) {
    const CellAddress start = within({0, first});
    setSelection(start, start, within({m_layout.rows() - 1, last}));
}

void SheetSession::selectAll() {
    setSelection(m_active, {0, 0}, {m_layout.rows() - 1, m_layout.columns() - 1});
}

void SheetSession::extendTo(CellAddress corner) {
    setSelection(m_active, m_anchor, within(corner));
}

/// One step leaves a merge as a whole, and passes what is hidden.
CellAddress SheetSession::stepFrom(CellAddress from, Step step, int pageRows) const {
    const CellRange span = contents().spanAt(from);
    const CellRange used = contents().filledRange().value_or(CellRange{});
    switch (step) {
    case Step::RowStart:
        return {from.row, 0};
    case Step::SheetStart:
        return {0, 0};
    case Step::SheetEnd:
        return within(used.last);
    case Step::PageUp:
        return within({from.row - std::max(1, pageRows), from.column});
    case Step::PageDown:
        return within({from.row + std::max(1, pageRows), from.column});
    default:
        break;
    }
    const StepRow& row = *RowOf(step);
    if (row.jumps)
        return JumpFrom(contents(), from, step, m_layout.rows(), m_layout.columns());
    CellAddress at{row.rows > 0   ? span.last.row
                   : row.rows < 0 ? span.first.row
                                  : from.row,
                   row.columns > 0   ? span.last.column
                   : row.columns < 0 ? span.first.column
                                     : from.column};
    for (;;) {
        const CellAddress next = within({at.row + row.rows, at.column + row.columns});
        if (next == at)
            return from;
        at = next;
        if (!m_layout.rect({at, at}).isEmpty())
            return at;
    }
}

void SheetSession::move(Step step, Extend extend, int pageRows) {
    const CellAddress from = extend == Extend::Yes ? m_corner : m_active;
    const CellAddress to = stepFrom(from, step, pageRows);
    if (extend == Extend::Yes)
        setSelection(m_active, m_anchor, to);
    else
        setSelection(to, to, to);
}

void SheetSession::advance(Step step) {
    const CellRange range = selected();
    if (range != contents().spanAt(range.first)) {
        advanceInside(range, step);
        return;
    }
    const bool sideways = step == Step::Left || step == Step::Right;
    const int tabColumn = sideways && m_tabColumn < 0 ? m_active.column : m_tabColumn;
    if (!sideways && tabColumn >= 0)
        m_active.column = tabColumn;
    move(step);
    if (sideways)
        m_tabColumn = tabColumn;
}

void SheetSession::advanceInside(const CellRange& range, Step step) {
    const bool sideways = step == Step::Left || step == Step::Right;
    const int by = step == Step::Left || step == Step::Up ? -1 : 1;
    const int cells = range.rows() * range.columns();
    const int line = sideways ? range.columns() : range.rows();
    const int row = m_active.row - range.first.row;
    const int column = m_active.column - range.first.column;
    int place = sideways ? row * line + column : column * line + row;
    for (int tries = 0; tries < cells; ++tries) {
        place = (place + by + cells) % cells;
        const int major = place / line;
        const int minor = place % line;
        const CellAddress at{range.first.row + (sideways ? major : minor),
                             range.first.column + (sideways ? minor : major)};
        if (contents().spanAt(at).first != at)
            continue;
        setSelection(at, m_anchor, m_corner);
        return;
    }
}

void SheetSession::setEditMode(EditMode mode) {
    m_mode = mode;
    emit EditingChanged();
}

void SheetSession::beginEdit(EditMode mode) {
    if (m_editing)
        setEditMode(mode);
    else
        beginEdit(mode, m_sheet->worksheet().input(m_active));
}

void SheetSession::beginEdit(EditMode mode, const QString& text) {
    commit();
    m_editing = true;
    m_mode = mode;
    m_text = text;
    m_caret = static_cast<int>(text.size());
    m_pointStart = -1;
    emit EditingChanged();
    emit EditTextChanged();
}

void SheetSession::setEditText(const QString& text, int caret) {
    m_text = text;
    m_caret = caret;
    m_pointStart = -1;
}

void SheetSession::endEdit() {
    m_editing = false;
    m_pointStart = -1;
    emit EditingChanged();
}

void SheetSession::commit() {
    if (!m_editing)
        return;
    endEdit();
    EnterText(*m_sheet, m_active, m_text);
}

void SheetSession::commitToSelection() {
    if (!m_editing)
        return;
    endEdit();
    const CellRange range = selected();
    m_sheet->edit([&](Worksheet& cells) {
        for (int row = range.first.row; row <= range.last.row; ++row)
            for (int column = range.first.column; column <= range.last.column; ++column)
                if (const CellAddress at{row, column}; contents().spanAt(at).first == at)
                    cells.enter(at, m_text.startsWith(QLatin1Char('='))
                                        ? ShiftedFormula(m_text, row - m_active.row,
                                                         column - m_active.column)
                                        : m_text);
    });
}

void SheetSession::cancel() {
    if (m_editing)
        endEdit();
}

bool SheetSession::pointAt(const CellRange& range) {
    if (!m_editing || !m_text.startsWith(QLatin1Char('=')))
        return false;
    if (m_pointStart < 0) {
        const QString before = m_text.left(m_caret).trimmed();
        if (before.isEmpty() || !operatorSigns.contains(before.back()))
            return false;
        m_pointStart = m_caret;
        m_pointLength = 0;
    }
    const QString name = RangeText(WithMerges(contents(), range) == contents().spanAt(range.first)
                                       ? CellRange{range.first, range.first}
                                       : range);
    m_text.replace(m_pointStart, m_pointLength, name);
    m_pointLength = static_cast<int>(name.size());
    m_caret = m_pointStart + m_pointLength;
    emit EditTextChanged();
    return true;
}

} // namespace kelvrane
