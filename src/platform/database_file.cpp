#include "platform/database_file.h"

#include "platform/error.h"
#include "platform/file_store.h"

#include <QFileInfo>

#include <utility>

namespace kelvrane {

namespace {

constexpr const char* journalEndings[] = {"-journal", "-wal"};

/// It lies beside the file that a link leads to.
QString journalOf(const QString& database, const char* ending) {
    const QString file = QFileInfo(database).canonicalFilePath();
    return (file.isEmpty() ? database : file) + QLatin1String(ending);
}

void refuseJournal(const FileStore& files, const QString& path) {
    for (const char* ending : journalEndings)
        if (const QString journal = journalOf(path, ending); files.exists(journal))
            Raise(errors::PathAccess,
                  QStringLiteral("%1: the journal is still there").arg(journal));
}

} // namespace

DatabaseCompaction::DatabaseCompaction(FileStore& files, QString path)
    : m_files(files), m_path(std::move(path)) {}

void DatabaseCompaction::settle() {
    auto connection = std::make_unique<Connection>(m_path);
    for (const char* sql : {"PRAGMA journal_mode = DELETE", "PRAGMA locking_mode = EXCLUSIVE",
                            "BEGIN EXCLUSIVE", "COMMIT"})
        connection->execute(QLatin1String(sql));
    removeEmptyJournal();
    m_connection = std::move(connection);
}

/// A writer that was killed before it had a first page safe leaves a journal without contents. The
/// database doesn't count it as one, so it stays until the next write, and would be taken for one
/// that belongs to the file which replaces this one. Nobody else is at the database now, and one
/// with contents has been applied by the exclusive transaction.
void DatabaseCompaction::removeEmptyJournal() {
    m_files.removeIfThere(journalOf(m_path, journalEndings[0]));
}

void DatabaseCompaction::backupTo(const QString& path) {
    vacuumInto(path);
}

void DatabaseCompaction::compactTo(const QString& path) {
    vacuumInto(path);
}

void DatabaseCompaction::vacuumInto(const QString& path) {
    if (!m_connection)
        Raise(errors::NoObject);
    if (m_files.exists(path) && QFileInfo(path).size() > 0)
        Raise(errors::FileExists, QStringLiteral("%1: the file is already there").arg(path));
    if (QFileInfo(path).isSymLink()) // to nowhere; the copy would be made there
        m_files.remove(path, true);
    QSqlQuery query(m_connection->database());
    if (!query.prepare(QStringLiteral("VACUUM INTO ?")))
        RaiseSql(query);
    query.addBindValue(path);
    if (!query.exec())
        RaiseSql(query);
    query.finish();
    m_files.appendAndFlush(path, {}); // the database leaves the flush to its caller
}

void DatabaseCompaction::close() {
    m_connection.reset();
    refuseJournal(m_files, m_path);
}

void ReplaceDatabase(FileStore& files, const QString& source, const QString& target) {
    refuseJournal(files, target);
    files.replace(source, target);
}

} // namespace kelvrane
