#include "widgets/week_table.h"

#include "platform/ports.h"
#include "timekeeping/week_view.h"
#include "widgets/theme.h"

#include <QEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int markSize = 20;
constexpr int totalColumn = WeekView::columnsInAll - 1;

/// Room at a column's sides; the outer ones line up with the panels above.
QMargins Inset(int column) {
    return {column == 0 ? theme::Margin : theme::Step / 2, 0,
            column == totalColumn ? theme::Margin : theme::Step, 0};
}

/// "Mon" and the day's number in a round mark.
class WeekHeader : public QHeaderView {
  public:
    WeekHeader(WeekView* view, QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent), m_view(view) {
        setSectionsClickable(false);
        setHighlightSections(false);
    }
    QSize sizeHint() const override { return {0, theme::RowHeight + theme::Step / 2}; }

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setClipRect(rect);
        QRect inner = rect.marginsRemoved(Inset(section));
        const int day =
            model()->headerData(section, Qt::Horizontal, WeekView::DayOfMonthRole).toInt();
        if (day > 0)
            inner.setRight(drawMark(painter, inner, day, isToday(section)) - theme::Step + 2);
        QFont bold = font();
        bold.setWeight(section == totalColumn || isToday(section) ? QFont::DemiBold
                                                                  : QFont::Normal);
        painter->setFont(bold);
        painter->setPen(theme::SecondaryText(palette()));
        const QString text = model()->headerData(section, Qt::Horizontal).toString();
        const auto side = section == 0 ? Qt::AlignLeft : Qt::AlignRight;
        painter->drawText(inner, side | Qt::AlignVCenter, text);
        painter->setPen(theme::Hairline(palette()));
        painter->drawLine(rect.bottomLeft(), rect.bottomRight());
        painter->restore();
    }

  private:
    bool isToday(int section) const {
        return section > 0 && section < totalColumn && ports.clock &&
               m_view->WeekStartDate.addDays(section - 1) == ports.clock->today();
    }

    /// Returns the left edge of the mark.
    int drawMark(QPainter* painter, const QRect& inner, int day, bool today) const {
        QRect mark(0, 0, markSize, markSize);
        mark.moveCenter(inner.center());
        mark.moveRight(inner.right() + 1);
        const QColor accent = palette().color(QPalette::Highlight);
        painter->setPen(today ? QPen(Qt::NoPen) : QPen(theme::Hairline(palette())));
        painter->setBrush(today ? QBrush(accent) : QBrush(Qt::NoBrush));
        painter->drawRoundedRect(QRectF(mark).adjusted(0.5, 0.5, -0.5, -0.5), theme::Radius,
                                 theme::Radius);
        QFont small = theme::TabularFont(font());
        small.setPointSizeF(std::max(7.0, small.pointSizeF() * 0.85));
        painter->setFont(small);
        painter->setPen(today
                            ? theme::ReadableOn(palette().color(QPalette::HighlightedText), accent)
                            : palette().color(QPalette::Text));
        painter->drawText(mark, Qt::AlignCenter, QString::number(day));
        return mark.left();
    }

    WeekView* m_view;
};

/// Totals stand out, bounds below the increment stand back.
class FigureDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        // A name is plain text, whatever is in it.
        const QString name = index.siblingAtColumn(0).data().toString();
        QToolTip::showText(event->globalPos(), QStringLiteral("<qt>") + name.toHtmlEscaped(), view);
        return true;
    }

    /// The style keeps a small margin of its own around the text.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        if (option.state & QStyle::State_Selected)
            painter->fillRect(option.rect,
                              option.palette.brush(QPalette::Active, QPalette::Highlight));
        QStyleOptionViewItem inner = option;
        inner.rect = option.rect.marginsRemoved(Inset(index.column()) - QMargins(3, 0, 3, 0));
        QStyledItemDelegate::paint(painter, inner, index);
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideMiddle;
        option->state &= ~QStyle::State_HasFocus;
        option->viewItemPosition = QStyleOptionViewItem::Middle;
        if (index.column() == 0)
            return;
        option->font = theme::TabularFont(option->font);
        if (index.column() == totalColumn)
            option->font.setWeight(QFont::DemiBold);
        if (option->text.startsWith(QLatin1Char('<')))
            option->palette.setColor(QPalette::Text, theme::SecondaryText(option->palette));
    }
};

} // namespace

WeekTable::WeekTable(WeekView* view, QWidget* parent) : QTableView(parent) {
    setHorizontalHeader(new WeekHeader(view, this));
    setModel(view);
    setItemDelegate(new FigureDelegate(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(theme::RowHeight);
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setAccessibleName(QStringLiteral("Week View"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setHorizontalScrollMode(ScrollPerPixel);
    horizontalHeader()->setMinimumSectionSize(theme::Margin);
    applyLook();
    const auto repaint = [this] { viewport()->update(); };
    connect(view, &QAbstractItemModel::rowsInserted, this, repaint);
    connect(view, &QAbstractItemModel::rowsRemoved, this, repaint);
    connect(view, &QAbstractItemModel::headerDataChanged, this, [this] { fitColumns(); });
}

void WeekTable::applyLook() {
    horizontalHeader()->setFont(font());
}

void WeekTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        applyLook();
        fitColumns();
    }
}

/// Every figure keeps its room; the names take what is left, and the table scrolls below that.
void WeekTable::fitColumns() {
    const QFontMetrics metrics(font());
    const int day =
        metrics.horizontalAdvance(QStringLiteral("Thur")) + markSize + 2 * theme::Step + 2;
    const int total = metrics.horizontalAdvance(QStringLiteral("Total")) + 2 * theme::Margin;
    const int names = metrics.averageCharWidth() * 14;
    const int days = totalColumn - 1;
    const int spare = viewport()->width() - names - days * day - total;
    // A third of the spare room widens the figures, so that they don't crowd in wide windows.
    const int wider = std::clamp(spare / 3 / (days + 1), 0, 3 * theme::Gap);
    for (int column = 1; column <= days; ++column)
        setColumnWidth(column, day + wider);
    setColumnWidth(totalColumn, total + wider);
    setColumnWidth(0, std::max(names, viewport()->width() - days * (day + wider) - total - wider));
}

void WeekTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    fitColumns();
}

void WeekTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(theme::SecondaryText(palette()));
    painter.drawText(
        viewport()->rect().adjusted(theme::Margin, 0, -theme::Margin, 0),
        Qt::AlignCenter | Qt::TextWordWrap,
        QStringLiteral("The hours of this week, by project and day. They appear once a "
                       "project has been saved with the day."));
}

QSize WeekTable::sizeHint() const {
    return {480, 6 * theme::RowHeight};
}

QSize WeekTable::minimumSizeHint() const {
    return {160, 2 * theme::RowHeight + theme::Step};
}

} // namespace kelvrane
