#include "collections/collection_builder.h"

#include "collections/collection_file.h"
#include "collections/file_clash.h"
#include "collections/sheet_file_name.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "platform/ports.h"

namespace kelvrane {

namespace {

const QString routine = QStringLiteral("AddSheetToCollection");

/// Asks for each entry that has the name. A new name is compared with the entries that follow only;
/// an earlier one of that name gets a second entry.
QString settleClashes(const QStringList& files, QString& name) {
    QString response;
    for (const QString& listed : files) {
        if (listed.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        ports.screens->show(Screen::frmFileExists);
        FileExists_Response(name, response);
        ports.screens->unload(Screen::frmFileExists);
        if (response == replies::Overwrite) {
            name = listed; // no second file in another spelling
            break;
        }
        if (response == replies::Rename)
            name = SafeSheetName(name);
    }
    return response;
}

void checkCollection() {
    if (CollectionLoc.isEmpty() || !IsBareFileName(CollectionFileName))
        Raise(errors::BadFileName, QStringLiteral("There is no collection to add the sheet to"));
}

/// The sheet beside its place, safe on disk; "" when it couldn't be written.
QString stageSheet(const QString& path, const QString& sheetHtml) {
    SkipErrors quiet(routine);
    SkipErrors step = ReportingSteps(routine);
    quiet([&] { ports.files->createFolder(CollectionFolder(CollectionLoc, CollectionFileName)); });
    QString staged;
    step([&] {
        RefuseLinks(path);
        staged = StageFile(path, SheetBytes(sheetHtml));
    });
    return staged;
}

} // namespace

bool AddSheetToCollection(QString& name, const QString& sheetHtml, KeyedItems& progress) {
    SkipErrors step = ReportingSteps(routine);
    if (!step(checkCollection))
        return false;
    name = SafeSheetName(name + QStringLiteral(".htm"));
    QStringList files;
    QString response;
    if (ports.files->exists(CollectionListFile(CollectionLoc, CollectionFileName))) {
        const auto listed = ReadCollectionNames(CollectionLoc, CollectionFileName);
        if (!listed)
            return false;
        files = *listed;
        response = settleClashes(files, name);
    }
    if (response == replies::Skip)
        return true;
    const QString path = SheetPath(CollectionLoc, CollectionFileName, name);
    const QString staged = stageSheet(path, sheetHtml);
    if (staged.isEmpty())
        return false;
    if (response != replies::Overwrite) {
        files.append(name);
        step([&] { WriteCollectionFile(files, CollectionFileName, CollectionLoc, progress); });
    }
    ShowFilingProgress(progress, QStringLiteral("Creating Data File"), 95);
    ports.events->yield();
    step([&] { TakeStagedFile(staged, path, Links::Refused); });
    ShowFilingProgress(progress, {}, 0);
    ports.events->yield();
    return step.skippedCount() == 0;
}

} // namespace kelvrane
