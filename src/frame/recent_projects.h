// The recent-project list: RecentProjects in memory, File1, File2, ... in the settings.
#pragma once

#include "platform/int16.h"

#include <QString>

namespace kelvrane {

/// Reads up to Count names into RecentProjects. 102 when NoRecentProjects, else 0.
Int16 LoadRecentProjects(Int16 Count);

/// Puts the name first and writes the list, at most ShowNumProjects long; what stood behind the
/// name's old place stays where it was.
void AddRecentProject(const QString& Name);

} // namespace kelvrane
