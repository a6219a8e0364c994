// Where the files that come with the program lie: beside it where it was built, in the folders of
// the installation where it was installed.
#pragma once

#include <QString>

namespace kelvrane {

/// The full path of a file that comes with the program; "" when it isn't there.
QString InstalledFile(const QString& name);

/// Looks in this folder alone; for programs that are built elsewhere, such as tests. "": as usual.
void SetInstalledFolder(const QString& folder);

} // namespace kelvrane
