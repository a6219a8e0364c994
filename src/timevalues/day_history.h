// DayInfo.mdb, the lasting history: one row for each project and day. The day is rolled up into it
// again and again; each call replaces today's rows, so it may run at any time.
#pragma once

#include "platform/int16.h"
#include "platform/recordset.h"

#include <QDate>
#include <QList>
#include <QString>

namespace kelvrane {

/// A project's share of the day. Only its first entry brings its break; the history relies on it.
struct DayProjectSummary {
    QString ProjectName;
    QString ProjectNumber;
    Int16 BreakMinutes;
    Int16 TotalMinutes;
};

/// Rolls DayEntries up and writes today's rows. Raises Subscript for an empty day, TypeMismatch for
/// a time that can't be read; database errors are reported, not raised.
void AddDataToDayInfoDataBase();
/// The same for another day: what a sleeping machine still owes its last one.
void RollUpDay(QDate day);
/// Writes one row a summary for today, all in one transaction; what was written before a row that
/// fails stays. Errors end in the error report.
void WriteDayInfoRows(const QList<DayProjectSummary>& summaries);
/// Deletes today's row of the project; errors end in the error report.
void DeleteSpecificProjectFromDB(const QString& Name);

/// Whether there is a file of that name.
bool DayHistoryExists();
/// The message box for a history that isn't there.
void TellMissingDayHistory();

/// Moves to the first row with that date, searching from the first row; returns the position.
int FindRecordByDate(Recordset& rows, QDate Date);

/// "SELECT * FROM DayInfo WHERE Date BETWEEN ..." over From to To, both included, by ProjectName.
QString PeriodQuery(QDate From, QDate To);
/// The same for one project; the name stands as it is.
QString ProjectPeriodQuery(const QString& Name, QDate From, QDate To);

} // namespace kelvrane
