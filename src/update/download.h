// Fetches the files of an update from the maker's FTP host.
#pragma once

#include <QString>
#include <QStringList>

namespace kelvrane {

/// What the server tells of a file.
struct FtpFindRecord {
    double size = 0; ///< in bytes; 0 when it didn't say
};

/// Fetches one file, with frmProgress following, and waits. True when it is there, whole. The path
/// on the server begins at the account's folder. With failIfExists a local file that is there
/// stays, and nothing is fetched; otherwise it is replaced. On failure CurrentTransfer().lastError
/// says why.
bool GetFtpFile(const QString& remotePath, const QString& localPath, FtpFindRecord& record,
                bool failIfExists);

/// Fetches the files into the folder one after the other, up to the first that fails. 0 when the
/// last one arrived, -1 when not.
int DownloadUpdateFiles(const QStringList& names, const QString& folder);

} // namespace kelvrane
