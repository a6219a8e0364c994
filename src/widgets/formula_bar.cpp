#include "widgets/formula_bar.h"

#include "frame/error_report.h"
#include "widgets/cell_line_edit.h"
#include "widgets/flat_button.h"
#include "widgets/theme.h"

#include <QFocusEvent>
#include <QHBoxLayout>

namespace kelvrane {

namespace {

constexpr int iconSide = 16;

} // namespace

FormulaBar::FormulaBar(SheetSession* session, QWidget* parent)
    : QWidget(parent), m_session(session), m_name(new QLineEdit(this)),
      m_cancel(addButton("close", QStringLiteral("Cancel"), &SheetSession::cancel)),
      m_accept(addButton("select", QStringLiteral("Enter"), &SheetSession::commit)),
      m_line(new CellLineEdit(session, this)) {
    m_name->setObjectName(QStringLiteral("CellName"));
    m_name->setAccessibleName(QStringLiteral("Cell Name"));
    m_name->setToolTip(QStringLiteral("Name of the cell (F5)"));
    m_name->setAlignment(Qt::AlignCenter);
    m_name->setFixedWidth(m_name->fontMetrics().horizontalAdvance(QStringLiteral("AA100:AZ100")));
    m_line->setObjectName(QStringLiteral("FormulaLine"));
    m_line->setAccessibleName(QStringLiteral("Formula"));
    m_line->installEventFilter(this);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(theme::Step, 0, theme::Step, theme::Step);
    row->setSpacing(2);
    row->addWidget(m_name);
    row->addWidget(m_cancel);
    row->addWidget(m_accept);
    row->addWidget(m_line, 1);

    connect(m_name, &QLineEdit::returnPressed, this, &FormulaBar::goTo);
    connect(session, &SheetSession::SelectionChanged, this, &FormulaBar::refresh);
    connect(session, &SheetSession::EditingChanged, this, &FormulaBar::refresh);
    connect(&session->sheet().worksheet(), &Worksheet::Changed, this, &FormulaBar::refresh);
    connect(&session->sheet().worksheet(), &Worksheet::Reset, this, &FormulaBar::refresh);
    refresh();
}

FlatButton* FormulaBar::addButton(const char* name, const QString& caption,
                                  void (SheetSession::*step)()) {
    auto* button = new FlatButton(this);
    button->setIcon(theme::Icon(QLatin1String(name)));
    button->setIconSize({iconSide, iconSide});
    button->setCaption(caption);
    button->setWordShown(false);
    connect(button, &QAbstractButton::clicked, this, [this, step] {
        Guarded(QStringLiteral("Enter"), [&] { (m_session->*step)(); });
        emit sheetWanted();
    });
    return button;
}

void FormulaBar::goToName() {
    m_name->setFocus();
    m_name->selectAll();
}

void FormulaBar::goTo() {
    Guarded(QStringLiteral("Go To"), [this] {
        const auto range = ParseRange(m_name->text().trimmed());
        m_session->commit();
        if (range)
            m_session->select(*range);
        refresh();
    });
    emit sheetWanted();
}

void FormulaBar::refresh() {
    const CellRange range = m_session->selected();
    const bool isOne = range == m_session->contents().spanAt(range.first);
    m_name->setText(isOne ? AddressText(m_session->active()) : RangeText(range));
    m_cancel->setEnabled(m_session->isEditing());
    m_accept->setEnabled(m_session->isEditing());
    if (m_session->isEditing())
        return;
    m_line->setText(m_session->sheet().worksheet().input(m_session->active()));
    m_line->setCursorPosition(0);
    if (m_line->hasFocus())
        emit sheetWanted();
}

bool FormulaBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_line && event->type() == QEvent::FocusIn && !m_session->isEditing() &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason) {
        const int caret = m_line->cursorPosition();
        m_session->beginEdit(EditMode::InPlace);
        m_session->setEditText(m_session->editText(), caret);
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace kelvrane
