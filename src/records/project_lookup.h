// A project looked up by its name: the one home of the rule for all who start, choose or bill one.
//
//     OpenTable projects(ProjectDatabase, "ProjectInfo", Recordset::ReadOnly);
//     if (FindChosenProject(projects.rows, name, number))
//         start(projects.rows.text(project_column::Name));
#pragma once

#include "platform/recordset.h"

#include <QString>

namespace kelvrane {

enum class ProjectFound {
    Yes,
    No,
    Several, ///< projects of that name, and the number is none of theirs
};

/// Moves the project table to the project. The number counts only where several projects have the
/// name; a current row that has both is the project, wherever it is. Several: on the first of them.
/// No: where it was before, or on the first row. Names and numbers compare byte for byte.
ProjectFound FindProject(Recordset& projects, const QString& name, const QString& number);

/// FindProject for a project that was chosen from a list. Unless it is found, a box says why not: a
/// project that isn't in the table is taken from the recent list, of several none is guessed.
bool FindChosenProject(Recordset& projects, const QString& name, const QString& number);

/// The number of the table's current project where others have its name too, else "": what the
/// recent list keeps beside the name.
QString NumberIfShared(Recordset& projects);

} // namespace kelvrane
