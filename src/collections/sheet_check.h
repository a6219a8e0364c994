// Whether a sheet in the editor still is what its file holds, and the question that saves it.
//
//     QString tempPath;
//     if (VerifyAgainstSSData(path, ss1.HTMLData(), tempPath))
//         PromptSaveSheetChanges(path, tempPath);
#pragma once

#include "collections/collection_file.h"

#include <QString>

namespace kelvrane {

/// In the program's folder.
inline constexpr char SheetCheckFile[] = "BWSS_template_for_verify_0938.htm";

/// True when the sheet differs from the file; it is then in a temporary file in the program's
/// folder, whose name tempPath takes. False for an empty path, without touching a file. A saved
/// file that has vanished differs. Failures are reported, and the answer is then False; compared,
/// when given, says whether it came to an answer at all.
bool VerifyAgainstSSData(const QString& savedPath, const QString& sheetHtml, QString& tempPath,
                         bool* compared = nullptr);

/// Asks whether changes that were found are to be saved.
bool WantsChangesSaved();
/// After a comparison that failed: whether a sheet with changes may go without being saved.
bool MayLoseChanges();

/// Puts the temporary file in the place of the saved one, also across file systems. Raises what the
/// file store raises; both files are then as they were.
void ReplaceSheet(const QString& savedPath, const QString& tempPath, Links links = Links::Followed);

/// Puts a sheet that can neither be saved nor stay into the program's folder as "Unsaved sheet
/// 1.htm", under the first free number; the path of that file. Raises what the file store raises.
QString KeepUnsavedSheet(const QString& sheetHtml);
/// Says where the sheet was kept.
void TellKept(const QString& path);

enum class SaveAnswer {
    Saved,
    Dropped, ///< the user doesn't want the changes
    Failed,  ///< the user wants them, but the file couldn't be written; that was reported
};

/// Asks whether to save, and does it; the temporary file goes. After a failure it stays, and the
/// sheet should stay in the editor.
SaveAnswer PromptSaveSheetChanges(const QString& savedPath, const QString& tempPath);

} // namespace kelvrane
