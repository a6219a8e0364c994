// DayInfo.mdb, the lasting history: one row for each project and day. This file knows its rows and
// queries; roll_up.h writes the working day into it.
#pragma once

#include "platform/int16.h"
#include "platform/recordset.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace kelvrane {

struct DayEntry;

/// A project's share of a day. Only its first entry brings its break; the history relies on it.
struct DayProjectSummary {
    QString ProjectName;
    QString ProjectNumber;
    Int16 BreakMinutes;
    Int16 TotalMinutes;
    /// The row keeps what it holds where that is more: the entries were last known at an earlier
    /// minute than the row.
    bool AtLeast = false;
};

/// One summary a project, in the order of their first entries. Raises TypeMismatch for a time that
/// can't be read, Overflow.
QList<DayProjectSummary> SummariesOf(const QList<DayEntry>& entries);

/// Makes the rows of a day those of the summaries, after the rows of the projects named in `gone`
/// were deleted; rows of other projects stay. All in one transaction, and none where nothing
/// differs. Doesn't wait for a history that is locked. Raises DatabaseOpen, DatabaseLocked, Sql;
/// nothing is written then.
void WriteDayRows(QDate day, const QList<DayProjectSummary>& summaries, const QStringList& gone);

/// The history's file.
QString DayHistoryPath();
/// Whether there is a file of that name.
bool DayHistoryExists();
/// The message box for a history that isn't there.
void TellMissingDayHistory();

/// Moves to the first row with that date, searching from the first row; returns the position.
int FindRecordByDate(Recordset& rows, QDate Date);

} // namespace kelvrane
