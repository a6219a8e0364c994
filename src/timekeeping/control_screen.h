// The control screen's procedures: its load and unload, and what each of its items does. The screen
// itself binds to Control() and forwards to these.
#pragma once

#include <QString>

namespace kelvrane {

/// Reads the layout and the day into Control(); the routine of the screen's load. Step by step:
/// what fails leaves the rest as far as it got.
void LoadControlScreen();
/// LoadControlScreen unless the day is loaded and shown; before anything that adds to the day.
void EnsureControlScreenLoaded();
/// SaveControlLayout, and the next show reads the day again.
void UnloadControlScreen();

/// Fills the drop-down of PROJECT_NAME with the recent projects and "More ... ".
void FillRecentProjectList(const QString& name, const QString& number);
/// Starts a project by name: fills PROJECT_NAME, opens the table, StartNewProject, closes it. Loads
/// the day first when it isn't. The number counts where several projects have the name. A project
/// that isn't found starts nothing, and a box says so. Raises what StartNewProject and the table
/// raise; without a new entry PROJECT_NAME is put back.
void StartProjectByName(const QString& name, const QString& number = {});
/// Puts PROJECT_NAME back on the running project, or empties it.
void RestoreProjectName();
/// The choice of the list's place-th item (0-based): starts that project, or opens the Database
/// Manager.
void ChooseProject(int place, const QString& value);

void TimeCtrlClick(const QString& key); ///< tool bar
void PanelClick(const QString& key);    ///< view switches and launchers
void BreakDownSelect(const QString& key);
void SetDataClick(const QString& key); ///< the pop-up menu's items

/// Binds Control()'s signals to the procedures above, and takes the Database Manager's choices for
/// the day. A second call binds nothing twice.
void WireControlScreen();

} // namespace kelvrane
