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

/// Opens the options on their database page and waits until a project database is chosen that
/// opens. False when the options were closed first, or the program shuts down.
bool DatabaseDialogLoop();

} // namespace kelvrane
