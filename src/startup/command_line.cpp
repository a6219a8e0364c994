#include "startup/command_line.h"

#include "collections/collection_viewer.h"
#include "frame/globals.h"
#include "platform/ports.h"
#include "tray/hidden_form.h"
#include "update/auto_update.h"

#include <QFileInfo>

namespace kelvrane {

CommandLine ParseCommandLine(const QString& Argument) {
    if (Argument.isEmpty())
        return {};
    const QString forceUpdate = QStringLiteral("ForceUpdate");
    QString clean = Argument;
    clean.remove(QLatin1Char('"'));
    // Only this test lowers the case: ".COL" is a collection too, "Debug" is unknown.
    if (clean.right(4).toLower() == QLatin1String(".col"))
        return {Command::LoadViewer, GetLongFileName(clean)};
    if (clean.startsWith(forceUpdate)) {
        const qsizetype length = Argument.size() - forceUpdate.size() - 1;
        if (length < 0)
            return {Command::Broken, {}};
        return {Command::ForceUpdate, Argument.right(length)};
    }
    if (clean == QLatin1String("debug"))
        return {Command::Debug, {}};
    return {Command::Unknown, {}};
}

namespace {

/// The process is the viewer's alone: no tick runs beside it, and it ends when the viewer closes.
void viewCollection(const QString& path) {
    UnloadHiddenForm();
    LoadNewCollections(path);
    ports.events->waitUntil([] { return !ports.screens->isLoaded(Screen::frmCollectionViewer); });
}

} // namespace

bool ProcessCommandLine(const QString& Argument) {
    const CommandLine line = ParseCommandLine(Argument);
    switch (line.command) {
    case Command::LoadViewer:
        viewCollection(line.operand);
        return true;
    case Command::ForceUpdate:
        UnloadHiddenForm(); // no tick runs beside it
        AutoUpdate(false, true, line.operand);
        return true;
    case Command::Debug:
        DebugMode = true;
        return false;
    case Command::None:
    case Command::Broken:
        return false;
    case Command::Unknown:
        return true;
    }
    return true;
}

QString GetLongFileName(const QString& Path) {
    const QFileInfo file(Path);
    return file.exists() ? file.canonicalFilePath() : QString();
}

} // namespace kelvrane
