#include "collections/sheet_check.h"

#include "collections/collection_file.h"
#include "frame/error_report.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "worksheet/sheet_compare.h"

namespace kelvrane {

namespace {
const QString saveChanges = QStringLiteral("Save changes?");
} // namespace

bool VerifyAgainstSSData(const QString& savedPath, const QString& sheetHtml, QString& tempPath,
                         bool* compared) {
    if (compared)
        *compared = savedPath.isEmpty();
    if (savedPath.isEmpty())
        return false;
    const QString routine = QStringLiteral("VerifyAgainstSSData");
    SkipErrors step = ReportingSteps(routine);
    SkipErrors quiet(routine);
    tempPath = InAppPath(QString::fromLatin1(SheetCheckFile));
    const QByteArray current = SheetBytes(sheetHtml);
    bool differs = false;
    if (!step([&] { ReplaceFile(tempPath, current); }))
        return false;
    const bool answered = step([&] {
        differs =
            !IsPlainFile(savedPath) ||
            SavedSheetsDiffer(FromFileBytes(ports.files->read(savedPath)), FromFileBytes(current));
    });
    if (compared)
        *compared = answered;
    if (!differs)
        quiet([&] { ports.files->remove(tempPath, true); });
    return differs;
}

bool WantsChangesSaved() {
    return Agrees(QStringLiteral("Changes were found between this file and the saved file.  Do you "
                                 "wish to save changes?"),
                  saveChanges);
}

bool MayLoseChanges() {
    return Agrees(QStringLiteral("The sheet could not be compared with its file.  Leave it and "
                                 "lose its changes?"),
                  saveChanges);
}

void ReplaceSheet(const QString& savedPath, const QString& tempPath, Links links) {
    ReplaceFile(savedPath, ports.files->read(tempPath), links);
    ports.files->remove(tempPath, true);
}

QString KeepUnsavedSheet(const QString& sheetHtml) {
    QString kept;
    for (int number = 1; kept.isEmpty() || ports.files->exists(kept); ++number)
        kept = InAppPath(QStringLiteral("Unsaved sheet %1.htm").arg(number));
    ReplaceFile(kept, SheetBytes(sheetHtml));
    SkipErrors quiet(QStringLiteral("KeepUnsavedSheet"));
    quiet([] { ports.files->remove(InAppPath(QString::fromLatin1(SheetCheckFile)), true); });
    return kept;
}

void TellKept(const QString& path) {
    MsgBox(QStringLiteral("The sheet could not be saved.  It is kept as ") + path, saveChanges,
           BoxIcon::Exclamation);
}

SaveAnswer PromptSaveSheetChanges(const QString& savedPath, const QString& tempPath) {
    const QString routine = QStringLiteral("PromptSaveSheetChanges");
    if (!WantsChangesSaved()) {
        SkipErrors quiet(routine);
        quiet([&] { ports.files->remove(tempPath, true); });
        return SaveAnswer::Dropped;
    }
    SkipErrors step = ReportingSteps(routine);
    return step([&] { ReplaceSheet(savedPath, tempPath, Links::Refused); }) ? SaveAnswer::Saved
                                                                            : SaveAnswer::Failed;
}

} // namespace kelvrane
