// What the chart screen reads from the history: the sums of a period in one pass over its rows, and
// single rows for what is opened in the tree. Dates are both included. Everything raises
// DatabaseOpen and Sql.
//
// Names go to the database as values, never as part of the statement, so that a project called
// O'Neil is summed like any other. They compare exactly.
#pragma once

#include "timekeeping/hours_chart.h"

#include <QDate>
#include <QList>
#include <QString>

namespace kelvrane {

/// A row of the history.
struct HistoryRow {
    QString Date; ///< as it is stored
    QString ProjectName;
    QString ProjectNumber;
    qint32 BreakMinutes = 0;
    qint32 TotalMinutes = 0; ///< with the break
};

/// A record for each project of the period, ordered by name without regard to case, then exactly;
/// its number is that of its first row. Raises Overflow for a sum beyond 32 bits.
QList<DayProjectTotal> ReadProjectTotals(QDate from, QDate to);

/// The dates of the period that have rows, in their order, as they are stored.
QStringList ReadDates(QDate from, QDate to);

/// In the order in which they were written.
QList<HistoryRow> ReadRowsOfProject(const QString& name, QDate from, QDate to);
/// date: as it is stored.
QList<HistoryRow> ReadRowsOfDate(const QString& date);

} // namespace kelvrane
