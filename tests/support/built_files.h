// What comes with the program as it was built, for tests that use it.
#pragma once

#include "platform/installed_files.h"

#include <QCoreApplication>

namespace kelvrane::testing {

/// While it lives, files that come with the program are looked for where they were built.
class BuiltFiles {
  public:
    BuiltFiles() {
        SetInstalledFolder(QCoreApplication::applicationDirPath() + QStringLiteral("/.."));
    }
    ~BuiltFiles() { SetInstalledFolder({}); }
};

} // namespace kelvrane::testing
