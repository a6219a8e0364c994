// The recent-project list: RecentProjects and RecentNumbers in memory; File1, File2, ... and
// Number1, Number2, ... in the settings. A number is kept only where several projects have the
// name, and the list then shows it behind the name.
#pragma once

#include "platform/int16.h"

#include <QString>
#include <QStringList>

namespace kelvrane {

struct RecentProject {
    QString name;
    QString number = {}; ///< "" where the name alone says which project it is
    bool operator==(const RecentProject&) const = default;
};

/// Reads up to Count names into RecentProjects, and their numbers. 102 when NoRecentProjects, else
/// 0.
Int16 LoadRecentProjects(Int16 Count);

/// The way to the full list, at the end of every list of recent projects.
inline const QString MoreProjects = QStringLiteral("More ... ");
/// What a list of projects offers: the recent ones, read anew, and MoreProjects.
QStringList ProjectChoices();
/// The text that a list shows for the project at a place (0-based): "Site", or "Site (1002)".
QString RecentLabel(qsizetype place);
/// The project that a list showed with that text at that place (0-based). The recent list may have
/// changed since the list was filled; a text that it doesn't hold is a project's name.
RecentProject RecentProjectOf(qsizetype place, const QString& label);

/// Puts the name first and writes the list, at most ShowNumProjects long; what stood behind the
/// name's old place stays where it was. A number: other projects have the name, too.
void AddRecentProject(const QString& Name, const QString& number = {});
/// Takes the project from the list; the others move up.
void RemoveRecentProject(const QString& name, const QString& number = {});
/// The project at that place (0-based) gets another name and number, in its place.
void SetRecentProject(qsizetype place, const RecentProject& project);

} // namespace kelvrane
