#include "widgets/tab_strip.h"

#include "widgets/captions.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

/// Words on the strip's own paper, a line under the current one.
constexpr int iconSide = 18;

class FlatTabBar final : public QTabBar {
  public:
    explicit FlatTabBar(QWidget* parent) : QTabBar(parent) {
        setDrawBase(false);
        setElideMode(Qt::ElideRight);
        setUsesScrollButtons(false);
        setExpanding(false);
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setMouseTracking(true);
    }

  protected:
    QSize tabSizeHint(int tab) const override {
        const int word = fontMetrics().horizontalAdvance(plainText(tab));
        return {iconRoom(tab) + word + 2 * theme::Margin,
                fontMetrics().height() + 2 * theme::Step + 4};
    }
    QSize minimumTabSizeHint(int tab) const override {
        return {iconRoom(tab) + fontMetrics().averageCharWidth() * 4 + 2 * theme::Margin,
                tabSizeHint(tab).height()};
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        for (int tab = 0; tab < count(); ++tab)
            if (isTabVisible(tab))
                paintTab(painter, tab);
    }

  private:
    QString plainText(int tab) const { return ShownCaption(tabText(tab)); }
    int iconRoom(int tab) const { return tabIcon(tab).isNull() ? 0 : iconSide + theme::Step; }

    void paintTab(QPainter& painter, int tab) {
        const QRect place = tabRect(tab);
        const bool current = tab == currentIndex();
        const bool lit = isTabEnabled(tab) && place.contains(mapFromGlobal(QCursor::pos()));
        const QRectF wash = QRectF(place).adjusted(2, 3, -2, -5);
        painter.setPen(Qt::NoPen);
        if (lit && underMouse() && !current) {
            painter.setBrush(theme::Wash(palette()));
            painter.drawRoundedRect(wash, theme::Radius, theme::Radius);
        }
        if (current && hasFocus()) {
            painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(wash, theme::Radius, theme::Radius);
        }
        const QRect content = place.adjusted(theme::Margin - 2, 0, -theme::Margin + 2, -2);
        tabIcon(tab).paint(
            &painter,
            QRect(content.left(), content.center().y() - iconSide / 2, iconSide, iconSide),
            Qt::AlignCenter, isTabEnabled(tab) ? QIcon::Normal : QIcon::Disabled);
        const QRect text = content.adjusted(iconRoom(tab), 0, 0, 0);
        painter.setPen(!isTabEnabled(tab) ? palette().color(QPalette::Disabled, QPalette::Text)
                       : current          ? palette().color(QPalette::Text)
                                          : theme::SecondaryText(palette()));
        painter.drawText(text, Qt::AlignCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(plainText(tab), Qt::ElideRight, text.width()));
        if (current) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(palette().color(QPalette::Highlight));
            painter.drawRoundedRect(QRectF(place.left() + theme::Margin - 2, place.bottom() - 2,
                                           place.width() - 2 * theme::Margin + 4, 3),
                                    1.5, 1.5);
        }
    }
};

} // namespace

TabStrip::TabStrip(KeyedItems* pages, QWidget* parent)
    : QWidget(parent), m_items(pages), m_tabs(new FlatTabBar(this)),
      m_stack(new QStackedWidget(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::Step / 2, 0, theme::Step);
    layout->setSpacing(theme::Step + 1);
    layout->addWidget(m_tabs);
    layout->addWidget(m_stack, 1);

    connect(pages, &QAbstractItemModel::rowsInserted, this, &TabStrip::rebuild);
    connect(pages, &QAbstractItemModel::rowsRemoved, this, &TabStrip::rebuild);
    connect(pages, &QAbstractItemModel::rowsMoved, this, &TabStrip::rebuild);
    connect(pages, &QAbstractItemModel::modelReset, this, &TabStrip::rebuild);
    connect(pages, &QAbstractItemModel::dataChanged, this, &TabStrip::rebuild);
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) {
        const QString key = m_tabs->tabData(tab).toString();
        CommitOpenEditor();
        turnTo(key);
        m_items->click(key);
    });

    const auto shortcut = [this](const QKeySequence& keys, int by) {
        auto* turn = new QShortcut(keys, this);
        turn->setContext(Qt::WidgetWithChildrenShortcut);
        connect(turn, &QShortcut::activated, this, [this, by] { step(by); });
    };
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), 1);
    shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), -1);
    rebuild();
}

void TabStrip::rebuild() {
    const QSignalBlocker quiet(m_tabs);
    const auto& items = m_items->items();
    while (m_tabs->count() > items.size())
        m_tabs->removeTab(m_tabs->count() - 1);
    // With its word at once: a hidden bar doesn't measure a text that is set later.
    while (m_tabs->count() < items.size())
        m_tabs->addTab(theme::Icon(items[m_tabs->count()].image),
                       ControlCaption(items[m_tabs->count()].caption));
    for (int tab = 0; tab < items.size(); ++tab) {
        m_tabs->setTabText(tab, ControlCaption(items[tab].caption));
        m_tabs->setTabData(tab, items[tab].key);
        m_tabs->setTabToolTip(tab, items[tab].toolTip);
        m_tabs->setTabEnabled(tab, items[tab].enabled);
        m_tabs->setTabVisible(tab, items[tab].visible);
    }
    const int tab = tabOf(m_current);
    if (tab >= 0)
        m_tabs->setCurrentIndex(tab);
    else
        turnTo(m_tabs->count() > 0 ? m_tabs->tabData(0).toString() : QString());
}

void TabStrip::bindPage(const QString& key, QWidget* page) {
    m_pages.insert(key, page);
    m_stack->addWidget(page);
    if (key == m_current)
        m_stack->setCurrentWidget(page);
}

void TabStrip::setCurrent(const QString& key) {
    if (tabOf(key) >= 0)
        turnTo(key);
}

QString TabStrip::current() const {
    return m_current;
}

void TabStrip::turnTo(const QString& key) {
    if (key == m_current)
        return;
    m_current = key;
    {
        const QSignalBlocker quiet(m_tabs);
        m_tabs->setCurrentIndex(tabOf(key));
    }
    if (QWidget* page = m_pages.value(key))
        m_stack->setCurrentWidget(page);
    emit changed(key);
}

void TabStrip::step(int by) {
    const int count = m_tabs->count();
    for (int moved = 1; moved <= count; ++moved) {
        const int tab = ((m_tabs->currentIndex() + by * moved) % count + count) % count;
        if (m_tabs->isTabVisible(tab) && m_tabs->isTabEnabled(tab)) {
            m_tabs->setCurrentIndex(tab);
            return;
        }
    }
}

int TabStrip::tabOf(const QString& key) const {
    for (int tab = 0; tab < m_tabs->count(); ++tab)
        if (m_tabs->tabData(tab).toString() == key)
            return tab;
    return -1;
}

void TabStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(rect(), theme::Step, theme::Step);
    painter.fillRect(QRect(0, m_tabs->geometry().bottom() + 1, width(), 1),
                     theme::Hairline(palette()));
}

} // namespace kelvrane
