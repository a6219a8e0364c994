// Whether this process may start, and whether it is the one that keeps the day of the program's
// folder: two processes never do.
#pragma once

#include "startup/command_line.h"

namespace kelvrane {

class InstanceLock;

enum class DayClaim {
    Kept,           ///< this process keeps the day; the lock is held as long as the object lives
    Beside,         ///< it runs beside the one that does
    NotNeeded,      ///< its command needs no day
    AlreadyRunning, ///< another one runs: it ends and says so
    Declined,       ///< the user chose not to start it
};

/// Sets KeepsDay. A start without a command gives way to another process, one with a command that
/// needs a day runs beside it; where that process can't be seen, it asks. A folder that can't be
/// written to is shown in a box and keeps nobody out.
DayClaim ClaimDay(InstanceLock& lock, Command command);

} // namespace kelvrane
