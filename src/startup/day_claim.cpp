#include "startup/day_claim.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/instance_lock.h"
#include "platform/machine.h"
#include "platform/ports.h"
#include "platform/texts.h"

#include <cerrno>
#include <cstring>

namespace kelvrane {

namespace {

QString reasonOf(int trouble) {
    if (trouble == ENOSPC || trouble == EDQUOT || trouble == EFBIG)
        return QStringLiteral("its disk is full");
    if (trouble == EROFS)
        return QStringLiteral("its disk is read-only");
    if (trouble == EACCES || trouble == EPERM)
        return QStringLiteral("you have no permission to write there");
    return QString::fromLocal8Bit(std::strerror(trouble));
}

void showTrouble(int trouble) {
    MsgBox(QStringLiteral("Kelvrane can't write to its folder '%1': %2.\rIt runs all the same, but "
                          "nothing is saved until it can.")
               .arg(AppPath(), reasonOf(trouble)),
           {}, BoxIcon::Exclamation);
}

QString sinceText(const QDateTime& since) {
    if (!since.isValid())
        return {};
    return QStringLiteral(" since %1, %2").arg(DateText(since.date()), ClockText(since.time()));
}

/// False also when the box is closed by its frame: two processes on one day would cost work.
bool startsAllTheSame(const InstanceHolder& holder) {
    const bool isHere = holder.machine == MachineTag();
    const QString text =
        QStringLiteral("The folder '%1' is in use%3 by Kelvrane on %2, as far as can be seen from "
                       "here.\rIf it still runs there, end it first: of two that run on one folder "
                       "each overwrites the other's day.")
            .arg(AppPath(),
                 isHere ? QStringLiteral("this computer")
                        : QStringLiteral("the computer '%1'").arg(holder.host),
                 sinceText(holder.since));
    return ports.dialogs->ask({.text = text,
                               .title = QStringLiteral("Application already running"),
                               .icon = BoxIcon::Question,
                               .buttons = BoxButtons::OkCancel,
                               .captions = {QStringLiteral("Don't start"),
                                            QStringLiteral("Start all the same")}}) ==
           BoxAnswer::Ok;
}

DayClaim claim(InstanceLock& lock, Command command) {
    const bool mayRunBeside = command != Command::None;
    const InstanceState state = lock.tryLock();
    if (state == InstanceState::Running)
        return mayRunBeside ? DayClaim::Beside : DayClaim::AlreadyRunning;
    if (state == InstanceState::Unsure && !startsAllTheSame(*lock.holder()))
        return DayClaim::Declined;
    lock.keep(ports.clock->now());
    return DayClaim::Kept;
}

} // namespace

DayClaim ClaimDay(InstanceLock& lock, Command command) {
    KeepsDay = false;
    if (command == Command::LoadViewer || command == Command::ForceUpdate ||
        command == Command::Unknown)
        return DayClaim::NotNeeded;
    const DayClaim result = claim(lock, command);
    KeepsDay = result == DayClaim::Kept;
    if (!KeepsDay)
        lock.release();
    else if (lock.trouble() != 0)
        showTrouble(lock.trouble());
    return result;
}

} // namespace kelvrane
