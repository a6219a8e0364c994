#include "records/frmDataBaseList.h"

#include "records/project_list.h"
#include "widgets/theme.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int shownCharacters = 400; // no column is wide enough for more
constexpr int tipCharacters = 1000;

class CellDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// One line a row, whatever the notes hold.
    QString displayText(const QVariant& value, const QLocale&) const override {
        const QString text = value.toString();
        const QString ends =
            text.size() <= shownCharacters
                ? text
                : text.left(shownCharacters / 2) + QChar(0x2026) + text.right(shownCharacters / 2);
        return ends.simplified();
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& cell) override {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, cell);
        QString text = cell.data().toString().trimmed();
        const int width = option.fontMetrics.horizontalAdvance(text.left(shownCharacters));
        if (width + 3 * theme::Step <= option.rect.width() && !text.contains(u'\n'))
            text.clear();
        else if (text.size() > tipCharacters)
            text = text.left(tipCharacters) + QChar(0x2026);
        const QString tip = QStringLiteral("<p style='white-space:pre-wrap'>%1</p>");
        QToolTip::showText(event->globalPos(),
                           text.isEmpty() ? QString() : tip.arg(text.toHtmlEscaped()), view);
        return true;
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& cell) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, cell);
        return {size.width(),
                std::max(theme::RowHeight, option.fontMetrics.height() + theme::Step)};
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& cell) const override {
        QStyledItemDelegate::initStyleOption(option, cell);
        if (cell.data(ProjectList::InactiveRole).toBool())
            option->palette.setColor(QPalette::Text,
                                     theme::ValueColor(TextRole::Inactive, option->palette));
    }
};

} // namespace

frmDataBaseList::frmDataBaseList(ProjectList* list, QWidget* parent)
    : QTreeView(parent), m_list(list) {
    setObjectName(QStringLiteral("ListView1"));
    setAccessibleName(QStringLiteral("Projects"));
    setModel(list);
    setItemDelegate(new CellDelegate(this));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setSelectionMode(SingleSelection);
    setTextElideMode(Qt::ElideMiddle);
    setFrameShape(NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(false);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header()->setMinimumSectionSize(theme::RowHeight * 2);

    connect(header(), &QHeaderView::sectionClicked, this, &frmDataBaseList::ColumnClicked);
    connect(this, &QTreeView::doubleClicked, this, &frmDataBaseList::RowTaken);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList rows = selectionModel()->selectedRows();
        emit RowChosen(rows.isEmpty() ? 0 : rows.first().row() + 1);
    });
    // Also on the row that is chosen already: a search moves on from it without moving the mark.
    connect(this, &QTreeView::pressed, this,
            [this](const QModelIndex& cell) { emit RowChosen(cell.row() + 1); });
    connect(list, &ProjectList::modelReset, this, &frmDataBaseList::layOutColumns);
    connect(list, &ProjectList::modelReset, this, &frmDataBaseList::showSortArrow);
    connect(list, &ProjectList::headerDataChanged, this, &frmDataBaseList::showSortArrow);
    connect(list, &ProjectList::RowWanted, this, &frmDataBaseList::showRow);
    layOutColumns();
    showSortArrow();
}

/// Five columns fill the width; the others are scrolled to.
void frmDataBaseList::layOutColumns() {
    constexpr int edge = 5;
    constexpr int columnsInView = 5;
    for (int column = 0; column < m_list->columnCount(); ++column)
        setColumnWidth(column, (width() - edge) / columnsInView);
}

void frmDataBaseList::showSortArrow() {
    header()->setSortIndicatorShown(m_list->sortColumn() >= 0);
    header()->setSortIndicator(m_list->sortColumn(), m_list->sortedDescending()
                                                         ? Qt::DescendingOrder
                                                         : Qt::AscendingOrder);
}

void frmDataBaseList::showRow(int row) {
    if (row < 1) {
        clearSelection();
        setCurrentIndex({});
        return;
    }
    setCurrentIndex(m_list->index(row - 1, 0));
    scrollTo(currentIndex());
    setFocus();
}

void frmDataBaseList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit RowChosen(currentIndex().row() + 1);
        emit RowTaken();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void frmDataBaseList::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    layOutColumns();
}

void frmDataBaseList::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (m_list->count() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(theme::SecondaryText(palette()));
    painter.drawText(viewport()->rect().adjusted(theme::Gap, theme::Gap, -theme::Gap, -theme::Gap),
                     int(Qt::AlignCenter) | int(Qt::TextWordWrap),
                     QStringLiteral("The projects of the database.\n"
                                    "Add one on the tab \u201cDatabase Manager\u201d."));
}

} // namespace kelvrane
