// The procedures of the collection viewer: a collection's sheets one at a time, for reading or in
// the editor, and a selection of them printed.
#pragma once

#include <QString>

namespace kelvrane {

/// Shows a collection: "Default" takes the current one, anything else is the path of a list file;
/// an empty path shows none and asks for one. Opens the screen where it isn't, and swaps the
/// collection where it is.
void LoadNewCollections(const QString& path);

/// What the screen does when it opens. Unloads it when the collection has no sheet or its list
/// can't be read; the latter was told.
void LoadCollectionViewer();
/// The screen goes. A changed sheet in the editor is asked about first.
void UnloadCollectionViewer();

/// The session ends and asks nothing: a changed sheet in the editor is kept beside its file's one,
/// as KeepUnsavedSheet does.
void KeepViewerChanges();

/// The path of an entry of the list; "" for one marked missing.
QString FormURL(const QString& entry);
/// Appends " ** Missing **" to the entries that have no file.
void MarkMissingFiles();
/// Shows the sheet as the display mode says, and fills the list unless it is in print mode already.
void RefreshDisplayMode();

/// An entry of the list was chosen.
void smuiCollections_Click(const QString& entry);
/// The tick box of an entry was clicked.
void smuiCollections_Toggle(const QString& entry);
/// A command of the tool bar; ignored while another one is carried out.
void ViewerToolBar_Click(const QString& key);
/// The status bar was clicked: asks for another collection.
void ViewerStatusBar_Click();
/// A file was chosen or dropped; anything but a list file is ignored.
void TakeCollectionFile(const QString& path);
/// The editor's own help and about commands.
void ViewerSheetHelp();
void ViewerSheetAbout();

/// Connects the model to the routines; once a process.
void WireCollectionViewer();

} // namespace kelvrane
