#include "platform/instance_lock.h"

#include "platform/machine.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kelvrane {

namespace {

constexpr char hostName[] = "host: ";
constexpr char processName[] = "process: ";
constexpr char sinceName[] = "since: ";
constexpr char machineName[] = "machine: ";

QByteArray textOf(const InstanceHolder& holder) {
    return hostName + holder.host.toUtf8() + '\n' + processName +
           QByteArray::number(holder.processId) + '\n' + sinceName +
           holder.since.toString(Qt::ISODate).toUtf8() + '\n' + machineName + holder.machine + '\n';
}

/// std::nullopt unless it names a machine and a process.
std::optional<InstanceHolder> holderOf(const QByteArray& text) {
    InstanceHolder holder;
    for (const QByteArray& line : text.split('\n')) {
        const auto valueOf = [&line](const char* name) {
            return line.mid(qstrlen(name)).trimmed();
        };
        if (line.startsWith(hostName))
            holder.host = QString::fromUtf8(valueOf(hostName));
        else if (line.startsWith(processName))
            holder.processId = valueOf(processName).toLongLong();
        else if (line.startsWith(sinceName))
            holder.since =
                QDateTime::fromString(QString::fromLatin1(valueOf(sinceName)), Qt::ISODate);
        else if (line.startsWith(machineName))
            holder.machine = valueOf(machineName);
    }
    if (holder.host.isEmpty() || holder.machine.isEmpty() || holder.processId <= 0)
        return std::nullopt;
    return holder;
}

void closeFile(int& descriptor) {
    if (descriptor >= 0)
        ::close(std::exchange(descriptor, -1));
}

} // namespace

InstanceLock::InstanceLock(QString path, LockCall lock) : m_path(std::move(path)), m_lock(lock) {}

InstanceLock::~InstanceLock() {
    release();
}

/// The file for writing, else for reading: a lock needs no more.
void InstanceLock::open() {
    const QByteArray name = QFile::encodeName(m_path);
    const int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    m_file = ::open(name.constData(), O_RDWR | O_CREAT | flags, 0600);
    if (m_file < 0) {
        m_trouble = errno;
        m_file = ::open(name.constData(), O_RDONLY | flags);
    }
    struct stat status = {};
    if (m_file >= 0 && (::fstat(m_file, &status) != 0 || !S_ISREG(status.st_mode)))
        closeFile(m_file);
    m_folder = ::open(QFile::encodeName(QFileInfo(m_path).path()).constData(),
                      O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

InstanceLock::Outcome InstanceLock::lockOne(int descriptor) const {
    if (descriptor < 0)
        return Outcome::NoLocks;
    int result = m_lock(descriptor, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR)
        result = m_lock(descriptor, LOCK_EX | LOCK_NB);
    if (result == 0)
        return Outcome::Locked;
    return errno == EWOULDBLOCK ? Outcome::Held : Outcome::NoLocks;
}

QByteArray InstanceLock::readText() const {
    std::array<char, 4096> buffer;
    const ssize_t length = m_file < 0 ? -1 : ::pread(m_file, buffer.data(), buffer.size(), 0);
    return length < 0 ? QByteArray() : QByteArray(buffer.data(), length);
}

InstanceState InstanceLock::tryLock() {
    release();
    m_trouble = 0;
    open();
    const Outcome file = lockOne(m_file);
    const Outcome folder = lockOne(m_folder);
    m_holder = holderOf(readText());
    const bool isElsewhere = m_holder && m_holder->machine != MachineTag();
    if (isElsewhere) // its locks may not be seen here, nor does a copied file tell of its end
        return InstanceState::Unsure;
    if (file == Outcome::Held || folder == Outcome::Held)
        return InstanceState::Running;
    if (file == Outcome::NoLocks && folder == Outcome::NoLocks && m_holder &&
        m_holder->processId != ::getpid() && ProcessLives(m_holder->processId))
        return InstanceState::Unsure;
    m_holder.reset(); // what is left of a process that ended
    return InstanceState::Free;
}

void InstanceLock::keep(const QDateTime& now) {
    if (m_file < 0)
        return;
    m_written = textOf(
        {.host = MachineName(), .processId = ::getpid(), .since = now, .machine = MachineTag()});
    if (::ftruncate(m_file, 0) != 0 ||
        ::pwrite(m_file, m_written.constData(), size_t(m_written.size()), 0) != m_written.size()) {
        if (m_trouble == 0)
            m_trouble = errno;
    }
}

void InstanceLock::release() {
    // The file may name somebody else by now, whom the user started all the same.
    if (!m_written.isEmpty() && readText() == m_written && ::ftruncate(m_file, 0) != 0)
        m_trouble = errno;
    m_written.clear();
    closeFile(m_file);
    closeFile(m_folder);
}

} // namespace kelvrane
