// The spreadsheet screen's procedures: its load and unload, the calculation, and what each of its
// items does. The screen binds to Sheets() and Databases() and forwards to these.
#pragma once

#include <QDate>
#include <QString>

namespace kelvrane {

/// The routine of the screen's load: rolls today up, reads the settings and the list of databases.
/// Sets SpreadsheetOpen. Errors are reported step by step.
void LoadSpreadsheet();
/// A changed template is asked about; one that can then not be saved is kept under a name of its
/// own. Removes the temporary files; clears SpreadsheetOpen.
void UnloadSpreadsheet();
/// The session ends and asks nothing: a changed template is kept as KeepUnsavedSheet does.
void KeepTemplateChanges();
/// Asks about a changed template, with its screen in front; true also when there is none. False:
/// it is to be kept and couldn't be, and nothing should go.
bool MayLeaveTemplate();
/// The user closes the screen: a changed template is asked about first.
void CloseSpreadsheet();

/// Prints what the sheet shows.
void ShowPrint();

void SheetBarClick(const QString& key); ///< a command of SmartToolBar
void SheetDateClick(QDate date);        ///< a day of MonthView1
void HideSheetCalendar();               ///< a click elsewhere
void SheetEdited();                     ///< the user changed ss1

/// The set-up's topic while the option panel is up, else the sheet's.
int SpreadsheetHelpTopic();

/// Connects the models to the routines; once a process.
void WireSpreadsheet();

} // namespace kelvrane
