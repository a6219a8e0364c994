#include "frame/program_folder.h"

#include <QDir>
#include <QStandardPaths>

namespace kelvrane {

namespace {

QString programFolder() {
    const QString chosen = qEnvironmentVariable("KELVRANE_HOME");
    return QDir(chosen.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                 : chosen)
        .absolutePath();
}

QString& heldFolder() {
    static QString folder = QDir::toNativeSeparators(programFolder());
    return folder;
}

} // namespace

const QString& AppPath() {
    return heldFolder();
}

void SetAppPath(const QString& folder) {
    heldFolder() = folder;
}

QString InAppPath(const QString& name) {
    return AppPath() + QDir::separator() + name;
}

} // namespace kelvrane
