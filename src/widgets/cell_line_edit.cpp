#include "widgets/cell_line_edit.h"

#include "frame/error_report.h"

#include <QKeyEvent>

#include <algorithm>

namespace kelvrane {

namespace {

struct EndRow {
    int key;
    Qt::KeyboardModifiers modifiers;
    Step step;
};
const EndRow endRows[] = {
    {Qt::Key_Return, Qt::NoModifier, Step::Down},  {Qt::Key_Return, Qt::ShiftModifier, Step::Up},
    {Qt::Key_Enter, Qt::NoModifier, Step::Down},   {Qt::Key_Enter, Qt::ShiftModifier, Step::Up},
    {Qt::Key_Tab, Qt::NoModifier, Step::Right},    {Qt::Key_Tab, Qt::ShiftModifier, Step::Left},
    {Qt::Key_Backtab, Qt::NoModifier, Step::Left}, {Qt::Key_Backtab, Qt::ShiftModifier, Step::Left},
};
const EndRow arrowRows[] = {
    {Qt::Key_Left, Qt::NoModifier, Step::Left},
    {Qt::Key_Right, Qt::NoModifier, Step::Right},
    {Qt::Key_Up, Qt::NoModifier, Step::Up},
    {Qt::Key_Down, Qt::NoModifier, Step::Down},
    {Qt::Key_PageUp, Qt::NoModifier, Step::PageUp},
    {Qt::Key_PageDown, Qt::NoModifier, Step::PageDown},
};

template <size_t count>
const EndRow* RowFor(const EndRow (&rows)[count], const QKeyEvent& event) {
    const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const auto* found = std::ranges::find_if(rows, [&](const EndRow& row) {
        return row.key == event.key() && row.modifiers == modifiers;
    });
    return found == std::end(rows) ? nullptr : found;
}

bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

CellLineEdit::CellLineEdit(SheetSession* session, QWidget* parent)
    : QLineEdit(parent), m_session(session) {
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        const int caret = cursorPosition();
        if (!m_session->isEditing())
            m_session->beginEdit(EditMode::InPlace, text);
        m_session->setEditText(text, caret);
        emit m_session->EditTextChanged();
    });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] {
        if (hasFocus() && m_session->isEditing() && text() == m_session->editText() &&
            cursorPosition() != m_session->caret())
            m_session->setEditText(text(), cursorPosition());
    });
    connect(session, &SheetSession::EditTextChanged, this, &CellLineEdit::showEdit);
}

void CellLineEdit::showEdit() {
    if (text() != m_session->editText())
        setText(m_session->editText());
    setCursorPosition(m_session->caret());
}

bool CellLineEdit::event(QEvent* event) {
    // Tab would go to the next control before the line sees it.
    if (event->type() == QEvent::KeyPress && takesKey(*static_cast<QKeyEvent*>(event)))
        return true;
    return QLineEdit::event(event);
}

void CellLineEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F2 && m_session->isEditing()) {
        m_session->setEditMode(EditMode::InPlace); // Esc still gives all of it up
        return;
    }
    QLineEdit::keyPressEvent(event);
    // Keys that lead nowhere in a line would move the selection behind it.
    if (m_session->isEditing() && RowFor(arrowRows, *event))
        event->accept();
}

bool CellLineEdit::takesKey(const QKeyEvent& event) {
    if (!m_session->isEditing())
        return false;
    if (event.key() == Qt::Key_Escape) {
        m_session->cancel();
        return true;
    }
    if (IsEnter(event) && event.modifiers() == Qt::ControlModifier) {
        Guarded(QStringLiteral("Enter"), [this] { m_session->commitToSelection(); });
        return true;
    }
    if (IsEnter(event) && event.modifiers() == Qt::AltModifier) {
        insert(QStringLiteral("\n"));
        m_session->setEditText(text(), cursorPosition());
        return true;
    }
    const auto finish = [this](const std::function<void()>& go) {
        Guarded(QStringLiteral("Enter"), [&] {
            m_session->commit();
            go();
        });
        return true;
    };
    if (const EndRow* row = RowFor(endRows, event))
        return finish([&] { m_session->advance(row->step); });
    const bool movesOn = m_inCell && m_session->editMode() == EditMode::Typing &&
                         !m_session->editText().startsWith(QLatin1Char('='));
    if (const EndRow* row = RowFor(arrowRows, event); row && movesOn)
        return finish([&] { m_session->move(row->step); });
    return false;
}

} // namespace kelvrane
