// The choice of a project in the Database Manager, and its undo when the manager closes without
// one.
#pragma once

namespace kelvrane {

/// Gives the project that is selected in the list, or the current record, to the calendar, to the
/// modify screen or to the day, after the questions about a duplicate and an inactive project, and
/// unloads the screen.
void SelectItem();

/// Undoes the choice that opened the manager, at the place where a selection would have gone.
void UndoSelection();

} // namespace kelvrane
