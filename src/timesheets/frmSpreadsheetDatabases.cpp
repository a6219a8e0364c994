#include "timesheets/frmSpreadsheetDatabases.h"

#include "frame/error_report.h"
#include "timesheets/database_list.h"
#include "widgets/captions.h"
#include "widgets/heading_line.h"
#include "widgets/keyed_menu.h"
#include "widgets/theme.h"

#include <QContextMenuEvent>
#include <QIdentityProxyModel>
#include <QListView>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr int iconLeft = 4; ///< within the column whose clicks flip the state
constexpr int iconSide = 16;
constexpr int textLeft = iconLeft + iconSide + theme::Step;
constexpr int inset = 2; ///< of the lit row
constexpr QSize startSize(260, 160);

const KeyedItem& ItemAt(const QModelIndex& index) {
    return Databases().smuiSelectDBs.items().at(index.row());
}

/// What tool tips and screen readers say of the rows.
class RowTexts final : public QIdentityProxyModel {
  public:
    using QIdentityProxyModel::QIdentityProxyModel;
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid())
            return {};
        const KeyedItem& item = ItemAt(index);
        if (role == Qt::ToolTipRole)
            return PlainToolTip(item.value);
        if (role == Qt::AccessibleTextRole)
            return QString(item.caption + (item.ticked ? QStringLiteral(", accepted")
                                                       : QStringLiteral(", declined")));
        return QIdentityProxyModel::data(index, role);
    }
};

class RowPainter final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {1, qMax(theme::RowHeight, option.fontMetrics.height() + 8)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const KeyedItem& item = ItemAt(index);
        painter->save();
        paintBackground(*painter, option);
        const QColor quiet = theme::SecondaryText(option.palette);
        const QColor mark =
            item.ticked ? theme::ValueColor(TextRole::Value, option.palette) : quiet;
        painter->drawPixmap(
            option.rect.left() + iconLeft,
            option.rect.top() + (option.rect.height() - iconSide) / 2,
            theme::IconPixmap(item.image, iconSide, mark, painter->device()->devicePixelRatioF()));
        painter->setFont(option.font);
        const int textWidth = option.rect.width() - textLeft - theme::Step;
        const QString alias = OneLine(item.caption);
        const int aliasWidth = qMin(option.fontMetrics.horizontalAdvance(alias), textWidth);
        QRect place = option.rect.adjusted(textLeft, 0, -theme::Step, 0);
        painter->setPen(item.ticked ? option.palette.color(QPalette::Text) : quiet);
        drawElided(*painter, place, alias, Qt::ElideRight);
        place.setLeft(place.left() + aliasWidth + theme::Margin);
        painter->setPen(quiet);
        if (item.value != item.caption && place.width() > 6 * theme::Margin)
            drawElided(*painter, place, OneLine(item.value), Qt::ElideMiddle);
        painter->restore();
    }

  private:
    static void drawElided(QPainter& painter, const QRect& place, const QString& text,
                           Qt::TextElideMode mode) {
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(text, mode, place.width()));
    }

    static void paintBackground(QPainter& painter, const QStyleOptionViewItem& option) {
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF place = QRectF(option.rect).adjusted(inset, 0.5, -inset, -0.5);
        QColor wash = Qt::transparent;
        if (option.state.testFlag(QStyle::State_Selected)) {
            wash = option.palette.color(QPalette::Highlight);
            wash.setAlphaF(theme::IsDark(option.palette) ? 0.30F : 0.13F);
        } else if (option.state.testFlag(QStyle::State_MouseOver)) {
            wash = theme::Wash(option.palette, 0.05);
        }
        painter.setPen(option.state.testFlag(QStyle::State_HasFocus)
                           ? QPen(option.palette.color(QPalette::Highlight), 1.5)
                           : QPen(Qt::NoPen));
        painter.setBrush(wash);
        painter.drawRoundedRect(place, theme::Radius, theme::Radius);
    }
};

class DatabaseView final : public QListView {
  public:
    explicit DatabaseView(QWidget* parent) : QListView(parent), m_menu(new QMenu(this)) {
        auto* rows = new RowTexts(this);
        rows->setSourceModel(&Databases().smuiSelectDBs);
        setModel(rows);
        setItemDelegate(new RowPainter(this));
        setUniformItemSizes(true);
        setFrameShape(QFrame::NoFrame);
        setEditTriggers(NoEditTriggers);
        setSelectionMode(SingleSelection);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setTabKeyNavigation(false);
        viewport()->setAttribute(Qt::WA_Hover);
        viewport()->setAutoFillBackground(false);
        m_menu->setObjectName(QStringLiteral("mnuSelectDBPopup"));
        BindMenu(m_menu, &Databases().mnuSelectDBPopup);
    }

