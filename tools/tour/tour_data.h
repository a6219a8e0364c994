// The tour's own data: months of believable history over eight projects of three customers.
#pragma once

#include <QDate>

namespace kelvrane::tour {

/// Fills both databases in the program folder, which must be empty of rows. The history ends the
/// day before today.
void FillDatabases(QDate today);

/// Makes the recent list: the newest first.
void FillRecentProjects();

} // namespace kelvrane::tour
