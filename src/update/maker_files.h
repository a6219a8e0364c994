// Where the maker's hosts keep what the program fetches.
#pragma once

#include <QString>
#include <QUrl>

namespace kelvrane::maker_files {

inline constexpr char VersionFile[] = "kelvrane_version.txt";
inline constexpr char UsageLog[] = "userlog.txt";
inline constexpr char Agent[] = "Brindlemoor-Ware FTP Program";

/// The path of a file below a host's address or an account's folder, percent-encoded.
inline QString Path(const QString& name) {
    return QStringLiteral("updateinfo/kelvrane/") +
           QString::fromLatin1(QUrl::toPercentEncoding(name));
}

} // namespace kelvrane::maker_files
