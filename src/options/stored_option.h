// Reading the settings as the options show them.
#pragma once

#include "frame/settings.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "timevalues/time_values.h"

#include <QString>

namespace kelvrane {

/// A stored value as text, without the terminator that a text of digits keeps.
inline QString StoredOption(const char* name, const QString& key = keys::Main) {
    return StripAtNull(RegQueryValue(key, QString::fromLatin1(name)));
}

/// False also for a path that can't be one.
inline bool OptionFileExists(const QString& path) {
    return SkipErrors(QStringLiteral("OptionFileExists")).condition([&] {
        return ports.files->exists(path);
    });
}

} // namespace kelvrane
