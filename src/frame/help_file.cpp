#include "frame/help_file.h"

#include "frame/program_folder.h"
#include "platform/connection.h"
#include "platform/installed_files.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"

#include <QDir>

namespace kelvrane {

namespace {

/// A copy that can't be read, a folder of that name for instance, is as good as none.
bool isCopyOf(const QByteArray& installed) {
    QByteArray copy;
    SkipErrors step(QStringLiteral("RenewHelpFile"));
    return step([&] { copy = ports.files->read(HelpFilePath()); }) && copy == installed;
}

} // namespace

QString HelpFilePath() {
    return InAppPath(QString::fromLatin1(files::HelpFile));
}

QString HelpCollectionPath() {
    return InAppPath(QStringLiteral("Kelvrane.qhc"));
}

void RenewHelpFile() {
    const QString path = InstalledFile(QString::fromLatin1(files::HelpFile));
    if (path.isEmpty())
        return;
    const QByteArray installed = ports.files->read(path);
    if (isCopyOf(installed))
        return;
    ports.files->writeAtomically(HelpFilePath(), installed);
    DropHelpCollection();
}

void DropHelpCollection() {
    SkipErrors step(QStringLiteral("DropHelpCollection"));
    step([] { ports.files->remove(HelpCollectionPath(), true); });
}

void DropDamagedHelpCollection() {
    SkipErrors step(QStringLiteral("DropDamagedHelpCollection"));
    const QString path = HelpCollectionPath();
    if (ports.files->exists(path) && !step([&] { Connection{path}; }))
        DropHelpCollection();
}

} // namespace kelvrane
