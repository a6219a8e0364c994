// Backup and compaction of a database of the program, with progress.
#pragma once

#include <QString>

namespace kelvrane {

/// Backs <Folder>/<Base>.mdb up to <Base>_Backup.mdb, when wanted, and compacts it through
/// temp.mdb. Each failed step is passed over, the target is never replaced by an incomplete file,
/// and the first error is shown at the end, in a notice while reports are quiet. A backup that
/// holds earlier days is only replaced by a history that does. No connection to the file may be
/// open.
void CompactDatabaseFile(const QString& Folder, const QString& Base, bool MakeBackup);

} // namespace kelvrane
