// The folder that holds every file of the program, and the names of those files: one constant each.
#pragma once

#include <QString>

namespace kelvrane {

/// App.Path: $KELVRANE_HOME when set, else the per-user data folder. No trailing separator.
/// Fixed at the first call; tests set it.
const QString& AppPath();
void SetAppPath(const QString& folder);

/// AppPath() joined with a name by the platform's separator.
QString InAppPath(const QString& name);

namespace files {
inline constexpr char DayFile[] = "Fileinfo.dat";
inline constexpr char DayHistory[] = "DayInfo.mdb";
inline constexpr char ProjectDatabase[] = "kelvrane.mdb";
inline constexpr char DatabaseList[] = "SSDBInfo.dat";
inline constexpr char Lock[] = "kelvrane.lock";
inline constexpr char Settings[] = "settings.json";
inline constexpr char StarterFolder[] = "Starter Databases";
inline constexpr char StarterDayHistory[] = "dayinfo.mdb"; // in the starter folder
inline constexpr char UpdateFolder[] = "update";
inline constexpr char DataFolder[] = "data";
inline constexpr char HelpFile[] = "Kelvrane.qch";
} // namespace files

} // namespace kelvrane
