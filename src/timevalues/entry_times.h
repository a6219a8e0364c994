// How long the current entry lasts, and its break, by the wall clock: whole minutes of the texts
// that are stored, never below zero. The counter's ticks don't matter here.
//
// A break that is open began at BreakBegan with BreakHeld minutes before it.
#pragma once

#include "frame/globals.h"
#include "platform/int16.h"

#include <QString>

namespace kelvrane {

inline constexpr int MinutesOfDay = 24 * 60;

/// Minute of the day as clock text; 1440 is the midnight at its end, "12:00 AM".
QString ClockTextOf(int minute);
/// Minutes from one clock text to another; 0 where the second is the earlier. Raises TypeMismatch,
/// Subscript.
Int16 SpanBetween(const QString& from, const QString& to);

/// Total and break of the entry at CurrentEntryIndex as of now. One that has a stop goes on in its
/// total, not in its break, until DayStopped. Nothing while the clocks moved since they were last
/// read: then the day has to follow them first. Raises TypeMismatch.
void UpdateCurrentEntry();
/// The same as of a minute of the day.
void UpdateCurrentEntryAt(int minute);

/// The running entry, and its open break with it, began so many minutes later, or earlier when
/// below zero. Raises Subscript, TypeMismatch.
void MoveRunningStart(int minutes);

/// An entry without stop gets the one that agrees with its total, on its own date. Raises
/// TypeMismatch.
void EndAsSaved(DayEntry& entry);

/// Ends the entry at CurrentEntryIndex at this minute of the day, its total and its break with it.
/// Raises Subscript, TypeMismatch.
void FinishCurrentEntry(int minute);

/// The running entry's break begins, or goes on with what the entry holds, at this clock text.
void BeginBreak(const QString& now);
/// Its minutes as of now go to the entry, and nothing more is added.
void EndBreak();
/// No break is open, and none of its minutes are kept: the entry has its own already.
void ForgetBreak();

/// The open break as the day's tail keeps it, and back. What can't be read is no break.
void WriteBreakToTail();
void ReadBreakFromTail();

} // namespace kelvrane
