#include "collections/sheet_check.h"

#include "collections/collection_file.h"
#include "frame/error_report.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "worksheet/sheet_compare.h"

namespace kelvrane {

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

bool MayLoseChanges() {
    return MsgBox(
               QStringLiteral("The sheet could not be compared with its file.  Leave it and lose "
                              "its changes?"),
               QStringLiteral("Save changes?"), BoxIcon::Question,
               BoxButtons::YesNo) == BoxAnswer::Yes;
}

void ReplaceSheet(const QString& savedPath, const QString& tempPath) {
    ReplaceFile(savedPath, ports.files->read(tempPath));
    ports.files->remove(tempPath, true);
}

SaveAnswer PromptSaveSheetChanges(const QString& savedPath, const QString& tempPath) {
    const QString routine = QStringLiteral("PromptSaveSheetChanges");
    const bool save = MsgBox(QStringLiteral("Changes were found between this file and the saved "
                                            "file.  Do you wish to save changes?"),
                             QStringLiteral("Save changes?"), BoxIcon::Question,
                             BoxButtons::YesNo) == BoxAnswer::Yes;
    if (!save) {
        SkipErrors quiet(routine);
        quiet([&] { ports.files->remove(tempPath, true); });
        return SaveAnswer::Dropped;
    }
    SkipErrors step = ReportingSteps(routine);
    return step([&] { ReplaceSheet(savedPath, tempPath); }) ? SaveAnswer::Saved
                                                            : SaveAnswer::Failed;
}

} // namespace kelvrane
