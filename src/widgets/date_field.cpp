#include "widgets/date_field.h"

#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QKeyEvent>

namespace kelvrane {

namespace {
const QString widestDate = QStringLiteral("12/30/2000");
constexpr int longestDate = 20;
} // namespace

DateField::DateField(QWidget* parent) : QLineEdit(parent) {
    setFont(theme::TabularFont(font()));
    setMaxLength(longestDate);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // A command of the tool bar takes what was typed along.
    connect(this, &QLineEdit::textEdited, this,
            [this] { SetOpenEditor(this, [this] { takeTyped(); }); });
}

void DateField::setDateText(const QString& text) {
    m_shown = text;
    setText(text);
}

QSize DateField::sizeHint() const {
    const int figures = fontMetrics().horizontalAdvance(widestDate);
    return {figures + 3 * theme::Margin, QLineEdit::sizeHint().height()};
}

void DateField::keyPressEvent(QKeyEvent* event) {
    const QString sign = event->text();
    if (sign == u"+" || sign == u"-")
        emit stepped(sign == u"+" ? 1 : -1);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        takeTyped();
    else if (event->key() == Qt::Key_Escape && text() != m_shown)
        setText(m_shown);
    else
        QLineEdit::keyPressEvent(event);
}

void DateField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        takeTyped();
}

/// What wasn't taken for a date doesn't stay.
void DateField::takeTyped() {
    ForgetOpenEditor(this);
    if (text() == m_shown)
        return;
    const QString wanted = text();
    setText(m_shown);
    emit typed(wanted);
    selectAll();
}

} // namespace kelvrane
