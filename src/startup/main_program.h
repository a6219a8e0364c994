// The fixed list of steps from the start of the process to the control screen. After it everything
// is an event.
#pragma once

#include <QString>

namespace kelvrane {

enum class StartResult {
    Running, ///< the program lives on in the tray
    Ended,   ///< the process ends now
};

/// Runs the start. CommandText is the process's arguments joined by blanks; previousInstance says
/// whether another one holds the program folder.
StartResult Main(const QString& CommandText, bool previousInstance);

/// Asks for a project database until one opens. False when the user gave up.
bool DatabaseDialogLoop();

} // namespace kelvrane
