#include "startup/open_folder.h"

#include "frame/program_folder.h"
#include "frame/settings.h"
#include "platform/ports.h"
#include "timevalues/time_values.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace kelvrane {

namespace {

/// A folder further up that lets nobody in keeps them out of this one too.
bool canBeEntered(QString folder) {
    folder = QFileInfo(folder).canonicalFilePath();
    while (!folder.isEmpty()) {
        struct stat status = {};
        if (::stat(QFile::encodeName(folder).constData(), &status) != 0 ||
            (status.st_mode & (S_IXGRP | S_IXOTH)) == 0)
            return false;
        if (folder == u"/")
            return true;
        folder = QFileInfo(folder).path();
    }
    return false;
}

} // namespace

void ShowOpenFolder() {
    const QString name = QStringLiteral("OpenFolderShown");
    if (!canBeEntered(AppPath()) || StripAtNull(RegQueryValue(keys::Main, name)) == AppPath())
        return;
    MsgBox(QStringLiteral("Other users of this computer can enter the folder '%1', where Kelvrane "
                          "keeps your projects, customers and hours.\rTo keep them out, set its "
                          "permissions so that only its owner can enter it (mode 700).")
               .arg(AppPath()),
           {}, BoxIcon::Information);
    SaveRegText(AppPath(), keys::Main, name);
}

} // namespace kelvrane
