// The rules of project records: new, save, cancel, delete, the dirty check. They read the rows of
// the record panel and write the project table's current row; nothing is written while the user
// types.
#pragma once

#include "platform/int16.h"

#include <QString>

#include <functional>
#include <optional>

namespace kelvrane {

/// Starts a new row of the project table (0) or the customer table (any other), draws it and hides
/// what doesn't serve its entry.
void AddNewRecord(Int16 customer);

/// Tests the panel's rows in their order and writes them to the new or current row: 0, or 103 when
/// the table is empty, a row is refused, or the row isn't written. Fields written before a refusal
/// stay pending. Errors are reported, and the next step runs. Asks before a second project of one
/// name is saved, and whether booked time goes along with a new name.
Int16 SaveNewProject();

/// Drops a new row or pending changes and goes back to ProjectPosition.
void CancelProjectEntry();

/// Asks, with the hours that are booked on it, then deletes the current project, also in the recent
/// list.
void DeleteProject();

/// Whether a row of the panel differs from the current record, or a refused save left changes.
bool ProjectChanged();
/// When the project changed, asks whether to save it. The status of
/// the save, or empty when clean or not to be saved.
std::optional<Int16> CheckProjectChanged();

/// Shows the message in the box "Invalid Entry".
void ShowInvalidEntry(const QString& text);

/// The current project on the record panel with its customer.
void RedrawProject(bool editable);

namespace record_steps {
/// Says that there is nothing to delete, or asks whether to, with a sentence behind the question;
/// false: don't.
bool mayDelete(bool tableIsEmpty, const std::function<QString()>& sentence);
/// Asks "Save changes to the entry?".
bool saveWanted();
} // namespace record_steps

} // namespace kelvrane
