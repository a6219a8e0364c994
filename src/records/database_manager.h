// The Database Manager's procedures: its opening and closing, its tabs, panels and commands, and
// stepping from record to record. The screen binds to Manager() and RecordPanel() and forwards to
// these.
#pragma once

#include <QString>

namespace kelvrane {

/// The routine of the screen's load: opens both tables, fills the panels, draws the first project.
/// Errors are reported step by step.
void OpenDataBase();
/// The routine of the screen's unload: without a selection undoes the choice that opened it; closes
/// both tables. Ends a fill of the list that is under way. Nothing when it isn't open.
void UnloadDataBase();
/// Unloads the screen, for its close box and its own commands. Refused, with a box, while the list
/// is being filled.
void RequestClose();

void OptionsClick(const QString& key);            ///< a tab
void TableChange(const QString& value);           ///< the TABLE row
void ManagerClick(int panel, const QString& key); ///< an item of smuiPanel, index 0 or 1
void ToolBarClick(const QString& key);
void ButtonClick(const QString& key); ///< CmdUp, cmdDown, cmdFind, ImgClose
void BrowseClick(const QString& key); ///< the button of a row of smuiDataBase
void CmdUp();                         ///< one record forward
void CmdDown();                       ///< one record back
void CloseFindPanel();

/// A click on a list row, 1-based; 0: none.
void ListClick(int row);
/// A double click, or Enter: selects the row last clicked.
void ListDoubleClick();

/// Binds the models' signals to the procedures above; once a process, later calls do nothing.
void WireDataBase();

} // namespace kelvrane
