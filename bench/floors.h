// What the system underneath needs for the same work, with the same opening and closing: the floor
// that each figure is held against.
#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>

namespace kelvrane::bench {

/// The five rows of a day looked up and updated through Qt SQL, in one transaction.
void FloorRollUp(const QString& database, QDate day, const QStringList& projects);
/// The week's rows, and each project's, read through Qt SQL. Returns the cells that were read.
qsizetype FloorWeekView(const QString& database, QDate firstDay);
/// One pass over a period's rows in the order of their projects, work and break summed for each
/// through Qt SQL. Returns the projects.
qsizetype FloorPeriodPass(const QString& database, QDate first, QDate last);
/// A look at one day of the history and then at another, all fields as text. Returns the rows read.
qsizetype FloorTwoDays(const QString& database, QDate first, QDate second);
/// The bytes written beside the target, flushed, renamed over it, and the folder flushed.
void FloorSave(const QString& target, const QByteArray& bytes);
/// One pass over all projects through Qt SQL, with a search for the text in every field. True when
/// it was found.
bool FloorProjectPass(const QString& database, const QString& wanted);
/// The page parsed by libxml2 alone, so many times.
void FloorHtmlParses(const QByteArray& html, int times);
/// The queries run one after the other on one connection, all fields as text.
qsizetype FloorQueries(const QString& database, const QStringList& queries);
/// VACUUM INTO a backup and into a copy, each flushed and renamed into place.
void FloorCompaction(const QString& database, const QString& backup);

} // namespace kelvrane::bench
