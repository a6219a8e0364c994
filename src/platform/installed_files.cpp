#include "platform/installed_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace kelvrane {

namespace {

QString& chosenFolder() {
    static QString folder;
    return folder;
}

/// Relative to the program's own folder; the first is the build folder.
QStringList folders() {
    if (!chosenFolder().isEmpty())
        return {chosenFolder()};
    const QDir program(QCoreApplication::applicationDirPath());
    return {program.path(), program.filePath(QStringLiteral("../share/kelvrane")),
            program.filePath(QStringLiteral("../libexec/kelvrane"))};
}

} // namespace

QString InstalledFile(const QString& name) {
    for (const QString& folder : folders())
        if (const QFileInfo file(QDir(folder).filePath(name)); file.isFile())
            return QDir::cleanPath(file.absoluteFilePath());
    return {};
}

void SetInstalledFolder(const QString& folder) {
    chosenFolder() = folder;
}

} // namespace kelvrane
