// The options screen's procedures: its load and unload, its pages, and what the user does there.
// Every change writes its key at once and updates the global that the rest of the program reads.
// There is nothing to confirm and nothing to undo.
//
// A stored value that the lists don't offer ("8:05 AM", "None") is shown as it is and stays until
// another one is chosen.
#pragma once

#include "platform/keyed_items.h"

#include <QString>

namespace kelvrane {

/// The screen's load: window size from its section, the page KELVRANE up and filled. It also fills
/// AutoDayReminderSoundFile, which nothing else does.
void LoadOptions();
/// The screen's unload: writes the window size and sets DatabaseSelectCancelled.
void UnloadOptions();
/// Connects the panels to the routines; once a process.
void WireOptions();

/// The page DATABASE alone, its field filled from ProjectDatabase: the start lacks its database.
void ShowDatabasePageAlone();
/// A page was chosen by its tab: it is filled anew.
void SmartTabStrip_Click(const QString& page);
/// The help topic of the page on display.
int OptionsHelpTopic();
/// The window has this size now, in twips; quiet while it is sized at load.
void KeepOptionsSize(int width, int height);

/// From ProjectDatabase; a path without a file is marked.
void GetDatabaseOptions();
void GetMiscOptions();
/// The choices of a drop-down row from values separated by ";".
void FillOptionItem(KeyedItems& panel, const QString& rowName, const QString& listText);

/// Asks for a project database. The file chosen is the current ProjectDatabase from then on; only
/// one that opens is stored and sets DatabaseSelected. Raises DatabaseOpen, Sql.
void BrowseDatabase();

} // namespace kelvrane
