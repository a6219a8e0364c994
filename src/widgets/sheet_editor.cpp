#include "widgets/sheet_editor.h"

#include "frame/error_report.h"
#include "widgets/cell_line_edit.h"
#include "widgets/format_bar.h"
#include "widgets/formula_bar.h"
#include "widgets/open_editor.h"
#include "widgets/sheet_grid.h"
#include "worksheet/sheet_actions.h"
#include "worksheet/sheet_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

// Menus by the keys of their actions; "" is a line.
constexpr const char* cellMenu[] = {
    "cut",
    "copy",
    "paste",
    "",
    "insert_rows",
    "delete_rows",
    "insert_columns",
    "delete_columns",
    "",
    "fit_columns",
    "fit_rows",
    "merge",
    "wrap",
    "",
    "top",
    "middle",
    "bottom",
    "",
    "clear",
    "clear_all",
};
constexpr const char* rowMenu[] = {
    "cut",      "copy",      "paste",     "", "insert_rows", "delete_rows", "",
    "fit_rows", "hide_rows", "show_rows", "", "clear",       "clear_all",
};
constexpr const char* columnMenu[] = {
    "cut",         "copy",         "paste",        "", "insert_columns", "delete_columns", "",
    "fit_columns", "hide_columns", "show_columns", "", "clear",          "clear_all",
};

} // namespace

SheetEditor::SheetEditor(Spreadsheet* sheet, QWidget* parent)
    : QWidget(parent), m_session(new SheetSession(sheet, this)),
      m_format(new FormatBar(m_session, this)), m_formula(new FormulaBar(m_session, this)),
      m_grid(new SheetGrid(m_session, this)) {
    setFocusProxy(m_grid);
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(0);
    content->addWidget(m_format);
    content->addWidget(m_formula);
    content->addWidget(m_grid, 1);

    const auto toSheet = [this] { m_grid->setFocus(); };
    connect(m_format, &FormatBar::actionWanted, this, &SheetEditor::run);
    connect(m_format, &FormatBar::sheetWanted, this, toSheet);
    connect(m_formula, &FormulaBar::sheetWanted, this, toSheet);
    connect(m_grid, &SheetGrid::actionWanted, this, &SheetEditor::run);
    connect(m_grid, &SheetGrid::Clicked, this, &SheetEditor::Clicked);
    QMenu* cells = createMenu("CellMenu", cellMenu);
    QMenu* rows = createMenu("RowMenu", rowMenu);
    QMenu* columns = createMenu("ColumnMenu", columnMenu);
    connect(m_grid, &SheetGrid::cellMenuWanted, this, [=, this](QPoint at) { popUp(cells, at); });
    connect(m_grid, &SheetGrid::rowMenuWanted, this, [=, this](QPoint at) { popUp(rows, at); });
    connect(m_grid, &SheetGrid::columnMenuWanted, this,
            [=, this](QPoint at) { popUp(columns, at); });
    connect(m_session, &SheetSession::EditingChanged, this, [this] {
        if (m_session->isEditing())
            SetOpenEditor(this, [this] { commit(); });
        else
            ForgetOpenEditor(this);
    });
}

/// The parts pass the focus on as they go, and then still ask the session.
SheetEditor::~SheetEditor() {
    ForgetOpenEditor(this);
    delete m_grid;
    delete m_formula;
    delete m_format;
}

QMenu* SheetEditor::createMenu(const char* name, std::span<const char* const> keys) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QLatin1String(name));
    for (const char* key : keys) {
        if (*key == '\0') {
            menu->addSeparator();
            continue;
        }
        const SheetAction& action = *ActionOf(QLatin1String(key));
        const QString keysText = QString::fromLatin1(action.keys).section(QLatin1Char(' '), 0, 0);
        QAction* entry =
            menu->addAction(QLatin1String(action.caption) +
                                (keysText.isEmpty() ? QString() : QLatin1Char('\t') + keysText),
                            this, [this, &action] { run(action); });
        entry->setObjectName(QLatin1String(action.key));
        entry->setCheckable(action.isOn != nullptr);
    }
    return menu;
}

void SheetEditor::popUp(QMenu* menu, const QPoint& place) {
    for (QAction* entry : menu->actions())
        if (const SheetAction* action = ActionOf(QLatin1String(entry->objectName().toLatin1()))) {
            entry->setEnabled(!action->isEnabled || action->isEnabled(*m_session));
            entry->setChecked(action->isOn && action->isOn(*m_session));
        }
    menu->popup(place);
}

void SheetEditor::commit() {
    Guarded(QStringLiteral("Enter"), [this] { m_session->commit(); });
}

void SheetEditor::run(const SheetAction& action) {
    Guarded(QLatin1String(action.caption), [&] {
        m_session->commit();
        if (!action.run) {
            runOwn(QLatin1String(action.key));
            return;
        }
        action.run(*m_session);
        if (!m_session->isEditing())
            m_grid->setFocus();
    });
}

bool SheetEditor::runOwn(QLatin1String key) {
    struct OwnRow {
        const char* key;
        void (*run)(SheetEditor&);
    };
    static constexpr OwnRow ownRows[] = {
        {"cut", [](SheetEditor& editor) { editor.copy(true); }},
        {"copy", [](SheetEditor& editor) { editor.copy(false); }},
        {"paste", [](SheetEditor& editor) { editor.paste(); }},
        {"go_to", [](SheetEditor& editor) { editor.m_formula->goToName(); }},
        {"help", [](SheetEditor& editor) { emit editor.HelpWanted(); }},
        {"about", [](SheetEditor& editor) { emit editor.AboutWanted(); }},
    };
    for (const OwnRow& row : ownRows)
        if (QLatin1String(row.key) == key) {
            row.run(*this);
            return true;
        }
    return m_format->open(key);
}

void SheetEditor::copy(bool cut) {
    const CellRange range = m_session->selected();
    const SheetClip clip = cut ? CutCells(m_session->sheet(), range)
                               : CopyCells(m_session->sheet().worksheet(), range);
    auto* data = new QMimeData;
    data->setText(clip.text);
    data->setHtml(QString::fromUtf8(clip.html));
    data->setData(QLatin1String(SheetClip::CellsType), clip.cells);
    QGuiApplication::clipboard()->setMimeData(data);
}

void SheetEditor::paste() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data)
        return;
    const SheetClip clip{data->text(), data->html().toUtf8(),
                         data->data(QLatin1String(SheetClip::CellsType))};
    if (!clip.isEmpty())
        m_session->select(PasteCells(m_session->sheet(), m_session->selected(), clip));
}

/// From the sheet to the bars and back, since Tab belongs to the sheet.
void SheetEditor::nextPart() {
    if (m_grid->hasFocus())
        m_format->takeFocus();
    else if (m_formula->isAncestorOf(focusWidget()))
        m_grid->setFocus();
    else
        m_formula->goToName();
}

void SheetEditor::keyPressEvent(QKeyEvent* event) {
    const QKeyCombination keys(event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier),
                               Qt::Key(event->key()));
    if (const SheetAction* action = ActionForKeys(keys))
        run(*action);
    else if (event->key() == Qt::Key_F6)
        nextPart();
    else if (event->key() == Qt::Key_Escape && !m_grid->hasFocus())
        m_grid->setFocus();
    else
        QWidget::keyPressEvent(event);
}

void SheetEditor::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_session->refreshLayout();
}

} // namespace kelvrane
