// The modify screen's procedures: it edits one entry of today through EditedEntry, and a saved
// change of a start or stop moves the neighbour that touches it. The screen binds to Modify() and
// forwards to these.
//
//     SelectedEntryKey = "START TIME2";
//     FrmModify_Load();
//     Modify().SmuiModify.edit("START TIME", "9:30 AM");
//     Modify().buttons.click("cmdUpdate");
#pragma once

#include <QString>

namespace kelvrane {

/// Opens on the entry of SelectedEntryKey: fills the rows and EditedEntry. Errors are reported;
/// without such an entry the rows stay empty.
void FrmModify_Load();
/// A selection in the Database Manager goes to the day again.
void FrmModify_Unload();

/// Fills the drop-down of PROJECT NAME with the recent projects and "More ... ".
void FillModifyProjectList();
/// A row was edited: takes the text to EditedEntry.
void SmuiModify_Change(const QString& key, const QString& value);
/// The choice of the list's place-th item (0-based): takes that project, or opens the Database
/// Manager.
void ChooseModifyProject(int place, const QString& value);

/// Checks EditedEntry, puts it into the day with the ripple to both neighbours, saves the day file
/// and refills the break-down list. True when it was NOT saved; nothing has changed then.
bool VerifyUpdate();

void cmdUpdate_Click(); ///< VerifyUpdate, and closes when it saved
void cmdCancel_Click();
/// The close box. Unlike Cancel, a Yes to "Save current changes?" closes here. Neither saves: only
/// Update does; that is wanted.
void FrmModify_QueryUnload();

/// Connects the rows to the routines and takes the Database Manager's choices; once a process.
void WireModify();

} // namespace kelvrane
