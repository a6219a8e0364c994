// The editor of a sheet: format bar, formula bar, grid.
//
//     auto* editor = new SheetEditor(&ss1, this);
//     connect(&ss1, &Spreadsheet::Edited, ...);
#pragma once

#include "worksheet/spreadsheet.h"

#include <QWidget>

#include <span>

class QMenu;

namespace kelvrane {

struct SheetAction;
class FormatBar;
class FormulaBar;
class SheetGrid;
class SheetSession;

class SheetEditor : public QWidget {
    Q_OBJECT
  public:
    /// The sheet outlives the editor.
    explicit SheetEditor(Spreadsheet* sheet, QWidget* parent = nullptr);

    ~SheetEditor() override;

    SheetSession* session() const { return m_session; }
    /// What is being typed goes into its cell.
    void commit();

  signals:
    void Clicked();
    void HelpWanted();
    void AboutWanted();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QMenu* createMenu(const char* name, std::span<const char* const> keys);
    void run(const SheetAction& action);
    bool runOwn(QLatin1String key);
    void copy(bool cut);
    void paste();
    void nextPart();
    void popUp(QMenu* menu, const QPoint& place);

    SheetSession* m_session;
    FormatBar* m_format;
    FormulaBar* m_formula;
    SheetGrid* m_grid;
};

} // namespace kelvrane
