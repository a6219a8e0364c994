// Templates and sheets as files of their own: opening, saving, and the questions on the way.
#pragma once

#include <QString>

namespace kelvrane {

enum class SheetFileKind { Template, Timesheet };

/// The open dialog. The file chosen goes to the sheet and is the current template; asked for, the
/// user may make it the default one. False when the dialog was cancelled. Raises what reading the
/// file raises; the sheet is then as it was.
bool ShowLoad(bool AskForChange);
/// The save dialog, the question before a file is overwritten, and the file. A template's name
/// becomes the current template, also when it wasn't overwritten. False when the dialog was
/// cancelled. Written, when given, says whether there is a file with it now. Raises what the file
/// store raises.
bool ShowSave(SheetFileKind FileType, bool* written = nullptr);

/// "Do you wish to save changes?" for a template that differs from its file, then whether it is to
/// be the default. The temporary file is gone afterwards.
void PromptSaveTemplateChanges(const QString& savedPath, const QString& tempPath);
/// Before the sheet is replaced: compares a modified template with its file, and asks. False when
/// the sheet should stay: a new template was to be kept and got no file, or the comparison failed
/// and the changes aren't to be lost.
bool CheckTemplateChanges();

/// Keeps a path as the default template, SS_Template, if it differs, and as the one of this run.
void SetDefaultTemplate(const QString& path);
/// The default template of this run; set from the settings by LoadSpreadsheet.
inline QString SS_Template;

} // namespace kelvrane
