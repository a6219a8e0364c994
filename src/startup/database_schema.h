// The tables of the program's databases, with the columns in the order that reading by position
// relies on. Keys are never used twice. The indexes serve the questions by day and by project.
#pragma once

#include <QString>

namespace kelvrane {

/// Creates an empty day history. The file is there whole or not at all. Raises FileExists, Sql and
/// the errors of the file store.
void CreateDayInfoDatabase(const QString& path);
/// The same for an empty project database: projects and customers.
void CreateProjectDatabase(const QString& path);

/// The prepared copies that example data is made from: one row a day from 1/1/2000 to 1/7/2000, and
/// the projects and customers that they belong to.
void CreateStarterDayInfoDatabase(const QString& path);
void CreateStarterProjectDatabase(const QString& path);

} // namespace kelvrane
