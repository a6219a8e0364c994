// The small file on the maker's web host that says which version there is and what to fetch:
//
//     VERSION:1.3.0
//     NAME:data.zip;kelvrane-setup.deb
//
// Each line ends in a line feed; the last file is the installer.
#pragma once

#include "platform/int16.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace kelvrane {

/// Major, minor, revision. std::nullopt stands for a field that can't be read.
using UpdateVersion = std::array<std::optional<Int16>, 3>;

/// Fills both from the file's text; zeros and no names where it has none. A file with a name that
/// isn't bare, and so could leave the folder of the download, gives nothing at all. Raises nothing.
void ParseVersionFile(const QString& text, UpdateVersion& version, QStringList& names);

/// False only when the offered version is worth more than the installed one. The worth is major *
/// 1000 + minor * 50 + revision, so minor 20 equals major 1; that is wanted. A version with an
/// unreadable field is worth nothing.
bool IsCurrentVersion(const UpdateVersion& offered);

} // namespace kelvrane
