#include "platform/file_store.h"

#include "platform/error.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kelvrane {

namespace {

/// Nothing that the program keeps comes near it; a file beyond is not one of ours.
constexpr qint64 largestFile = qint64(256) * 1024 * 1024;

struct ErrnoRow {
    int code;
    int number;
};
constexpr ErrnoRow errnoTable[] = {
    {ENOSPC, errors::DiskFull},          {EDQUOT, errors::DiskFull},
    {EFBIG, errors::DiskFull},           {EACCES, errors::PermissionDenied},
    {EPERM, errors::PermissionDenied},   {EROFS, errors::PermissionDenied},
    {ETXTBSY, errors::PermissionDenied}, {ENOENT, errors::FileNotFound},
    {EEXIST, errors::FileExists},        {ENOTDIR, errors::PathAccess},
    {EISDIR, errors::PathAccess},        {ENOTEMPTY, errors::PathAccess},
    {ELOOP, errors::PathAccess},         {EBUSY, errors::PathAccess},
    {ENAMETOOLONG, errors::BadFileName}, {EINVAL, errors::BadFileName},
};

[[noreturn]] void raiseErrno(int code, const QString& path) {
    const auto row = std::find_if(std::begin(errnoTable), std::end(errnoTable),
                                  [code](const ErrnoRow& entry) { return entry.code == code; });
    const int number = row == std::end(errnoTable) ? errors::DeviceError : row->number;
    Raise(number, QStringLiteral("%1: %2").arg(path, QString::fromLocal8Bit(std::strerror(code))));
}

QByteArray nativeName(const QString& path) {
    if (path.isEmpty() || path.contains(QChar::Null))
        Raise(errors::BadFileName,
              QStringLiteral("%1: not a file name").arg(QString(path).replace(QChar::Null, u'?')));
    return QFile::encodeName(path);
}

/// Repeats a call that a signal interrupted.
template <typename Call>
auto uninterrupted(Call&& call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// An open file; closed on every way out.
class Handle {
  public:
    Handle(const QString& path, int openFlags)
        : m_path(path), m_descriptor(uninterrupted([name = nativeName(path), openFlags] {
              return ::open(name.constData(), openFlags | O_CLOEXEC, 0666);
          })) {
        if (m_descriptor < 0)
            raiseErrno(errno, path);
    }
    ~Handle() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    qint64 size() const {
        struct stat status = {};
        if (::fstat(m_descriptor, &status) != 0)
            raiseErrno(errno, m_path);
        return status.st_size;
    }
    /// 0 at the end of the file.
    qint64 read(char* bytes, qint64 room) {
        const ssize_t got =
            uninterrupted([&] { return ::read(m_descriptor, bytes, static_cast<size_t>(room)); });
        if (got < 0)
            raiseErrno(errno, m_path);
        return got;
    }
    void write(const char* bytes, qint64 count) {
        while (count > 0) {
            const ssize_t put = uninterrupted(
                [&] { return ::write(m_descriptor, bytes, static_cast<size_t>(count)); });
            if (put < 0)
                raiseErrno(errno, m_path);
            bytes += put;
            count -= put;
        }
    }
    void flush() {
        if (uninterrupted([&] { return ::fsync(m_descriptor); }) != 0)
            raiseErrno(errno, m_path);
    }
    /// Some file systems report a full disk only here.
    void close() {
        if (::close(std::exchange(m_descriptor, -1)) != 0 && errno != EINTR)
            raiseErrno(errno, m_path);
    }

  private:
    QString m_path;
    int m_descriptor;
};

QString folderOf(const QString& path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    if (slash < 0)
        return QStringLiteral(".");
    return slash == 0 ? QStringLiteral("/") : path.left(slash);
}

void flushFolderOf(const QString& path) {
    Handle folder(folderOf(path), O_RDONLY | O_DIRECTORY);
    folder.flush();
}

/// Also for the superuser, whom the system would let through.
void refuseReadOnly(const QString& path) {
    struct stat status = {};
    if (::stat(nativeName(path).constData(), &status) == 0 && (status.st_mode & S_IWUSR) == 0)
        raiseErrno(EACCES, path);
}

void rename(const QString& source, const QString& target) {
    const QByteArray from = nativeName(source);
    const QByteArray to = nativeName(target);
    if (::rename(from.constData(), to.constData()) != 0)
        raiseErrno(errno, errno == ENOENT ? source : target);
}

} // namespace

void FileStore::writeAtomically(const QString& path, const QByteArray& bytes) {
    const QString fresh = path + QStringLiteral(".new");
    create(fresh, {});
    appendAndFlush(fresh, bytes);
    replace(fresh, path);
}

bool DiskFileStore::exists(const QString& path) const {
    if (path.isEmpty() || path.contains(QChar::Null))
        return false;
    struct stat status = {};
    return ::stat(nativeName(path).constData(), &status) == 0 && !S_ISDIR(status.st_mode);
}

QByteArray DiskFileStore::read(const QString& path) const {
    Handle file(path, O_RDONLY);
    const qint64 size = file.size();
    if (size > largestFile)
        Raise(errors::DeviceError, QStringLiteral("%1: the file is too large").arg(path));
    QByteArray bytes(std::max<qint64>(size, 0) + 1, Qt::Uninitialized); // one more, to see the end
    qint64 filled = 0;
    while (const qint64 got = file.read(bytes.data() + filled, bytes.size() - filled)) {
        filled += got;
        if (filled > largestFile)
            Raise(errors::DeviceError, QStringLiteral("%1: the file is too large").arg(path));
        if (filled == bytes.size())
            bytes.resize(bytes.size() * 2);
    }
    bytes.truncate(filled);
    return bytes;
}

void DiskFileStore::create(const QString& path, const QByteArray& bytes) {
    Handle file(path, O_WRONLY | O_CREAT | O_TRUNC);
    file.write(bytes.constData(), bytes.size());
    file.close();
}

void DiskFileStore::appendAndFlush(const QString& path, const QByteArray& bytes) {
    Handle file(path, O_WRONLY | O_APPEND);
    file.write(bytes.constData(), bytes.size());
    file.flush();
    file.close();
}

void DiskFileStore::replace(const QString& source, const QString& target) {
    refuseReadOnly(target);
    rename(source, target);
    flushFolderOf(target);
}

void DiskFileStore::move(const QString& source, const QString& target) {
    struct stat status = {};
    if (::lstat(nativeName(target).constData(), &status) == 0)
        raiseErrno(EEXIST, target);
    rename(source, target);
    flushFolderOf(target);
}

void DiskFileStore::copy(const QString& source, const QString& target) {
    refuseReadOnly(target);
    const QString fresh = target + QStringLiteral(".new");
    {
        Handle from(source, O_RDONLY);
        Handle to(fresh, O_WRONLY | O_CREAT | O_TRUNC);
        std::array<char, 65536> buffer;
        while (const qint64 got = from.read(buffer.data(), buffer.size()))
            to.write(buffer.data(), got);
        to.flush();
        to.close();
    }
    rename(fresh, target);
    flushFolderOf(target);
}

void DiskFileStore::remove(const QString& path, bool forced) {
    if (!forced)
        refuseReadOnly(path);
    if (::unlink(nativeName(path).constData()) != 0)
        raiseErrno(errno, path);
}

void DiskFileStore::createFolder(const QString& path) {
    const QByteArray name = nativeName(path);
    if (::mkdir(name.constData(), 0700) == 0)
        return;
    if (errno == ENOENT && folderOf(path) != path) {
        createFolder(folderOf(path));
        if (::mkdir(name.constData(), 0700) == 0)
            return;
    }
    const int code = errno;
    struct stat status = {};
    if (code == EEXIST && ::stat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode))
        return;
    raiseErrno(code == EEXIST ? ENOTDIR : code, path);
}

void DiskFileStore::removeFolder(const QString& path) {
    if (::rmdir(nativeName(path).constData()) != 0)
        raiseErrno(errno, path);
}

QStringList DiskFileStore::filesIn(const QString& folder) const {
    if (folder.isEmpty() || folder.contains(QChar::Null))
        return {};
    QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
    names.sort();
    return names;
}

} // namespace kelvrane
