// The folder "update" in the program's folder: the files of an update wait there for the installer,
// and at the next check they say that it ran.
#pragma once

#include <QString>
#include <QStringList>

namespace kelvrane {

/// Whether files of an earlier update lie there.
bool UpdateWasStarted();
/// Removes the files, read-only ones too, and the folder. Raises what the file store raises.
void ClearUpdateFolder();

/// The name of a download's own folder, beside it, as QTemporaryDir takes it.
inline constexpr char DownloadFolder[] = "update-XXXXXX";
/// Removes those that a process that was killed left behind, a day or more ago.
void RemoveOldDownloads();

/// Moves the files there. False when one couldn't be moved; the folder is then gone again.
bool TakeUpdateFiles(const QStringList& names, const QString& folder);

/// The folder, beside it, of an update that the program itself must not start.
inline constexpr char SavedFolder[] = "downloaded-update";
/// Moves the files there, over those of an earlier download. The folder's path; "" when one
/// couldn't be moved.
QString SaveUpdateFiles(const QStringList& names, const QString& folder);

/// Starts one of the files: a program or a script runs by itself, anything else, such as a package,
/// is opened with the desktop's program for it. False when the file isn't one of that folder (a
/// link, for instance), or nothing could be started.
bool StartInstaller(const QString& name);

} // namespace kelvrane
