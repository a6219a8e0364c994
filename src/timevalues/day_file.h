// Fileinfo.dat, the live record of today: three header lines, one line an entry with its six fields
// joined by ";", two blank lines. It is rewritten whole at each save and thrown away by the first
// read on a later date.
#pragma once

#include "frame/globals.h"

#include <QList>
#include <QString>

namespace kelvrane {

/// Writes DayEntries to the day file by way of its temporary file. Leaves silently at the first
/// error but for the status text and a notice in the tray; the old file is then as it was.
void SaveDayFile();

/// Reads today's file into the entries and sets CurrentEntryIndex to the number read, or empties
/// the entries and sets -1. The mode has no effect. Total times that don't agree with their start
/// and stop are recomputed and the file rewritten. Raises Subscript for a line of fewer than six
/// fields, TypeMismatch for a time that can't be read.
void LoadDayFile(const QString& mode, QList<DayEntry>& entries);

/// 0 when today's file is there; 105 when not, and a file of another date is then removed. One copy
/// of what is removed stays beside it.
Int16 VerifyDayFile();

/// Creates the file with the three header lines. Raises the errors of the file store.
void WriteDayFileHeader(const QString& path);
/// Appends the entries and the two blank lines, flushes, and puts the file in the final one's place
/// in one step. False when it left at an error.
bool WriteDayFileBody(const QString& temporary, const QString& final);

} // namespace kelvrane
