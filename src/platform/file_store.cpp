#include "platform/file_store.h"

#include "platform/error.h"
#include "platform/machine.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <optional>
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
    Handle(const QString& path, int openFlags, mode_t newMode = 0666)
        : m_path(path), m_descriptor(uninterrupted([name = nativeName(path), openFlags, newMode] {
              return ::open(name.constData(), openFlags | O_CLOEXEC, newMode);
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
    /// As far as this user and the file system allow.
    void setOwnerAndMode(const struct stat& wanted) {
        struct stat status = {};
        const bool known = ::fstat(m_descriptor, &status) == 0;
        bool sameGroup = known && status.st_gid == wanted.st_gid;
        if (known && (status.st_uid != wanted.st_uid || !sameGroup))
            sameGroup = ::fchown(m_descriptor, wanted.st_uid, wanted.st_gid) == 0 ||
                        ::fchown(m_descriptor, uid_t(-1), wanted.st_gid) == 0;
        // What a group was allowed isn't for another group.
        const mode_t mode = wanted.st_mode & 07777;
        (void)::fchmod(m_descriptor, sameGroup ? mode : mode & ~mode_t(S_IRWXG));
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

/// False when the two are on different file systems.
bool renamed(const QString& source, const QString& target) {
    const QByteArray from = nativeName(source);
    const QByteArray to = nativeName(target);
    if (::rename(from.constData(), to.constData()) == 0)
        return true;
    if (errno != EXDEV)
        raiseErrno(errno, errno == ENOENT ? source : target);
    return false;
}

void rename(const QString& source, const QString& target) {
    if (!renamed(source, target))
        raiseErrno(EXDEV, target);
}

/// std::nullopt where there is nothing. Follows links.
std::optional<struct stat> statusOf(const QString& path) {
    struct stat status = {};
    if (::stat(nativeName(path).constData(), &status) != 0)
        return std::nullopt;
    return status;
}

/// The path itself, or where a chain of links leads; nothing has to be there.
QString resolveLinks(const QString& path) {
    constexpr int longestChain = 40;
    QString file = path;
    for (int links = 0; links < longestChain; ++links) {
        std::array<char, PATH_MAX> link;
        const ssize_t length = ::readlink(nativeName(file).constData(), link.data(), link.size());
        if (length < 0)
            return file; // not a link; other errors come up at its use
        const QString next = QFile::decodeName(QByteArray(link.data(), length));
        file = next.startsWith(u'/') ? next : folderOf(file) + u'/' + next;
    }
    raiseErrno(ELOOP, path);
}

QString temporaryName() {
    return QStringLiteral(".kelvrane-%1-%2-%3.new")
        .arg(QLatin1String(MachineTag()))
        .arg(::getpid())
        .arg(QRandomGenerator::system()->generate64(), 16, 16, QLatin1Char('0'));
}

/// Only those of a process of this machine that is gone: nobody else's work is touched.
bool isLeftOver(const QString& name) {
    static const QRegularExpression form(QStringLiteral(
        "\\A\\.kelvrane-([0-9a-f]{8})-([0-9]{1,10})-[0-9a-f]{16}\\.new(-journal)?\\z"));
    const QRegularExpressionMatch match = form.match(name);
    return match.hasMatch() && match.captured(1).toLatin1() == MachineTag() &&
           !ProcessLives(match.captured(2).toLongLong());
}

void copyBytes(Handle& from, Handle& to) {
    std::array<char, 65536> buffer;
    while (const qint64 got = from.read(buffer.data(), buffer.size()))
        to.write(buffer.data(), got);
}

/// Runs a step that writes a temporary file; one that fails leaves none behind.
template <typename Step>
void orRemove(FileStore& files, const QString& temporary, Step&& step) {
    try {
        step();
    } catch (const RuntimeError&) {
        try {
            files.remove(temporary, true);
        } catch (const RuntimeError&) {
            // Whatever keeps it there: a later process removes it.
        }
        throw;
    }
}

} // namespace

QString FileStore::createTemporary(const QString& path) {
    const QString fresh = folderOf(path) + u'/' + temporaryName();
    create(fresh, {});
    return fresh;
}

void FileStore::removeIfThere(const QString& path) {
    if (exists(path))
        remove(path, true);
}

void FileStore::writeAtomically(const QString& path, const QByteArray& bytes) {
    const QString fresh = createTemporary(path);
    orRemove(*this, fresh, [&] {
        appendAndFlush(fresh, bytes);
        replace(fresh, path);
    });
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
    // Never through a link, nor into a file that has a second name elsewhere.
    const QByteArray name = nativeName(path);
    if (::unlink(name.constData()) != 0 && errno != ENOENT)
        raiseErrno(errno, path);
    Handle file(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
    file.write(bytes.constData(), bytes.size());
    file.close();
}

QString DiskFileStore::createTemporary(const QString& path) {
    const QString target = resolveLinks(path);
    const QString folder = folderOf(target);
    removeLeftOvers(folder);
    const QString fresh = folder + u'/' + temporaryName();
    // Nobody may read more of a file while it is being replaced than before.
    Handle file(fresh, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, statusOf(target) ? 0600 : 0666);
    file.close();
    return fresh;
}

/// What a process that was killed left there; looked for once a folder, since this process leaves
/// nothing behind.
void DiskFileStore::removeLeftOvers(const QString& folder) {
    if (m_cleared.contains(folder))
        return;
    m_cleared.insert(folder);
    const QStringList names = QDir(folder).entryList(
        {QStringLiteral(".kelvrane-*")}, QDir::Files | QDir::Hidden | QDir::System, QDir::Unsorted);
    for (const QString& name : names)
        if (isLeftOver(name)) // one that can't be removed does no harm
            ::unlink(QFile::encodeName(folder + u'/' + name).constData());
}

void DiskFileStore::appendAndFlush(const QString& path, const QByteArray& bytes) {
    Handle file(path, O_WRONLY | O_APPEND | O_NOFOLLOW);
    file.write(bytes.constData(), bytes.size());
    file.flush();
    file.close();
}

void DiskFileStore::replace(const QString& source, const QString& target) {
    const QString file = resolveLinks(target);
    refuseReadOnly(file);
    if (const auto kept = statusOf(file); kept && S_ISREG(kept->st_mode))
        Handle(source, O_RDONLY | O_NOFOLLOW | O_NONBLOCK).setOwnerAndMode(*kept);
    if (!renamed(source, file)) { // a link to another file system
        copy(source, file);
        remove(source, true);
    }
    flushFolderOf(file);
}

void DiskFileStore::move(const QString& source, const QString& target) {
    struct stat status = {};
    if (::lstat(nativeName(target).constData(), &status) == 0)
        raiseErrno(EEXIST, target);
    rename(source, target);
    flushFolderOf(target);
}

void DiskFileStore::copy(const QString& source, const QString& target) {
    const QString file = resolveLinks(target);
    refuseReadOnly(file);
    Handle from(source, O_RDONLY);
    const auto kept = statusOf(statusOf(file) ? file : source);
    const QString fresh = createTemporary(file);
    orRemove(*this, fresh, [&] {
        Handle to(fresh, O_WRONLY | O_NOFOLLOW);
        if (kept)
            to.setOwnerAndMode(*kept);
        copyBytes(from, to);
        to.flush();
        to.close();
        rename(fresh, file);
    });
    flushFolderOf(file);
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
