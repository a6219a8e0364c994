#include "update/update_folder.h"

#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kelvrane {

namespace {

QString folder() {
    return InAppPath(QString::fromLatin1(files::UpdateFolder));
}

QString inFolder(const QString& name) {
    return folder() + QDir::separator() + name;
}

/// What lies behind a link is somebody else's.
bool isOwnFolder(const QString& path) {
    return QFileInfo(path).isDir() && !QFileInfo(path).isSymLink();
}

bool isOwnFolder() {
    return isOwnFolder(folder());
}

void createOwnFolder(const QString& path) {
    ports.files->createFolder(path);
    if (!isOwnFolder(path))
        Raise(errors::PathAccess, path + QStringLiteral(": the folder is a link"));
}

void moveFile(const QString& from, const QString& to) {
    if (QFileInfo(from).isSymLink())
        Raise(errors::PathAccess, from + QStringLiteral(": a link is not part of an update"));
    ports.files->move(from, to);
}

bool isProgram(const QString& path) {
    constexpr int longestMark = 4;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray begin = file.read(longestMark);
    return begin == "\x7f"
                    "ELF" ||
           begin.startsWith("#!");
}

} // namespace

bool UpdateWasStarted() {
    return isOwnFolder() && !ports.files->filesIn(folder()).isEmpty();
}

void ClearUpdateFolder() {
    if (!isOwnFolder())
        return;
    for (const QString& name : ports.files->filesIn(folder()))
        ports.files->remove(inFolder(name), true);
    ports.files->removeFolder(folder());
}

void RemoveOldDownloads() {
    const QString pattern = QString::fromLatin1(DownloadFolder).replace(u'X', u'?');
    const QDateTime yesterday = ports.clock->now().addDays(-1);
    const QFileInfoList folders =
        QDir(AppPath()).entryInfoList({pattern}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo& old : folders)
        if (old.lastModified() < yesterday)
            QDir(old.filePath()).removeRecursively();
}

bool TakeUpdateFiles(const QStringList& names, const QString& from) {
    SkipErrors step(QStringLiteral("AutoUpdate"));
    const bool taken = step([&] {
        createOwnFolder(folder());
        for (const QString& name : names)
            moveFile(from + QDir::separator() + name, inFolder(name));
    });
    if (!taken)
        step([] { ClearUpdateFolder(); });
    return taken;
}

QString SaveUpdateFiles(const QStringList& names, const QString& from) {
    const QString saved = InAppPath(QString::fromLatin1(SavedFolder));
    SkipErrors step(QStringLiteral("AutoUpdate"));
    const bool moved = step([&] {
        createOwnFolder(saved);
        for (const QString& name : names) {
            const QString target = saved + QDir::separator() + name;
            if (QFileInfo(target).isSymLink() || ports.files->exists(target))
                ports.files->remove(target, true);
            moveFile(from + QDir::separator() + name, target);
        }
    });
    return moved ? saved : QString();
}

bool StartInstaller(const QString& name) {
    const QString path = inFolder(name);
    const QFileInfo file(path);
    if (!isOwnFolder() || file.isSymLink() || !file.isFile() ||
        file.canonicalPath() != QFileInfo(folder()).canonicalFilePath())
        return false;
    if (!isProgram(path))
        return ports.launcher->open(path);
    return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) &&
           ports.launcher->run(path);
}

} // namespace kelvrane
