// What a process says that runs beside the one which keeps the day (KeepsDay).
#pragma once

#include <QString>

namespace kelvrane {

inline const QString OtherProcessText =
    QStringLiteral("Another Kelvrane keeps the day: nothing is recorded here");

} // namespace kelvrane
