#include "widgets/help_lists.h"

#include "widgets/quiet_label.h"
#include "widgets/theme.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

#include <functional>

namespace kelvrane {

namespace {

constexpr int pageRole = Qt::UserRole + 1;
constexpr int wordsRole = Qt::UserRole + 2;
constexpr int hitPad = 8;
constexpr int hitLines = 3; // title, two of words

class RowDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), qMax(size.height(), theme::RowHeight)};
    }
};

/// A page found: its title over the words around the place.
class HitDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option,
                   const QModelIndex& /*index*/) const override {
        return {1, hitLines * option.fontMetrics.height() + 2 * hitPad};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem row = option;
        initStyleOption(&row, index);
        row.text.clear();
        row.widget->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);
        const bool selected = row.state & QStyle::State_Selected;
        const QRect place = row.rect.adjusted(theme::Step, hitPad, -theme::Step, -hitPad);
        QFont title = row.font;
        title.setWeight(QFont::DemiBold);
        const QColor strong =
            row.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
        painter->setPen(strong);
        painter->setFont(title);
        const QString name = index.data().toString();
        painter->drawText(place, Qt::AlignTop | Qt::TextSingleLine,
                          QFontMetrics(title).elidedText(name, Qt::ElideRight, place.width()));
        painter->setFont(row.font);
        if (!selected)
            painter->setPen(theme::SecondaryText(row.palette));
        painter->drawText(place.adjusted(0, row.fontMetrics.height(), 0, 0),
                          Qt::AlignTop | Qt::TextWordWrap, index.data(wordsRole).toString());
    }
};

void dress(QAbstractItemView* view, const char* name, const QString& caption) {
    view->setObjectName(QString::fromLatin1(name));
    view->setAccessibleName(caption);
    view->setFrameShape(QFrame::NoFrame);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setTextElideMode(Qt::ElideRight);
    view->setTabKeyNavigation(false);
}

QLineEdit* createField(const char* name, const QString& caption, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(QString::fromLatin1(name));
    field->setAccessibleName(caption);
    field->setPlaceholderText(caption);
    field->setClearButtonEnabled(true);
    return field;
}

QVBoxLayout* createColumn(QWidget* owner) {
    auto* column = new QVBoxLayout(owner);
    column->setContentsMargins(theme::Step, theme::Step, theme::Step, theme::Step);
    column->setSpacing(theme::Step);
    return column;
}

/// A choice: one click or Enter. The field's arrow down and Enter reach the list.
template <typename Owner, typename Choose>
void bindList(Owner* owner, QAbstractItemView* view, Choose choose) {
    QObject::connect(view, &QAbstractItemView::clicked, owner, choose);
    QObject::connect(view, &QAbstractItemView::activated, owner, choose);
}

/// Lets the arrow keys of a field walk through the list below it, and Enter choose there.
class FieldKeys final : public QObject {
  public:
    FieldKeys(QLineEdit* field, QAbstractItemView* list) : QObject(field), m_list(list) {
        field->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int row = m_list->currentIndex().row();
        if (key == Qt::Key_Down || key == Qt::Key_Up)
            turnTo(qMax(0, row + (key == Qt::Key_Down ? 1 : -1)));
        else if (key == Qt::Key_Return || key == Qt::Key_Enter)
            choose(qMax(0, row));
        else
            return false;
        return true;
    }

  private:
    void turnTo(int row) {
        if (const QModelIndex index = m_list->model()->index(row, 0); index.isValid())
            m_list->setCurrentIndex(index);
    }
    void choose(int row) {
        turnTo(row);
        if (m_list->currentIndex().isValid())
            emit m_list->activated(m_list->currentIndex());
    }

    QAbstractItemView* m_list;
};

} // namespace

HelpContents::HelpContents(const HelpLibrary* library, QWidget* parent)
    : QWidget(parent), m_library(library), m_tree(new QTreeView(this)) {
    dress(m_tree, "HelpContents", QStringLiteral("Contents"));
    m_tree->setHeaderHidden(true);
    m_tree->setItemDelegate(new RowDelegate(m_tree));
    m_tree->setModel(library->contents());
    setFocusProxy(m_tree);
    createColumn(this)->addWidget(m_tree);
    bindList(this, m_tree,
             [this](const QModelIndex& index) { emit chosen(m_library->contentsAddress(index)); });
    connect(library, &HelpLibrary::contentsReady, this, [this] {
        m_tree->expandToDepth(0);
        setCurrent(m_current);
    });
}

