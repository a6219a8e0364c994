// File operations of the program. Everything that touches a file goes through here, so that tests
// can put faults in their way. Paths are native; folders are named without a trailing separator.
//
// Errors: FileNotFound, FileExists, DiskFull, PermissionDenied, PathAccess, DeviceError, and
// BadFileName for an empty name or one with a NUL, with the path in the description.
//
// A file is replaced by a temporary one beside it, of a random name, created exclusively: hidden,
// ".kelvrane-" first and ".new" last, with machine and process between. A killed process leaves it;
// the first replacement of a later process in that folder removes it. The replaced file keeps its
// mode, and a link is followed to its file.
//
// A process whose file size is limited is ended by SIGXFSZ at the limit; main() ignores that
// signal, so that the write fails with DiskFull instead.
#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

namespace kelvrane {

class FileStore {
  public:
    virtual ~FileStore() = default;

    /// False for a folder and for what can't be a name. Raises nothing.
    virtual bool exists(const QString& path) const = 0;
    /// Raises FileNotFound, or another error when it can't be read: DeviceError beyond 256 MB.
    virtual QByteArray read(const QString& path) const = 0;
    /// Makes a new file of that name and writes the bytes; not flushed to disk. A file or link that
    /// had the name goes, and nothing is written through it. For names that are the program's own.
    virtual void create(const QString& path, const QByteArray& bytes) = 0;
    /// Adds the bytes at the end of an existing file and flushes the file to disk.
    virtual void appendAndFlush(const QString& path, const QByteArray& bytes) = 0;
    /// Renames one file over another in one step and flushes the folder. The source must have been
    /// flushed; it gets the target's mode. A target that is a link stays one: the file that it
    /// leads to is replaced. A read-only target (no write permission for its owner) raises
    /// PermissionDenied.
    virtual void replace(const QString& source, const QString& target) = 0;
    /// Moves a file to a name that doesn't exist yet; raises FileExists when it does.
    virtual void move(const QString& source, const QString& target) = 0;
    /// Copies and flushes; overwrites the target in one step, as replace does. A new target gets
    /// the mode of the source.
    virtual void copy(const QString& source, const QString& target) = 0;
    /// Removes a file. Forced: also one that is read-only. Raises FileNotFound.
    virtual void remove(const QString& path, bool forced) = 0;
    /// The same, forced, for a file that may not be there.
    void removeIfThere(const QString& path);
    /// Creates a folder with all parents, mode 0700. Nothing when it exists.
    virtual void createFolder(const QString& path) = 0;
    /// Removes an empty folder.
    virtual void removeFolder(const QString& path) = 0;
    /// Names of the files (not folders) in a folder, sorted; empty when there is none.
    virtual QStringList filesIn(const QString& folder) const = 0;

    /// An empty temporary file beside the file that a path means, for what is to replace it.
    virtual QString createTemporary(const QString& path);

    /// Writes the bytes into a temporary file, flushes it and renames it over the target: after a
    /// kill at any instant the old or the new file is there, whole. A failure leaves the old one
    /// and nothing beside it.
    void writeAtomically(const QString& path, const QByteArray& bytes);
};

/// The real one, on the operating system's calls.
class DiskFileStore : public FileStore {
  public:
    bool exists(const QString& path) const override;
    QByteArray read(const QString& path) const override;
    void create(const QString& path, const QByteArray& bytes) override;
    void appendAndFlush(const QString& path, const QByteArray& bytes) override;
    void replace(const QString& source, const QString& target) override;
    void move(const QString& source, const QString& target) override;
    void copy(const QString& source, const QString& target) override;
    void remove(const QString& path, bool forced) override;
    void createFolder(const QString& path) override;
    void removeFolder(const QString& path) override;
    QStringList filesIn(const QString& folder) const override;
    QString createTemporary(const QString& path) override;

  private:
    void removeLeftOvers(const QString& folder);

    QSet<QString> m_cleared; ///< folders that hold nothing of a killed process any more
};

} // namespace kelvrane
