// A renamed project in the open day.
#pragma once

#include "records/project_changes.h"

namespace kelvrane {

/// Gives today's entries of the project its new name: in memory, in the day file, on the control
/// screen and in an open Modify screen. The day is loaded. Raises PathAccess when the day file
/// can't be written; the entries then keep their name.
void RenameTodaysEntries(const RenamedProject& renamed);

} // namespace kelvrane
