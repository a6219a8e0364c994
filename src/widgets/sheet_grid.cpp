#include "widgets/sheet_grid.h"

#include "frame/error_report.h"
#include "widgets/cell_line_edit.h"
#include "widgets/sheet_head.h"
#include "widgets/sheet_keys.h"
#include "widgets/theme.h"
#include "worksheet/cell_painter.h"
#include "worksheet/cell_text.h"
#include "worksheet/sheet_actions.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolButton>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr QRgb paper = 0xffffffff;
constexpr QRgb guides = 0xffe4e7eb;
constexpr int ring = 2; ///< around the selection, pixels
constexpr int selectionAlpha = 34;
constexpr double pixelsPerPoint = 96.0 / 72.0;

} // namespace

SheetGrid::SheetGrid(SheetSession* session, QWidget* parent)
    : QAbstractScrollArea(parent), m_session(session), m_columns(addHead(Qt::Horizontal)),
      m_rows(addHead(Qt::Vertical)), m_corner(new QToolButton(this)),
      m_edit(new CellLineEdit(session, viewport())) {
    setObjectName(QStringLiteral("SheetGrid"));
    setAccessibleName(QStringLiteral("Sheet"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::CrossCursor);
    m_corner->setAutoRaise(true);
    m_corner->setFocusPolicy(Qt::NoFocus);
    m_corner->setAccessibleName(QStringLiteral("Select All"));
    m_corner->setToolTip(m_corner->accessibleName());
    m_edit->setObjectName(QStringLiteral("CellEdit"));
    m_edit->setAccessibleName(QStringLiteral("Cell"));
    m_edit->setFrame(false);
    m_edit->setInCell(true);
    m_edit->hide();

    connect(m_corner, &QToolButton::clicked, session, &SheetSession::selectAll);
    connect(m_columns, &SheetHead::sizing, this, [this](int edge) {
        m_columnEdge = edge;
        viewport()->update();
    });
    connect(m_rows, &SheetHead::sizing, this, [this](int edge) {
        m_rowEdge = edge;
        viewport()->update();
    });
    connect(m_columns, &SheetHead::menuWanted, this, &SheetGrid::columnMenuWanted);
    connect(m_rows, &SheetHead::menuWanted, this, &SheetGrid::rowMenuWanted);
    const Worksheet* cells = &session->sheet().worksheet();
    connect(cells, &Worksheet::Changed, this, &SheetGrid::repaintRange);
    connect(cells, &Worksheet::Changed, this, [this](const CellRange& range) {
        if (range.contains(m_session->active()))
            describeActive();
    });
    connect(session, &SheetSession::LayoutChanged, this, &SheetGrid::layOut);
    connect(session, &SheetSession::SelectionChanged, this, &SheetGrid::showSelection);
    connect(session, &SheetSession::EditingChanged, this, &SheetGrid::showEditing);
    connect(session, &SheetSession::EditTextChanged, this, &SheetGrid::placeEditor);
    layOut();
    describeActive();
}

SheetHead* SheetGrid::addHead(Qt::Orientation orientation) {
    auto* head = new SheetHead(orientation, m_session, this);
    head->setObjectName(orientation == Qt::Horizontal ? QStringLiteral("ColumnHead")
                                                      : QStringLiteral("RowHead"));
    connect(head, &SheetHead::pressed, this, [this] {
        Guarded(QStringLiteral("Enter"), [this] { m_session->commit(); });
        setFocus();
        emit Clicked();
    });
    return head;
}

QPoint SheetGrid::offset() const {
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

QRect SheetGrid::sheetRect() const {
    return {-offset(), m_session->layout().size()};
}

QRect SheetGrid::place(const CellRange& range) const {
    return m_session->layout().rect(range).translated(-offset());
}

CellAddress SheetGrid::cellAt(const QPoint& position) const {
    return m_session->layout().cellAt(position + offset());
}

int SheetGrid::pageRows() const {
    return std::max(1, viewport()->height() / SheetContents::DefaultRowHeight - 1);
}

void SheetGrid::layOut() {
    const int head = m_columns->breadth();
    const int side = m_rows->breadth();
    setViewportMargins(side, head, 0, 0);
    const QRect view = viewport()->geometry();
    m_corner->setGeometry(view.left() - side, view.top() - head, side, head);
    m_columns->setGeometry(view.left(), view.top() - head, view.width(), head);
    m_rows->setGeometry(view.left() - side, view.top(), side, view.height());
    const QSize sheet = m_session->layout().size();
    const auto set = [](QScrollBar* bar, int whole, int page, int step) {
        bar->setRange(0, std::max(0, whole - page));
        bar->setPageStep(page);
        bar->setSingleStep(step);
    };
    set(horizontalScrollBar(), sheet.width(), view.width(), SheetContents::DefaultColumnWidth / 2);
    set(verticalScrollBar(), sheet.height(), view.height(), SheetContents::DefaultRowHeight);
    placeEditor();
    viewport()->update();
}

void SheetGrid::scrollTo(CellAddress cell) {
    const QRect box = m_session->layout().rect(m_session->contents().spanAt(cell));
    const auto show = [](QScrollBar* bar, int from, int to) {
        if (from < bar->value() || to - from > bar->pageStep())
            bar->setValue(from);
        else if (to > bar->value() + bar->pageStep())
            bar->setValue(to - bar->pageStep());
    };
    show(horizontalScrollBar(), box.left(), box.right() + 1);
    show(verticalScrollBar(), box.top(), box.bottom() + 1);
}

void SheetGrid::showSelection() {
    const QRect now = m_session->layout().rect(m_session->selected());
    const QMargins room(ring, ring, ring, ring);
    viewport()->update(m_shownSelection.translated(-offset()) + room);
    viewport()->update(now.translated(-offset()) + room);
    m_shownSelection = now;
    const CellRange range = m_session->selected();
    const bool isWhole = range.rows() == m_session->layout().rows() ||
                         range.columns() == m_session->layout().columns();
    if (!isWhole)
        scrollTo(range == m_session->contents().spanAt(range.first) ||
                         range.contains(m_session->corner())
                     ? m_session->corner()
                     : m_session->active());
    describeActive();
}

/// More than the active cell.
bool SheetGrid::selectsMore() const {
    return m_session->selected() != m_session->contents().spanAt(m_session->active());
}

/// What a screen reader says of the cell.
void SheetGrid::describeActive() {
    const CellAddress active = m_session->active();
    const CellRange range = m_session->selected();
    QString description =
        AddressText(active) + QLatin1Char(' ') + m_session->sheet().worksheet().text(active);
    if (selectsMore())
        description += QStringLiteral(", selected ") + RangeText(range);
    setAccessibleDescription(description.trimmed());
}

void SheetGrid::showEditing() {
    if (!m_session->isEditing()) {
        const bool hadFocus = m_edit->hasFocus();
        m_edit->hide();
        if (hadFocus)
            setFocus();
        return;
    }
    const CellStyle& style = m_session->sheet().worksheet().style(m_session->active());
    const SheetContents& contents = m_session->contents();
    QFont font = SheetFont(style.fontFamily.isEmpty() ? contents.fontFamily : style.fontFamily);
    font.setPixelSize(std::max(1, qRound(ShownPointSize(contents, style) * pixelsPerPoint)));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    m_edit->setFont(font);
    QPalette colors = palette();
    colors.setColor(QPalette::Base, QColor::fromRgb(paper));
    colors.setColor(QPalette::Text, Qt::black);
    m_edit->setPalette(colors);
    m_edit->showEdit();
    scrollTo(m_session->active());
    placeEditor();
    m_edit->show();
    if (hasFocus())
        m_edit->setFocus();
}

/// Over its cell, and as far to the right as the text needs.
void SheetGrid::placeEditor() {
    if (!m_session->isEditing())
        return;
    const QRect box = place(m_session->contents().spanAt(m_session->active()));
    const int wanted =
        m_edit->fontMetrics().horizontalAdvance(m_session->editText()) + 4 * CellPadX + ring;
    const int room = std::max(box.width(), viewport()->width() - box.left() - ring);
    m_edit->setGeometry(box.left(), box.top(), std::clamp(wanted, box.width(), room) - 1,
                        std::max(box.height(), m_edit->fontMetrics().height() + 2) - 1);
}

void SheetGrid::repaintRange(const CellRange& range) {
    // Texts run over into other columns, borders into the next rows.
    const QRect rows = place({{range.first.row, 0}, {range.last.row, 0}});
    viewport()->update(0, rows.top() - ring, viewport()->width(), rows.height() + 2 * ring);
}

bool SheetGrid::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (ActionOfKey(key) || MoveOfKey(key) || IsTyped(key)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

/// Tab is the sheet's; F6 leads out of it.
bool SheetGrid::focusNextPrevChild(bool /*next*/) {
    return false;
}

void SheetGrid::keyPressEvent(QKeyEvent* event) {
    Guarded(QStringLiteral("Key"), [&] { takeKey(event); });
}

void SheetGrid::takeKey(QKeyEvent* event) {
    // What the line doesn't take comes back here.
    if (m_session->isEditing() && !m_edit->hasFocus() && !m_forwarding) {
        m_forwarding = true;
        QCoreApplication::sendEvent(m_edit, event);
        m_forwarding = false;
        return;
    }
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    if (const SheetAction* action = ActionOfKey(*event)) {
        emit actionWanted(*action);
    } else if (const std::optional<Step> move = MoveOfKey(*event)) {
        m_session->commit();
        m_session->move(*move, shift ? Extend::Yes : Extend::No, pageRows());
    } else if (const std::optional<Step> advance = AdvanceOfKey(*event)) {
        m_session->commit();
        m_session->advance(*advance);
    } else if (event->key() == Qt::Key_Escape && selectsMore()) {
        m_session->select({m_session->active(), m_session->active()}); // the window stays
    } else if (!typesText(*event)) {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

bool SheetGrid::typesText(const QKeyEvent& event) {
    const bool erases = ErasesCell(event);
    if (!erases && !IsTyped(event))
        return false;
    m_session->beginEdit(EditMode::Typing, erases ? QString() : event.text());
    return true;
}

void SheetGrid::inputMethodEvent(QInputMethodEvent* event) {
    if (!m_session->isEditing())
        m_session->beginEdit(EditMode::Typing, {});
    QCoreApplication::sendEvent(m_edit, event);
}

QVariant SheetGrid::inputMethodQuery(Qt::InputMethodQuery query) const {
    return query == Qt::ImCursorRectangle
               ? QVariant(place({m_session->active(), m_session->active()}))
               : QAbstractScrollArea::inputMethodQuery(query);
}

void SheetGrid::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    if (const QRect exposed = event->rect() & sheetRect(); !exposed.isEmpty())
        paintSheet(painter, exposed);
    paintSelection(painter);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DashLine));
    if (m_columnEdge >= 0)
        painter.drawLine(m_columnEdge, 0, m_columnEdge, viewport()->height());
    if (m_rowEdge >= 0)
        painter.drawLine(0, m_rowEdge, viewport()->width(), m_rowEdge);
}

void SheetGrid::paintSheet(QPainter& painter, const QRect& exposed) {
    painter.fillRect(exposed, QColor::fromRgb(paper));
    // A pixel more, for borders of what lies beside.
    const CellRange range = m_session->layout().rangeIn(
        exposed.translated(offset()).adjusted(-ring, -ring, ring, ring));
    painter.save();
    painter.setClipRect(exposed);
    painter.translate(place(range).topLeft());
    const SheetContents shown = m_session->shown();
    PaintGuides(painter, shown, range, guides, paper);
    PaintCells(painter, shown, range);
    painter.restore();
}

void SheetGrid::paintSelection(QPainter& painter) {
    const CellRange range = m_session->selected();
    const QRect box = place(range);
    const QRect active = place(m_session->contents().spanAt(m_session->active()));
    // On white paper, whatever the palette.
    QColor accent = theme::ReadableOn(palette().color(QPalette::Highlight), Qt::white, 3);
    QColor wash = accent;
    wash.setAlpha(selectionAlpha);
    QRegion washed(box);
    washed -= active;
    for (const QRect& part : washed)
        painter.fillRect(part, wash);
    if (!hasFocus() && !m_edit->hasFocus())
        accent = theme::SecondaryText(palette());
    // Half of it lies inside, so that it is seen at the sheet's own edges too.
    const QRect outer = box.adjusted(-1, -1, 0, 0);
    const QRect inner = outer.adjusted(ring, ring, -ring, -ring);
    for (const QRect& side : QRegion(outer) - QRegion(inner))
        painter.fillRect(side, accent);
}

void SheetGrid::mousePressEvent(QMouseEvent* event) {
    emit Clicked();
    if (!sheetRect().contains(event->pos()))
        return;
    const CellAddress cell = cellAt(event->pos());
    const bool left = event->button() == Qt::LeftButton;
    if (left && m_session->pointAt({cell, cell})) {
        m_pointing = true;
        m_pointStart = cell;
        m_edit->setFocus();
        return;
    }
    Guarded(QStringLiteral("Enter"), [this] { m_session->commit(); });
    setFocus();
    m_selecting = left;
    if (left && event->modifiers() & Qt::ShiftModifier)
        m_session->extendTo(cell);
    else if (left || !m_session->selected().contains(cell))
        m_session->select({cell, cell});
}

void SheetGrid::mouseMoveEvent(QMouseEvent* event) {
    const CellAddress cell = cellAt(event->pos());
    if (m_pointing)
        m_session->pointAt(RangeBetween(m_pointStart, cell));
    else if (m_selecting && cell != m_session->corner())
        m_session->extendTo(cell);
}

void SheetGrid::mouseReleaseEvent(QMouseEvent* /*event*/) {
    m_pointing = false;
    m_selecting = false;
}

void SheetGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !sheetRect().contains(event->pos()) ||
        m_session->isEditing())
        return;
    m_selecting = false;
    m_session->beginEdit(EditMode::InPlace);
}

void SheetGrid::contextMenuEvent(QContextMenuEvent* event) {
    const QRect active = place({m_session->active(), m_session->active()});
    emit cellMenuWanted(event->reason() == QContextMenuEvent::Keyboard
                            ? viewport()->mapToGlobal(active.bottomLeft())
                            : event->globalPos());
}

void SheetGrid::resizeEvent(QResizeEvent* /*event*/) {
    layOut();
}

void SheetGrid::scrollContentsBy(int dx, int dy) {
    viewport()->scroll(dx, dy);
    m_columns->setOffset(horizontalScrollBar()->value());
    m_rows->setOffset(verticalScrollBar()->value());
    placeEditor();
}

void SheetGrid::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void SheetGrid::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void SheetGrid::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}

} // namespace kelvrane
