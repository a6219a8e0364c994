// Fileinfo.dat, the live record of today: three header lines, one line an entry with its six fields
// joined by ";", two blank lines, and behind them the day's tail (frame/day_tail.h), which readers
// of the entries never reach. It is rewritten whole at each save. A ";" or "\" in a field has a
// backslash before it.
//
// The date of the file is that of its entries, DayDate. Nothing here throws a day away: what a
// later date does with it is for the modules above.
#pragma once

#include "frame/globals.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace kelvrane {

/// A day as a file holds it; totals as they were saved.
struct StoredDay {
    QDate date; ///< invalid: the file doesn't say
    QList<DayEntry> entries;
    QStringList tail;
    std::optional<RuntimeError> damage; ///< where reading the entries ended early
};

/// Writes DayEntries and the tail to the day file by way of its temporary file, totals as of now.
/// Leaves silently at the first error but for the status text and, once, a notice in the tray; the
/// old file is then as it was, and DayUnsaved is set. Nothing while another process keeps the day.
void SaveDayFile();

/// Reads the day file, of whatever date, into the entries, DayDate and the tail, and sets
/// CurrentEntryIndex to the number read. Total times of today's entries that don't agree with their
/// start and stop are recomputed, and the file rewritten for a finished one; a running entry never
/// gets less than it was saved with. The mode has no effect. LastFileStatus is 105 where the file
/// isn't today's, and where there is none: then the entries are empty and the index is -1. Raises
/// Subscript for a line of fewer than six fields, TypeMismatch for a time that can't be read, with
/// the entries in front of it loaded, and the errors of the file store with nothing changed.
void LoadDayFile(const QString& mode, QList<DayEntry>& entries);

/// The totals that a load gives to entries of today. True when a finished one had another. Raises
/// TypeMismatch.
bool RecomputeTotals(QList<DayEntry>& entries);

/// 0 when today's file is there, 105 when not. Changes nothing.
Int16 VerifyDayFile();

/// Creates the file with the three header lines. Raises the errors of the file store.
void WriteDayFileHeader(const QString& path);
/// Appends the entries, the two blank lines and the tail, flushes, and puts the file in the final
/// one's place in one step. False when it left at an error.
bool WriteDayFileBody(const QString& temporary, const QString& final);

/// Places of the day file and of its copies: the last one that was put by, and days that are over
/// but not yet in the history.
QString DayFilePath();
QString LastDayFilePath();
QString ClosedDayFilePath(QDate date);
/// The dates of all closed days that lie there, oldest first.
QList<QDate> ClosedDayFiles();

/// std::nullopt without such a file. Raises the errors of the file store.
std::optional<StoredDay> ReadStoredDay(const QString& path);
/// Writes a day to a file of its own, in one step. Raises the errors of the file store.
void WriteStoredDay(const QString& path, const StoredDay& day);
/// Errors are passed over.
void RemoveDayFile();
/// Keeps a copy of the day file as the last one, and removes the file. What can't be copied stays.
void PutDayFileBy();

} // namespace kelvrane
