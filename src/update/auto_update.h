// The update: compares the installed version with the maker's version file, fetches the files of a
// newer one, hands over to its installer and closes the program.
//
//     AutoUpdate(false, false, {});   // at start and at night: quiet, returns at once
//     AutoUpdate(true, false, {});    // from the menu: waits, and says so when there is none
//
// With no host in the settings nothing goes over the network.
#pragma once

#include <QString>

namespace kelvrane {

/// When files of an earlier update are still there, removes them, says "Update successful" and
/// leaves the check to the next time. Otherwise a check without messages and without Force is
/// started and not waited for: when its answer brings an update, the user is asked then. Every
/// other one waits, with progress. Force takes the version file FileName and installs what it names
/// also when that isn't newer. A check during another one does nothing.
///
/// What didn't come over verified TLS, the version file included, is never started: it is saved in
/// the program's folder, and a box shows where.
///
/// True when up to date, or when that isn't known yet. An update that is started ends the program.
bool AutoUpdate(bool ShowMessages, bool Force, const QString& FileName);

/// Fetches the usage log from the maker's web host, drops it, and doesn't wait.
void FetchUsageLog();

} // namespace kelvrane
