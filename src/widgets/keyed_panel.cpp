#include "widgets/keyed_panel.h"

#include "widgets/heading_line.h"
#include "widgets/panel_view.h"
#include "widgets/theme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace kelvrane {

KeyedPanel::KeyedPanel(KeyedItems* items, const QString& heading, QWidget* parent)
    : Card(parent), m_heading(new HeadingLine(heading, this)), m_view(new PanelView(items, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 1, 0, theme::Step);
    layout->setSpacing(theme::Step / 2);
    layout->addWidget(m_heading);
    layout->addWidget(m_view, 1);
    m_view->setAccessibleName(m_heading->text());
    setAccessibleName(m_heading->text());
    setFocusProxy(m_view);
    connect(m_view, &PanelView::contextMenuWanted, this, &KeyedPanel::contextMenuWanted);
    connect(m_view, &PanelView::rowsHeightChanged, this, &QWidget::updateGeometry);
}

QString KeyedPanel::currentKey() const {
    return m_view->currentKey();
}

void KeyedPanel::setCurrentKey(const QString& key) {
    m_view->setCurrentKey(key);
}

void KeyedPanel::setValueAlignment(Qt::Alignment alignment) {
    m_view->setValueAlignment(alignment);
}

void KeyedPanel::setProminent(const QStringList& keys) {
    m_view->setProminent(keys);
}

void KeyedPanel::setPlaceholder(const QString& text) {
    m_view->setPlaceholder(text);
}

void KeyedPanel::showEnd() {
    m_view->scrollToBottom();
}

QString KeyedPanel::heading() const {
    return m_heading->text();
}

QRect KeyedPanel::rowRect(const QString& key) const {
    const QRect row = m_view->rowRect(key);
    return row.isEmpty() ? row : row.translated(m_view->viewport()->mapTo(this, QPoint()));
}

QRect KeyedPanel::valueRect(const QString& key) const {
    const QRect value = m_view->valueRect(key);
    return value.isEmpty() ? value : value.translated(m_view->viewport()->mapTo(this, QPoint()));
}

void KeyedPanel::activate(const QString& key) {
    m_view->activate(key);
}

QWidget* KeyedPanel::viewport() const {
    return m_view->viewport();
}

QSize KeyedPanel::sizeHint() const {
    const int heading = m_heading->text().isEmpty() ? 0 : m_heading->sizeHint().height();
    return {280, heading + m_view->rowsHeight() + 2 * theme::Step};
}

QSize KeyedPanel::minimumSizeHint() const {
    const int heading = m_heading->text().isEmpty() ? 0 : m_heading->sizeHint().height();
    return {160, heading + theme::RowHeight + theme::Margin};
}

} // namespace kelvrane
