// The record that the Database Manager shows is the one it selects, updates and deletes: a row
// chosen in the list becomes the current record, and what was typed into a record is asked about
// before another one takes its place.
#pragma once

#include <QString>

namespace kelvrane {

/// The list's row (1-based, 0: none) is chosen, and its project is the current record.
void ChooseListRow(int row);

/// Before the record on the panel is left: asks about what was typed. False: it stays, since the
/// save was refused or the screen is gone. What isn't to be saved is dropped, and so is a new
/// record into which nothing was typed.
bool MayLeaveRecord();
/// Whether the record on the panel holds what was typed and isn't saved.
bool RecordIsEdited();

/// The key of the current project; "" when there is none.
QString CurrentProjectKey();
/// Makes the project with this key current; false, and nothing moved, when there is none.
bool GoToProject(const QString& key);

} // namespace kelvrane
