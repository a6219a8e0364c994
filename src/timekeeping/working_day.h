// The model of the working day: a list of entries in the order in which they were started, one of
// them running at most. Every command works on the globals, the counter, the day file and the
// history, in a fixed order.
#pragma once

#include "platform/int16.h"

#include <QString>

namespace kelvrane {

/// Begins a new entry with the name in the PROJECT_NAME field; the running entry gets the same
/// minute as its stop. The caller has opened the project table; the criterion finds the record that
/// gives name and number, an empty one means the record that the cursor is on. A criterion that
/// finds no record starts nothing.
void StartNewProject(const QString& criterion);
/// Appends the entry and its six rows. Called by StartNewProject only.
void AddDayEntry(const QString& ProjectName);
/// Moves the project table to the first record that matches; true also for an empty criterion.
/// Finding nothing puts it back.
bool FindProjectRecord(const QString& criterion);

enum class Stops { Entry, Day };
/// Stops the entry at CurrentEntryIndex, saves the file, rolls up and compacts the history. Every
/// step is passed over when it fails. Without the day the entry's total goes on.
void StopCurrentEntry(Stops what = Stops::Entry);
/// The control screen's STOP: StopCurrentEntry and DayStopped when an entry runs, else nothing.
void StopDay();
/// Stops a running entry, sets DayStopped and closes all screens; the process stays in the tray.
void QuitAndSaveDay();
/// Flips the break state by the caption of the tray's break item. The word isn't read.
void ModifySysTrayStatusHeading(const QString& Word);
/// No break is on, and the tray's item offers one; the status text is empty.
void ResetBreakState();
/// After a load during a break: the tray's item offers its end, and the status says so.
void ShowBreakState();

/// Refills the list from DayEntries and re-arms the running entry: 0, or 101 when none runs.
Int16 FillBreakDownList();
/// After the entries were changed and the list refilled: the running entry's counter and heading,
/// or the empty fields of a day in which nothing runs. DayStopped follows.
void RearmRunningEntry();
/// Recomputes the day totals up to CurrentEntryIndex and the five quick view rows.
void UpdateDayStatistics();
/// The first steps of the minute tick: counter, break minutes and the rows of the running entry.
void RefreshRunningEntry();
/// Asks, then removes the entry (0-based) from the day, the file and today's history.
void DeleteDayEntry(int index);

} // namespace kelvrane
