// What an installer would do, done by the first launch on an account and again by the first launch
// of a newer version: settings keys with their defaults, databases, folders, the help. It only adds
// what is missing and renews the help, so it may be interrupted anywhere and run again.
#pragma once

namespace kelvrane {

/// Runs when the settings hold no Version or an older one; Version is written last, once all else
/// went through. The two empty databases are created on an account's first launch alone: after that
/// a missing file is a missing file. The first error is reported, not raised.
void RunInstallStep();

} // namespace kelvrane
