// The page KELVRANE: automatic start, end of day, reminders with their sound, automatic save. Each
// routine that takes a choice writes its key and the global at once.
#pragma once

#include <QString>

namespace kelvrane {

// The fill procedures.
void SetAutoStartup();
void SetEndDayReminder();
/// The reminder fields; AutoDayReminderSoundFile takes the stored path.
void SetIntraDayReminder();
void SetAutoSave();

/// Turns the switch of that check box; its fields can be used while it is on. Nothing for another
/// control.
void ToggleOptionSwitch(const QString& control);

/// The rows of the time as they stand, hour:minute and half; a full hour keeps its single zero:
/// "9:0 AM".
void TakeStartTime();
void TakeStopTime();
/// "45 Minutes", "2 Hours". Raises TypeMismatch for a text of another form.
void TakeEndDayInterval(const QString& choice);
void TakeIntraDayInterval(const QString& choice);

/// An empty name is no sound. One without a file is told in a box and not stored; it stays in the
/// row, marked, so that it can be corrected.
void TakeSoundFile(const QString& name);
void BrowseSoundFile();
/// Plays the row's file if there is one.
void TestSoundFile();

} // namespace kelvrane
