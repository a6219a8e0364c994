// The recent-project list: RecentProjects in memory, File1, File2, ... in the settings.
#pragma once

#include "platform/int16.h"

#include <QString>
#include <QStringList>

namespace kelvrane {

/// Reads up to Count names into RecentProjects. 102 when NoRecentProjects, else 0.
Int16 LoadRecentProjects(Int16 Count);

/// The way to the full list, at the end of every list of recent projects.
inline const QString MoreProjects = QStringLiteral("More ... ");
/// What a list of projects offers: the recent ones, read anew, and MoreProjects.
QStringList ProjectChoices();

/// Puts the name first and writes the list, at most ShowNumProjects long; what stood behind the
/// name's old place stays where it was.
void AddRecentProject(const QString& Name);

} // namespace kelvrane