void HelpContents::setCurrent(const QUrl& page) {
    m_current = page;
    if (m_library->contentsAddress(m_tree->currentIndex()) == page)
        return; // a chapter and its first entry may be one page
    const QModelIndex place = m_library->contentsPlace(page);
    m_tree->setCurrentIndex(place);
    if (place.isValid())
        m_tree->scrollTo(place);
}

HelpIndex::HelpIndex(const HelpLibrary* library, QWidget* parent)
    : QWidget(parent), m_library(library),
      m_word(createField("HelpIndexWord", QStringLiteral("Look up a word"), this)),
      m_list(new QListView(this)), m_rows(new QSortFilterProxyModel(this)) {
    m_rows->setSourceModel(library->index());
    m_rows->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_rows->sort(0);
    dress(m_list, "HelpIndex", QStringLiteral("Index"));
    m_list->setItemDelegate(new RowDelegate(m_list));
    m_list->setModel(m_rows);
    m_list->setUniformItemSizes(true);
    setFocusProxy(m_word);
    new FieldKeys(m_word, m_list);
    QVBoxLayout* column = createColumn(this);
    column->addWidget(m_word);
    column->addWidget(m_list, 1);
    connect(m_word, &QLineEdit::textChanged, m_rows, [this](const QString& typed) {
        m_rows->setFilterRegularExpression(QRegularExpression(
            QString(QStringLiteral("(^|\\W)") + QRegularExpression::escape(typed.trimmed())),
            QRegularExpression::CaseInsensitiveOption));
    });
    bindList(this, m_list, [this](const QModelIndex& index) { choose(index); });
}

/// A word of several pages asks which.
void HelpIndex::choose(const QModelIndex& index) {
    const QList<HelpLink> pages = m_library->pagesOf(index.data().toString());
    if (pages.isEmpty())
        return;
    if (pages.size() == 1) {
        emit chosen(pages.first().page);
        return;
    }
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const HelpLink& link : pages)
        menu->addAction(QString(link.title).replace(u'&', QStringLiteral("&&")), this,
                        [this, page = link.page] { emit chosen(page); });
    menu->popup(m_list->viewport()->mapToGlobal(m_list->visualRect(index).bottomLeft()));
}

HelpSearch::HelpSearch(HelpLibrary* library, QWidget* parent)
    : QWidget(parent),
      m_words(createField("HelpSearchWords", QStringLiteral("Search the help"), this)),
      m_answer(new QuietLabel(QString(), this)), m_list(new QListView(this)),
      m_hits(new QStandardItemModel(this)) {
    m_answer->setObjectName(QStringLiteral("HelpSearchAnswer"));
    m_answer->setWordWrap(true);
    dress(m_list, "HelpHits", QStringLiteral("Pages found"));
    m_list->setItemDelegate(new HitDelegate(m_list));
    m_list->setModel(m_hits);
    m_list->setUniformItemSizes(true);
    setFocusProxy(m_words);
    new FieldKeys(m_words, m_list);
    QVBoxLayout* column = createColumn(this);
    column->addWidget(m_words);
    column->addWidget(m_answer);
    column->addWidget(m_list, 1);
    connect(m_words, &QLineEdit::textChanged, this,
            [this, library](const QString& words) { show(library->search(words)); });
    bindList(this, m_list, [this](const QModelIndex& index) { choose(index); });
    show({});
}

QString HelpSearch::words() const {
    return m_words->text();
}

void HelpSearch::show(const QList<HelpHit>& hits) {
    m_hits->clear();
    for (const HelpHit& hit : hits) {
        auto* row = new QStandardItem(hit.title);
        row->setData(hit.page, pageRole);
        row->setData(hit.words, wordsRole);
        row->setToolTip(hit.words);
        m_hits->appendRow(row);
    }
    if (words().trimmed().isEmpty())
        m_answer->setText(QStringLiteral("Type a word, or the beginning of one."));
    else
        m_answer->setText(hits.isEmpty() ? QStringLiteral("No page has these words.")
                          : hits.size() == 1
                              ? QStringLiteral("1 page")
                              : QString::number(hits.size()) + QStringLiteral(" pages"));
}

void HelpSearch::choose(const QModelIndex& index) {
    emit chosen(index.data(pageRole).toUrl());
}

} // namespace kelvrane
