// What the spreadsheet screen shows and remembers. It lives with the process; LoadSpreadsheet puts
// it back as a newly opened screen has it.
#pragma once

#include "platform/int16.h"
#include "platform/keyed_items.h"
#include "worksheet/spreadsheet.h"

#include <QDate>
#include <QObject>
#include <QString>

namespace kelvrane {

namespace sort_orders {
inline const QString ByProject = QStringLiteral("By Project");
inline const QString ByCustomer = QStringLiteral("By Customer");
} // namespace sort_orders

struct SpreadsheetState {
    bool ToolboxVisible = false;   ///< option panel, database list and ImgClose are shown
    bool Filling = false;          ///< the option panel is being filled; its changes do nothing
    QString CurrentTemplate;       ///< path of the template or file on the sheet
    Int16 CalcNumDays;             ///< days in the period
    QString SortOrder;             ///< one of sort_orders::
    bool Calculated = false;       ///< a calculation has started since the screen opened
    bool TemplateModified = false; ///< the sheet was changed while TemplateEditing
    bool TemplateEditing = false;  ///< a template, not a result, is on the sheet

    bool Calculating = false; ///< what the user does to start another one is ignored

    QString caption;            ///< of the window
    QDate selectedDate;         ///< of MonthView1
    bool calendarShown = false; ///< MonthView1
    bool sheetShown = false;    ///< ss1
    bool noData = false;        ///< lblNoData in its place
};

class SpreadsheetModel : public QObject {
    Q_OBJECT
  public:
    SpreadsheetModel();

    KeyedItems SmartToolBar;  ///< the menus, STARTINGDATE, STARTDATE, HELP
    KeyedItems SmartToolbox;  ///< the options of the calculation
    KeyedItems smuiStatusBar; ///< TEMPLATE_NAME, COLLECTION_NAME, PROGRESS
    Spreadsheet ss1;
    SpreadsheetState state;

    void reset();
    /// Tells the screen to lay itself out by the state.
    void layOut() { emit LayoutChanged(); }
    /// Away with MonthView1.
    void hideCalendar();
    void focusToolbox() { emit ToolboxFocusWanted(); }

  signals:
    void LayoutChanged();
    void ToolboxFocusWanted();
};

/// The one model.
SpreadsheetModel& Sheets();

inline const QString SheetCaption = QStringLiteral("SpreadSheet View");

} // namespace kelvrane
