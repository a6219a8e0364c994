#include "timesheets/template_files.h"

#include "collections/sheet_check.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "platform/ports.h"
#include "timesheets/sheet_files.h"
#include "timesheets/spreadsheet_model.h"
#include "timevalues/time_values.h"

#include <QDir>

namespace kelvrane {

namespace {

const QString templateName = QStringLiteral("TEMPLATE_NAME");
const QString filter = QStringLiteral("HTML Files |*.htm");
const QString extension = QStringLiteral(".htm");

/// "1_5_2003.htm".
QString defaultSheetName() {
    const QDate date = Sheets().state.selectedDate;
    return QStringLiteral("%1_%2_%3.htm").arg(date.month()).arg(date.day()).arg(date.year());
}

void showTemplate(const QString& path, const QString& toolTip) {
    Sheets().smuiStatusBar.setCaption(templateName, path);
    Sheets().smuiStatusBar.setToolTip(templateName, toolTip);
}

} // namespace

void SetDefaultTemplate(const QString& path) {
    SaveRegText(path, keys::SpreadSheetInfo, QStringLiteral("SS_Template"));
    SS_Template = path;
}

bool ShowLoad(bool AskForChange) {
    const auto chosen = ports.dialogs->openFile({.title = QStringLiteral("Open"),
                                                 .folder = AppPath(),
                                                 .filter = filter,
                                                 .defaultExtension = extension});
    if (!chosen || !ports.files->exists(*chosen))
        return false;
    SpreadsheetModel& sheets = Sheets();
    sheets.ss1.setHTMLURL(*chosen);
    sheets.state.CurrentTemplate = *chosen;
    sheets.state.sheetShown = true;
    if (AskForChange) {
        if (Agrees(QStringLiteral("Set ") + *chosen + QStringLiteral(" as default?"),
                   QStringLiteral("Set as default?")))
            SaveRegText(*chosen, keys::SpreadSheetInfo, QStringLiteral("SS_Template"));
        showTemplate(*chosen, QStringLiteral("Current template"));
        SS_Template = *chosen; // whatever the answer, it serves this run
    } else {
        if (*chosen != SS_Template)
            sheets.state.caption =
                SheetCaption + QStringLiteral(" - Viewing: \"") + *chosen + QLatin1Char('"');
        sheets.smuiStatusBar.setToolTip(templateName, QStringLiteral("Current Filename"));
    }
    return true;
}

bool ShowSave(SheetFileKind FileType, bool* written) {
    const bool isTemplate = FileType == SheetFileKind::Template;
    const auto chosen = ports.dialogs->saveFile(
        {.title = QStringLiteral("Save As"),
         .folder = isTemplate ? InAppPath(QString::fromLatin1(files::DataFolder)) : AppPath(),
         .filter = filter,
         .defaultExtension = extension,
         .fileName = isTemplate ? QStringLiteral("template.htm") : defaultSheetName()});
    if (!chosen)
        return false;
    const bool overwrite =
        !ports.files->exists(*chosen) ||
        Agrees(QStringLiteral("File Exists, Overwrite this file?"), QStringLiteral("File Exists"));
    if (overwrite)
        ports.files->writeAtomically(*chosen, SheetFileBytes(Sheets().ss1));
    if (written)
        *written = overwrite;
    if (isTemplate)
        Sheets().state.CurrentTemplate = *chosen;
    return true;
}

void PromptSaveTemplateChanges(const QString& savedPath, const QString& tempPath) {
    SS_Template = StripAtNull(RegQueryValue(keys::SpreadSheetInfo, QStringLiteral("SS_Template")));
    if (!WantsChangesSaved()) {
        ports.files->remove(tempPath, true);
        return;
    }
    ReplaceSheet(savedPath, tempPath);
    if (savedPath == SS_Template ||
        !Agrees(QStringLiteral("Do you wish to make this file your default template?"),
                QStringLiteral("Set as default?")))
        return;
    SetDefaultTemplate(savedPath);
    Sheets().smuiStatusBar.setCaption(templateName, savedPath);
}

bool CheckTemplateChanges() {
    const SpreadsheetModel& sheets = Sheets();
    if (!sheets.state.TemplateModified)
        return true;
    if (sheets.state.CurrentTemplate.isEmpty()) { // a new one that has no file yet
        bool written = !WantsChangesSaved();
        if (!written)
            ShowSave(SheetFileKind::Template, &written);
        return written;
    }
    QString temporary;
    bool compared = false;
    if (VerifyAgainstSSData(sheets.state.CurrentTemplate, sheets.ss1.HTMLData(), temporary,
                            &compared))
        PromptSaveTemplateChanges(sheets.state.CurrentTemplate, temporary);
    return compared || MayLoseChanges();
}

} // namespace kelvrane
