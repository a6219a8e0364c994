// The Database Manager's panels, and its state. It lives with the process; OpenDataBase puts it
// back as it is when the screen comes up.
#pragma once

#include "frame/help_topics.h"
#include "platform/keyed_items.h"
#include "records/project_list.h"

#include <QObject>
#include <QString>

namespace kelvrane {

/// The part of the state that a newly opened screen begins with.
struct ManagerState {
    bool InManager = false; ///< the tab "Database Manager" is up
    bool FindShown = false; ///< the find panel is up
    bool Loading = false;   ///< the list is being filled: clicks are ignored, closing is refused
    bool Switching = false; ///< a view change is under way: clicks are ignored
    QString ViewMode = QStringLiteral("Single"); ///< "Single" or "List"
    int SelectedIndex = 0;                       ///< 1-based row last clicked in the list, 0: none
    int HelpTopic = topics::DatabaseOptions;     ///< one of the six for the database screen
    bool InCommand = false;                      ///< a command runs: its box may be open
    bool listShown = false;                      ///< ListView1 is up instead of smuiDataBase

    // The two searches.
    int ListFindIndex = 1;      ///< next list row to be tested, 1-based
    bool RestartSearch = false; ///< the next search begins at the first record
    bool FoundInColumn = false; ///< the current record is what the last search found
    bool RecordDone = false;    ///< all fields of the current record were tested
    int NextColumn = 0;         ///< next field position of an all-columns search
    QString FindText;
    QString FindField;
    int FindColumn = 0;   ///< 0-based column of the list
    int fieldsColumn = 0; ///< column number kept with the FIELDS row
    bool MatchCase = false;
};

class ManagerModel : public QObject {
    Q_OBJECT
  public:
    ManagerModel();

    KeyedItems smuiToolBar;
    KeyedItems smuiProgress;
    KeyedItems smuiOptions; ///< the two tabs
    KeyedItems smuiPanel0;  ///< smuiPanel, index 0: views
    KeyedItems smuiPanel1;  ///< smuiPanel, index 1: edit
    KeyedItems smuiFind;
    KeyedItems buttons; ///< CmdUp, cmdDown, cmdFind, ImgClose
    ProjectList ListView1;
    ManagerState state;

    /// All panels and the state as a new screen has them.
    void reset();
    /// Tells the screen to lay itself out: what is shown, which tab is up.
    void layOut() { emit LayoutChanged(); }
    /// The hourglass.
    void setBusy(bool busy) { emit BusyChanged(busy); }

  signals:
    void LayoutChanged();
    void BusyChanged(bool busy);
};

/// The one model.
ManagerModel& Manager();

/// Shows and hides the panels' items for a record that is being entered, or that is idle, of the
/// project or the customer table.
void SetEntryButtons(bool editing, bool customers);

/// Turns the stepping buttons CmdUp and cmdDown on or off.
void EnableStepping(bool on);

/// ListView1 up, or smuiDataBase.
void ShowList(bool shown);

/// What a record that was saved or cancelled leaves: idle buttons, stepping on, TABLE and the add
/// button of its table shown.
void ReturnToIdle(bool customers);

} // namespace kelvrane