    void mark(const QString& key) {
        const int row = Databases().smuiSelectDBs.rowOf(key);
        setCurrentIndex(row < 0 ? QModelIndex() : model()->index(row, 0));
    }

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        QListView::mousePressEvent(event);
        click(indexAt(event->pos()));
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        QListView::mouseReleaseEvent(event);
        Guarded(QStringLiteral("smuiSelectDBs_MouseUp"),
                [&] { smuiSelectDBs_MouseUp(event->button(), theme::ToTwips(event->pos().x())); });
        if (event->button() == Qt::RightButton)
            m_menu->popup(event->globalPosition().toPoint());
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && !indexAt(event->pos()).isValid())
            Guarded(QStringLiteral("smuiSelectDBs_Activate"), smuiSelectDBs_Activate);
        else
            mousePressEvent(event); // the second click counts as one of its own
    }

    void keyPressEvent(QKeyEvent* event) override {
        // The focus lights a row that nobody has selected yet: the first key does.
        const bool selects = event->key() == Qt::Key_Space || event->key() == Qt::Key_Down ||
                             event->key() == Qt::Key_Up;
        if (selects && SelectedDBIndex == -1 && currentIndex().isValid()) {
            click(currentIndex());
            if (event->key() != Qt::Key_Space)
                return;
        }
        bool taken = false;
        if (event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier)
            Guarded(QStringLiteral("smuiSelectDBs_KeyDown"), [&] {
                taken = true; // also when it fails
                taken = smuiSelectDBs_KeyDown(event->key());
            });
        if (taken)
            return;
        const QModelIndex before = currentIndex();
        QListView::keyPressEvent(event);
        if (currentIndex() != before)
            click(currentIndex());
    }

    /// By mouse the menu comes with the release.
    void contextMenuEvent(QContextMenuEvent* event) override {
        event->accept();
        if (event->reason() == QContextMenuEvent::Mouse)
            return;
        PrepareDatabaseMenu();
        const QRect row = visualRect(currentIndex());
        m_menu->popup(viewport()->mapToGlobal(row.bottomLeft() + QPoint(textLeft, 0)));
    }

    /// The base class would choose a neighbour that nobody asked for.
    void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override {
        if (currentIndex().row() >= first && currentIndex().row() <= last)
            setCurrentIndex(QModelIndex());
        QListView::rowsAboutToBeRemoved(parent, first, last);
    }

    void paintEvent(QPaintEvent* event) override {
        QListView::paintEvent(event);
        if (model()->rowCount() > 0)
            return;
        QPainter painter(viewport());
        painter.setPen(theme::SecondaryText(palette()));
        painter.drawText(
            viewport()->rect().adjusted(theme::Margin, theme::Step, -theme::Margin, -theme::Step),
            Qt::AlignCenter | Qt::TextWordWrap,
            QStringLiteral("No databases to calculate from.\nEnter or a right click adds "
                           "one."));
    }

  private:
    static void click(const QModelIndex& index) {
        if (index.isValid())
            Guarded(QStringLiteral("smuiSelectDBs_ItemClick"),
                    [&] { smuiSelectDBs_ItemClick(ItemAt(index).key); });
    }

    QMenu* m_menu;
};

} // namespace

frmSpreadsheetDatabases::frmSpreadsheetDatabases(QWidget* parent) : Card(parent) {
    WireDatabaseList();
    setObjectName(QStringLiteral("smuiSelectDBs"));
    const QString heading = QStringLiteral("Select Databases");
    setAccessibleName(heading);
    auto* view = new DatabaseView(this);
    view->setAccessibleName(heading);
    m_view = view;
    setFocusProxy(view);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 1, 0, theme::Step);
    layout->setSpacing(theme::Step / 2);
    layout->addWidget(new HeadingLine(heading, this));
    layout->addWidget(view, 1);
    connect(&Databases(), &DatabaseList::ItemMarked, view,
            [view](const QString& key) { view->mark(key); });
}

QRect frmSpreadsheetDatabases::rowRect(const QString& key) const {
    const int row = Databases().smuiSelectDBs.rowOf(key);
    if (row < 0)
        return {};
    const QRect place = m_view->visualRect(m_view->model()->index(row, 0));
    return {m_view->viewport()->mapTo(this, place.topLeft()), place.size()};
}

QSize frmSpreadsheetDatabases::sizeHint() const {
    return startSize;
}

} // namespace kelvrane
