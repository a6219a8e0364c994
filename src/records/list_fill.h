// Fills the list view from a record set, with progress and with events let through.
#pragma once

#include "platform/recordset.h"

#include <functional>

namespace kelvrane {

/// Clears the list and fills it from the record set's rows, which end on the first one. Events run
/// while it fills, so the screen and the record set may go meanwhile: stillThere says whether they
/// are there, and when they are not, the fill ends at once and touches neither. Errors are
/// reported, and the list keeps what was read before.
void AddDataToList(Recordset& records, const std::function<bool()>& stillThere);

/// A click on a column's head, 0-based: sorts by it ascending, or flips the order when the list is
/// sorted by it already. The row last clicked stays the one that SelectedIndex means.
void listview1_ColumnClick(int column);

} // namespace kelvrane
