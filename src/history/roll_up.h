// The working day in the history. It is rolled up again and again; each roll-up makes the rows of
// the day's date those of its entries, so it may run at any time.
//
// A roll-up that couldn't be written is pending. Nothing waits for it: it is tried again by a timer
// (50 ms, doubling up to 5 s), then at each minute tick, before a day file goes, and at the end of
// the process. What is pending isn't stored, since comparing shows it; but for the rows that have
// to go or to be renamed, which stand in the day's tail. A day that is over before its rows agree
// keeps a file of its own until they do.
#pragma once

#include <QDate>
#include <QString>

namespace kelvrane {

struct StoredDay;

/// Rolls DayEntries up under DayDate, totals as of now. Raises Subscript for an empty day that owes
/// nothing, TypeMismatch for a time that can't be read. What can't be written is pending; it is
/// reported unless the history is merely in use. Nothing while another process keeps the day.
void AddDataToDayInfoDataBase();
/// The project's row of the day has to go; entries of it that are left bring it back. Tried at
/// once; reported under its own name.
void DeleteSpecificProjectFromDB(const QString& Name);

/// The project's rows of every date get another name, when not now then later; with a number only
/// the rows that have it. Today's entries have the new name already.
void RenameHistoryRows(const QString& from, const QString& to, const QString& number);

/// Whether anything is still to be written.
bool RollUpPending();
/// Whether the rows of a date that is over are still to be written, after trying it once more.
/// Until then the history isn't what the day was, and a change of its rows would be undone.
bool RollUpOwes(QDate date);
/// Tries what is pending, without a box; for the minute tick. Nothing when nothing is pending.
void RetryRollUp();
/// The same at the end of the process: waits with progress, five seconds at most.
void FinishRollUp();

/// Compacts and backs up the history now, or after the roll-up that is pending went through.
void CompactAfterRollUp();

/// The day in memory is over: its last state goes to its file and to the history, a copy stays as
/// the last day file, and DayEntries, DayDate and what the tail holds of that day are emptied. The
/// day file itself stays for the caller to replace or remove.
void CloseDay();
/// A day that isn't in memory is over. An entry without stop was last known with the total that it
/// has, and its row may know more.
void CloseStoredDay(const StoredDay& day);
/// That day is open again; what is pending of it counts no more.
void ForgetClosedDay(QDate date);

/// Finds closed days that an earlier process left; for the start.
void FindClosedDays();

/// Forgets everything but what lies on the disk, as a new process does.
void ResetRollUp();

} // namespace kelvrane
