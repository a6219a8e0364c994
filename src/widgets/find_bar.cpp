#include "widgets/find_bar.h"

#include "widgets/flat_button.h"
#include "widgets/quiet_label.h"
#include "widgets/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

namespace kelvrane {

namespace {
constexpr int widestField = 320;
}

FindBar::FindBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("FindBar"));
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("FindText"));
    m_text->setAccessibleName(QStringLiteral("Find in page"));
    m_text->setPlaceholderText(QStringLiteral("Find in page"));
    m_text->setMaximumWidth(widestField);
    m_answer = new QuietLabel(QString(), this);
    m_answer->setObjectName(QStringLiteral("FindAnswer"));
    auto* content = new QHBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Step, theme::Step, theme::Step);
    content->setSpacing(theme::Step);
    content->addWidget(m_text, 1);
    content->addWidget(addButton("FindPrevious", "up", QStringLiteral("Previous place")));
    content->addWidget(addButton("FindNext", "down", QStringLiteral("Next place")));
    content->addWidget(m_answer, 1);
    content->addWidget(addButton("FindClose", "close", QStringLiteral("Close")));
    connect(m_text, &QLineEdit::textChanged, this,
            [this](const QString& text) { emit wanted(text, false, true); });
    hide();
}

QWidget* FindBar::addButton(const char* name, const char* icon, const QString& caption) {
    auto* button = new FlatButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setIcon(theme::Icon(QString::fromLatin1(icon)));
    button->setCaption(caption);
    button->setWordShown(false);
    connect(button, &QAbstractButton::clicked, this, [this, key = QLatin1String(name)] {
        if (key == u"FindClose")
            shut();
        else
            step(key == u"FindPrevious");
    });
    return button;
}

void FindBar::open() {
    show();
    m_text->setFocus();
    m_text->selectAll();
}

void FindBar::step(bool backward) {
    if (m_text->text().isEmpty())
        open();
    else
        emit wanted(m_text->text(), backward, false);
}

void FindBar::setFound(bool found) {
    m_answer->setText(found || m_text->text().isEmpty() ? QString()
                                                        : QStringLiteral("Not on this page"));
}

void FindBar::shut() {
    hide();
    emit closed();
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        shut();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        step(event->modifiers() & Qt::ShiftModifier);
    else
        QWidget::keyPressEvent(event);
}

void FindBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), 1), theme::Hairline(palette()));
}

} // namespace kelvrane
