#include "widgets/sheet_view.h"

#include "widgets/theme.h"
#include "worksheet/cell_measures.h"
#include "worksheet/page_painter.h"
#include "worksheet/sheet_layout.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int paperMargin = 36; ///< as on print, pixels
constexpr QRgb guides = 0xffd5d9de;
constexpr QRgb paper = 0xffffffff;

struct ScrollRow {
    int key;
    Qt::Orientation orientation;
    QAbstractSlider::SliderAction action;
};
constexpr ScrollRow scrollRows[] = {
    {Qt::Key_Up, Qt::Vertical, QAbstractSlider::SliderSingleStepSub},
    {Qt::Key_Down, Qt::Vertical, QAbstractSlider::SliderSingleStepAdd},
    {Qt::Key_Left, Qt::Horizontal, QAbstractSlider::SliderSingleStepSub},
    {Qt::Key_Right, Qt::Horizontal, QAbstractSlider::SliderSingleStepAdd},
    {Qt::Key_PageUp, Qt::Vertical, QAbstractSlider::SliderPageStepSub},
    {Qt::Key_PageDown, Qt::Vertical, QAbstractSlider::SliderPageStepAdd},
    {Qt::Key_Space, Qt::Vertical, QAbstractSlider::SliderPageStepAdd},
    {Qt::Key_Home, Qt::Vertical, QAbstractSlider::SliderToMinimum},
    {Qt::Key_End, Qt::Vertical, QAbstractSlider::SliderToMaximum},
};

} // namespace

SheetView::SheetView(QWidget* parent) : QAbstractScrollArea(parent) {
    setAccessibleName(QStringLiteral("Sheet"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

void SheetView::setContents(const SheetContents& contents) {
    m_contents = WithFittedRows(contents);
    m_shown = ShownRange(contents);
    m_sheet = RangeRect(m_contents, m_shown).size().toSize();
    setAccessibleDescription(contents.title);
    layOut();
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
    viewport()->update();
}

/// Centred where there is room.
QRect SheetView::paperRect() const {
    const QSize size = m_sheet + 2 * QSize(paperMargin, paperMargin);
    const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const int left = std::max(theme::Margin, (viewport()->width() - size.width()) / 2);
    return {QPoint(left, theme::Margin) - scrolled, size};
}

void SheetView::layOut() {
    const QSize whole =
        m_sheet + 2 * QSize(paperMargin + theme::Margin, paperMargin + theme::Margin);
    const auto set = [](QScrollBar* bar, int size, int page, int step) {
        bar->setRange(0, std::max(0, size - page));
        bar->setPageStep(page);
        bar->setSingleStep(step);
    };
    set(horizontalScrollBar(), whole.width(), viewport()->width(),
        SheetContents::DefaultColumnWidth);
    set(verticalScrollBar(), whole.height(), viewport()->height(),
        2 * SheetContents::DefaultRowHeight);
}

void SheetView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    const QRect sheet = paperRect();
    painter.fillRect(sheet.adjusted(-1, -1, 1, 1), theme::Hairline(palette()));
    painter.fillRect(sheet, QColor::fromRgb(paper));
    const QPoint corner = sheet.topLeft() + QPoint(paperMargin, paperMargin);
    const QRect exposed = event->rect() & sheet;
    if (exposed.isEmpty())
        return;
    const SheetLayout layout(m_contents, m_shown.rows(), m_shown.columns());
    const CellRange range = layout.rangeIn(exposed.translated(-corner));
    painter.setClipRect(exposed);
    painter.translate(corner + layout.rect(range).topLeft());
    if (m_contents.showsGrid)
        PaintGuides(painter, m_contents, range, guides, paper);
    PaintCells(painter, m_contents, range);
}

void SheetView::resizeEvent(QResizeEvent* /*event*/) {
    layOut();
}

void SheetView::scrollContentsBy(int dx, int dy) {
    viewport()->scroll(dx, dy);
}

void SheetView::keyPressEvent(QKeyEvent* event) {
    const auto* row = std::ranges::find(scrollRows, event->key(), &ScrollRow::key);
    if (row == std::end(scrollRows)) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    (row->orientation == Qt::Vertical ? verticalScrollBar() : horizontalScrollBar())
        ->triggerAction(row->action);
}

void SheetView::contextMenuEvent(QContextMenuEvent* event) {
    emit menuWanted(event->globalPos());
}

} // namespace kelvrane
