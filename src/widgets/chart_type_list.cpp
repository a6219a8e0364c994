#include "widgets/chart_type_list.h"

#include "charts/chart_types.h"
#include "platform/keyed_items.h"
#include "widgets/chart_thumbnail.h"
#include "widgets/theme.h"

#include <QIdentityProxyModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr QSize cellSize(106, 96);
constexpr QSize pictureSize(76, 50);
constexpr int inset = 2;
constexpr int columns = 3;

/// Rows are plain names; the mark is painted, no box stands beside it.
class TypeNames final : public QIdentityProxyModel {
  public:
    using QIdentityProxyModel::QIdentityProxyModel;
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::CheckStateRole || role == Qt::DecorationRole || role == Qt::ToolTipRole)
            return {};
        if (role == Qt::AccessibleTextRole && index.data(KeyedItems::TickedRole).toBool())
            return QString(index.data().toString() + QStringLiteral(", chosen"));
        return QIdentityProxyModel::data(index, role);
    }
};

QPixmap pictureOf(const QString& description, double pixelRatio, const QPalette& palette) {
    const QString name = QStringLiteral("kelvrane/type/%1/%2/%3")
                             .arg(description)
                             .arg(pixelRatio)
                             .arg(palette.color(QPalette::Base).rgba());
    QPixmap picture;
    if (QPixmapCache::find(name, &picture))
        return picture;
    const auto record = std::ranges::find(ChartTypes, description, &ChartTypeRecord::Description);
    if (record == ChartTypes.end())
        return {};
    picture = ChartThumbnail(static_cast<chartspace::ChartType>(record->ChartTypeValue),
                             pictureSize, pixelRatio, palette);
    QPixmapCache::insert(name, picture);
    return picture;
}

class TypePainter final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return cellSize;
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        painter->save();
        paintGround(*painter, option, index.data(KeyedItems::TickedRole).toBool());
        const QString name = index.data().toString();
        const QRect cell = option.rect.adjusted(theme::Step, theme::Step, -theme::Step, -3);
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(cell.left() + (cell.width() - pictureSize.width()) / 2, cell.top(),
                            pictureOf(name, ratio, option.palette));
        painter->setPen(option.palette.color(QPalette::Text));
        painter->setFont(option.font);
        painter->drawText(cell.adjusted(-3, pictureSize.height() + 3, 3, 0),
                          int(Qt::AlignHCenter) | int(Qt::AlignTop) | int(Qt::TextWordWrap), name);
        painter->restore();
    }

  private:
    static void paintGround(QPainter& painter, const QStyleOptionViewItem& option, bool chosen) {
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor highlight = option.palette.color(QPalette::Highlight);
        QColor wash = Qt::transparent;
        if (chosen) {
            wash = highlight;
            wash.setAlphaF(theme::IsDark(option.palette) ? 0.30F : 0.13F);
        } else if (option.state.testFlag(QStyle::State_MouseOver)) {
            wash = theme::Wash(option.palette);
        }
        painter.setPen(option.state.testFlag(QStyle::State_HasFocus) ? QPen(highlight, 1.5)
                                                                     : QPen(Qt::NoPen));
        painter.setBrush(wash);
        painter.drawRoundedRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset),
                                theme::Radius, theme::Radius);
    }
};

} // namespace

ChartTypeList::ChartTypeList(KeyedItems* items, QWidget* parent)
    : QListView(parent), m_items(items) {
    auto* names = new TypeNames(this);
    names->setSourceModel(items);
    setModel(names);
    setItemDelegate(new TypePainter(this));
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setSelectionMode(SingleSelection);
    setFrameShape(NoFrame);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    viewport()->setAttribute(Qt::WA_Hover);
    setMinimumWidth(columns * cellSize.width() + verticalScrollBar()->sizeHint().width() +
                    theme::Step);
}

QSize ChartTypeList::sizeHint() const {
    return {minimumWidth(), columns * cellSize.height() + theme::Margin};
}

void ChartTypeList::choose(const QModelIndex& index) {
    if (index.isValid())
        m_items->click(index.data(KeyedItems::KeyRole).toString());
}

void ChartTypeList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
        event->key() == Qt::Key_Space)
        choose(currentIndex());
    else
        QListView::keyPressEvent(event);
}

void ChartTypeList::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        choose(indexAt(event->position().toPoint()));
}

/// The focus lights the chosen type first.
void ChartTypeList::focusInEvent(QFocusEvent* event) {
    for (int row = 0; !currentIndex().isValid() && row < model()->rowCount(); ++row)
        if (const QModelIndex index = model()->index(row, 0);
            index.data(KeyedItems::TickedRole).toBool())
            setCurrentIndex(index);
    QListView::focusInEvent(event);
}

} // namespace kelvrane
