// How the program closes its screens, and how it ends.
#pragma once

namespace kelvrane {

/// Unloads every screen but frmInfo and frmExit, in a fixed order; the tick and the tray live on.
void UnloadAllForms();

/// What the end of the process owes the day: its file, and its rows in the history. Stops nothing.
/// Waits five seconds at most for a history that is locked.
void SaveForEnd();

/// SaveForEnd, unloads all screens, removes the tray icon and ends the event loop. A
/// running entry stays running in the file and goes on counting at the next start.
void ShutDownProgram();

/// The same without the day file, for a process that never loaded the day.
void EndProgram();

} // namespace kelvrane
