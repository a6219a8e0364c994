#include "widgets/sheet_head.h"

#include "frame/error_report.h"
#include "widgets/theme.h"
#include "worksheet/sheet_commands.h"

#include <QMouseEvent>
#include <QPainter>

namespace kelvrane {

namespace {

constexpr int gripReach = 4;
constexpr int selectedMark = 2;

} // namespace

SheetHead::SheetHead(Qt::Orientation orientation, SheetSession* session, QWidget* parent)
    : QWidget(parent), m_orientation(orientation), m_session(session) {
    setMouseTracking(true);
    setAccessibleName(isColumns() ? QStringLiteral("Columns") : QStringLiteral("Rows"));
    connect(session, &SheetSession::SelectionChanged, this, [this] { update(); });
    connect(session, &SheetSession::LayoutChanged, this, [this] { update(); });
}

void SheetHead::setOffset(int offset) {
    m_offset = offset;
    update();
}

int SheetHead::breadth() const {
    const int digits = QString::number(m_session->layout().rows()).size() > 3 ? 5 : 3;
    return isColumns() ? fontMetrics().height() + theme::Step
                       : fontMetrics().horizontalAdvance(QString(digits, QLatin1Char('0'))) +
                             2 * theme::Step;
}

int SheetHead::count() const {
    return isColumns() ? m_session->layout().columns() : m_session->layout().rows();
}

int SheetHead::edge(int section) const {
    const SheetLayout& layout = m_session->layout();
    return (isColumns() ? layout.left(section) : layout.top(section)) - m_offset;
}

int SheetHead::sectionAt(int position) const {
    const SheetLayout& layout = m_session->layout();
    return isColumns() ? layout.columnAt(position + m_offset) : layout.rowAt(position + m_offset);
}

/// Of hidden ones before an edge, the last is pulled out again.
int SheetHead::sizedAt(int position) const {
    const int section = sectionAt(position);
    if (position >= edge(section + 1) - gripReach && position <= edge(section + 1) + gripReach)
        return section;
    return section > 0 && position <= edge(section) + gripReach ? section - 1 : -1;
}

bool SheetHead::isSelected(int section, bool wholly) const {
    const CellRange range = m_session->selected();
    const SheetLayout& layout = m_session->layout();
    if (isColumns())
        return section >= range.first.column && section <= range.last.column &&
               (!wholly || range.rows() == layout.rows());
    return section >= range.first.row && section <= range.last.row &&
           (!wholly || range.columns() == layout.columns());
}

void SheetHead::select(int first, int last) {
    if (isColumns())
        m_session->selectColumns(first, last);
    else
        m_session->selectRows(first, last);
}

/// With the columns (rows) that are selected as wholes, all of them get the size.
CellRange SheetHead::sizedRange(int section) const {
    if (isSelected(section, true))
        return m_session->selected();
    return isColumns() ? CellRange{{0, section}, {0, section}}
                       : CellRange{{section, 0}, {section, 0}};
}

void SheetHead::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QColor paper = palette().color(QPalette::Window);
    const QColor line = theme::Hairline(palette());
    const QColor accent = palette().color(QPalette::Highlight);
    painter.fillRect(event->rect(), paper);
    const int first = sectionAt(along(event->rect().topLeft()));
    const int last = sectionAt(along(event->rect().bottomRight()));
    for (int section = first; section <= last; ++section) {
        const int from = edge(section);
        const int size = edge(section + 1) - from;
        if (size == 0)
            continue;
        const QRect box =
            isColumns() ? QRect(from, 0, size, height()) : QRect(0, from, width(), size);
        const bool chosen = isSelected(section, false);
        if (chosen) {
            QColor wash = accent;
            wash.setAlpha(isSelected(section, true) ? 110 : 46);
            painter.fillRect(box, wash);
            painter.fillRect(
                isColumns()
                    ? QRect(box.left(), box.bottom() - selectedMark + 1, box.width(), selectedMark)
                    : QRect(box.right() - selectedMark + 1, box.top(), selectedMark, box.height()),
                accent);
        }
        painter.fillRect(isColumns() ? QRect(box.right(), box.top(), 1, box.height())
                                     : QRect(box.left(), box.bottom(), box.width(), 1),
                         line);
        painter.setPen(chosen ? palette().color(QPalette::WindowText)
                              : theme::SecondaryText(palette()));
        painter.drawText(box, Qt::AlignCenter,
                         isColumns() ? ColumnName(section) : QString::number(section + 1));
    }
    painter.fillRect(isColumns() ? QRect(0, height() - 1, width(), 1)
                                 : QRect(width() - 1, 0, 1, height()),
                     line);
}

void SheetHead::mousePressEvent(QMouseEvent* event) {
    emit pressed();
    const int position = along(event->pos());
    if (position > edge(count()) + gripReach)
        return;
    if (event->button() == Qt::LeftButton)
        m_sized = sizedAt(position);
    if (m_sized >= 0) {
        m_grip = edge(m_sized + 1) - position;
        return;
    }
    const int section = sectionAt(position);
    if (event->button() == Qt::LeftButton) {
        const CellAddress anchor = m_session->active();
        const bool extends = event->modifiers() & Qt::ShiftModifier;
        m_pressed = extends ? (isColumns() ? anchor.column : anchor.row) : section;
        select(m_pressed, section);
    } else if (!isSelected(section, true)) {
        select(section, section);
    }
}

void SheetHead::mouseMoveEvent(QMouseEvent* event) {
    const int position = along(event->pos());
    if (m_sized >= 0)
        emit sizing(std::max(edge(m_sized), position + m_grip));
    else if (m_pressed >= 0)
        select(m_pressed, sectionAt(position));
    else if (sizedAt(position) >= 0)
        setCursor(isColumns() ? Qt::SplitHCursor : Qt::SplitVCursor);
    else
        unsetCursor();
}

void SheetHead::mouseReleaseEvent(QMouseEvent* event) {
    m_pressed = -1;
    const int sized = std::exchange(m_sized, -1);
    if (sized < 0)
        return;
    emit sizing(-1);
    const int size = std::max(0, along(event->pos()) + m_grip - edge(sized));
    if (size == edge(sized + 1) - edge(sized))
        return;
    Guarded(QStringLiteral("Size"), [&] {
        (isColumns() ? SetColumnWidths : SetRowHeights)(m_session->sheet(), sizedRange(sized),
                                                        size);
    });
}

void SheetHead::mouseDoubleClickEvent(QMouseEvent* event) {
    const int sized = sizedAt(along(event->pos()));
    if (sized < 0 || event->button() != Qt::LeftButton)
        return;
    m_sized = -1;
    Guarded(QStringLiteral("Fit"),
            [&] { (isColumns() ? FitColumns : FitRows)(m_session->sheet(), sizedRange(sized)); });
}

void SheetHead::contextMenuEvent(QContextMenuEvent* event) {
    emit menuWanted(event->globalPos());
}

} // namespace kelvrane
