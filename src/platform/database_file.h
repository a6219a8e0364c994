// A database as a file: backed up, compacted and replaced while nobody else has it open. One
// exclusive connection serves backup and compaction; the file is never copied byte by byte.
//
//     DatabaseCompaction compaction(files, target);
//     compaction.settle();
//     compaction.backupTo(backup);
//     compaction.compactTo(temp);
//     compaction.close();
//     ReplaceDatabase(files, temp, target);
#pragma once

#include "platform/connection.h"

#include <memory>

namespace kelvrane {

class FileStore;

class DatabaseCompaction {
  public:
    DatabaseCompaction(FileStore& files, QString path);
    ~DatabaseCompaction() = default;
    DatabaseCompaction(const DatabaseCompaction&) = delete;
    DatabaseCompaction& operator=(const DatabaseCompaction&) = delete;

    /// Opens the database for this object alone and settles a journal that a crash left, with
    /// contents or without. Raises
    /// DatabaseOpen; Sql when another process uses it or it can't be written.
    void settle();
    /// Writes a whole, flushed copy to a file that doesn't exist yet or is empty, never through a
    /// link. Raises NoObject unless
    /// settled, Sql (a full disk included) and the errors of the file store; what was begun may
    /// then lie there.
    void backupTo(const QString& path);
    void compactTo(const QString& path);
    /// Ends the connection. Raises PathAccess when a journal is left beside the database.
    void close();

  private:
    void removeEmptyJournal();
    void vacuumInto(const QString& path);

    FileStore& m_files;
    QString m_path;
    std::unique_ptr<Connection> m_connection;
};

/// Puts a flushed database file in another's place in one step. Raises PathAccess when a journal
/// lies beside the target: it would be applied to the wrong file.
void ReplaceDatabase(FileStore& files, const QString& source, const QString& target);

} // namespace kelvrane
