// The lock of a folder whose day only one process may keep. What decides is a lock of the system on
// an open file, which ends with its process whatever becomes of it; the text in the file only tells
// whom to name. The folder itself is locked too, where the system can: a full or read-only disk
// takes no new file, and somebody may remove the file.
//
//     InstanceLock lock(path);
//     if (lock.tryLock() == InstanceState::Free)
//         lock.keep(clock.now());
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <sys/file.h>

namespace kelvrane {

enum class InstanceState {
    Free,    ///< nobody else keeps the folder
    Running, ///< a living process does
    Unsure,  ///< holder() may: it is on another machine, or locks don't work in this folder
};

struct InstanceHolder {
    QString host;
    qint64 processId = 0;
    QDateTime since;    ///< invalid when the file doesn't tell
    QByteArray machine; ///< MachineTag() of its machine
};

class InstanceLock {
  public:
    using LockCall = int (*)(int descriptor, int operation);
    explicit InstanceLock(QString path, LockCall lock = ::flock);
    /// Ends the lock; the file stays, without contents.
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// Raises nothing and waits for nobody. What isn't Free can still be kept, if the user says so.
    InstanceState tryLock();
    /// Writes who keeps the folder from now on. Holds until the end of this object.
    void keep(const QDateTime& now);
    void release();

    /// Whom the file names, if it can be read; not this process.
    const std::optional<InstanceHolder>& holder() const { return m_holder; }
    /// The system's error where the file couldn't be opened or written, ENOSPC for instance; 0.
    int trouble() const { return m_trouble; }

  private:
    enum class Outcome { Locked, Held, NoLocks };
    Outcome lockOne(int descriptor) const;
    void open();
    QByteArray readText() const;

    QString m_path;
    LockCall m_lock;
    int m_file = -1;
    int m_folder = -1;
    int m_trouble = 0;
    QByteArray m_written;
    std::optional<InstanceHolder> m_holder;
};

} // namespace kelvrane
