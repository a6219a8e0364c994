// What the program was started with.
#pragma once

#include <QString>

namespace kelvrane {

enum class Command {
    None,        ///< no argument
    Debug,       ///< start with the trace
    LoadViewer,  ///< open a collection; the operand is its long path, "" when it doesn't exist
    ForceUpdate, ///< update from the version file in the operand
    Broken,      ///< an argument that fails half-way: start-up goes on
    Unknown,
};

struct CommandLine {
    Command command = Command::None;
    QString operand;
};

/// Reads the process's command text: all arguments joined by blanks.
CommandLine ParseCommandLine(const QString& Argument);

/// Acts on it. True when Main must end. A collection is shown until its viewer closes.
bool ProcessCommandLine(const QString& Argument);

/// The absolute path of an existing file; "" for one that doesn't exist.
QString GetLongFileName(const QString& Path);

} // namespace kelvrane
