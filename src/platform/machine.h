// Which machine and process this is, for what several of them leave in one folder.
#pragma once

#include <QByteArray>
#include <QString>

namespace kelvrane {

/// Eight hexadecimal digits that differ from machine to machine, also between two of one name.
QByteArray MachineTag();
/// The machine's name, for the user.
QString MachineName();

/// Whether a process of this machine lives, whoever runs it.
bool ProcessLives(qint64 processId);

} // namespace kelvrane
