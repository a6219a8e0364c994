#include "platform/machine.h"

#include <QCryptographicHash>
#include <QSysInfo>

#include <cerrno>
#include <csignal>

namespace kelvrane {

QByteArray MachineTag() {
    constexpr qsizetype digits = 8;
    // The machine's id is nobody's business: only a hash of it reaches a file.
    const QByteArray id = QSysInfo::machineUniqueId(); // the name may change with the network
    return QCryptographicHash::hash(id.isEmpty() ? MachineName().toUtf8() : id,
                                    QCryptographicHash::Sha256)
        .toHex()
        .left(digits);
}

QString MachineName() {
    return QSysInfo::machineHostName();
}

bool ProcessLives(qint64 processId) {
    const auto id = static_cast<pid_t>(processId);
    if (id <= 0 || id != processId)
        return false;
    return ::kill(id, 0) == 0 || errno == EPERM;
}

} // namespace kelvrane
