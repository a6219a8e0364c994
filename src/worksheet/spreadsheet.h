// The spreadsheet component of the screens: a worksheet with the operations by which templates are
// filled, files, and undo.
//
//     Spreadsheet ss1;
//     ss1.setHTMLURL(templatePath);
//     ss1.Range("C5").setValue(1.5);
//     ss1.Range("J5").setFormula("=SUM(C5:I5)");
//     text = ss1.HTMLData();
#pragma once

#include "worksheet/worksheet.h"

#include <QObject>
#include <QString>

namespace kelvrane {

class Spreadsheet;

/// A cell or a range of a Spreadsheet by its name. Writing goes to every cell of it, reading takes
/// the first.
class SheetRange {
  public:
    static constexpr int Center = -4108;

    /// A number without its format, a date as m/d/yyyy, "True", "#DIV/0!".
    QString Value() const;
    /// As typing does. The text that is there already changes nothing, so a text that looks like a
    /// number stays one.
    void setValue(const QString& text) const;
    void setValue(double number) const;
    /// "=SUM(A1:A3)", or the value of a constant.
    QString Formula() const;
    void setFormula(const QString& formula) const;
    void setNumberFormat(const QString& format) const;
    QString NumberFormat() const;                     ///< "General" for none
    void setHorizontalAlignment(int alignment) const; ///< Center; any other: General

  private:
    friend class Spreadsheet;
    SheetRange(Spreadsheet* sheet, const CellRange& range) : m_sheet(sheet), m_range(range) {}
    Spreadsheet* m_sheet;
    CellRange m_range;
};

class Spreadsheet : public QObject {
    Q_OBJECT
  public:
    explicit Spreadsheet(QObject* parent = nullptr);

    /// By name: "C5", "A1:B2". Raises BadArgument for any other text.
    SheetRange Range(const QString& name);
    /// Loads a file; raises what the file store and ReadSheetHtml raise, and the sheet is then as
    /// it was.
    void setHTMLURL(const QString& path);
    QString HTMLData() const;
    /// "" empties the sheet. Raises what ReadSheetHtml raises.
    void setHTMLData(const QString& text);
    /// "1:50": the rows on view, 1-based; raises BadArgument for another form.
    void setViewableRange(const QString& rows);
    int viewableRows() const { return m_viewableRows; }

    Worksheet& worksheet() { return m_worksheet; }
    const Worksheet& worksheet() const { return m_worksheet; }

    // What the user does. Each is one step of undo, and signals Edited.
    /// Runs the change as one step. What the change raises goes on, and the sheet is then as it
    /// was.
    void edit(const std::function<void(Worksheet&)>& change);
    bool canUndo() const { return m_undone < m_steps.size(); }
    bool canRedo() const { return m_undone > 0; }
    void undo();
    void redo();

  signals:
    void Edited();         ///< by the user, undo and redo included
    void HistoryChanged(); ///< canUndo, canRedo

  private:
    struct Step {
        SheetContents before;
        SheetContents after;
    };
    void load(const SheetContents& contents);

    Worksheet m_worksheet;
    QList<Step> m_steps;
    qsizetype m_undone = 0;
    int m_viewableRows = 50;
};

} // namespace kelvrane
