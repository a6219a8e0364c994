// The day histories that sheets are calculated from: the list on the sheet's screen, the file that
// keeps it, and the small dialog that adds or changes an entry.
#pragma once

#include "platform/keyed_items.h"
#include "timesheets/database_list_file.h"
#include "timesheets/sheet_state.h"

#include <QObject>
#include <QString>

namespace kelvrane {

/// Location is already on the list.
inline constexpr int StatusAlreadyListed = 106;

class DatabaseList : public QObject {
    Q_OBJECT
  public:
    DatabaseList();

    /// Keys are 1-based numbers in order; caption the alias, value the path, ticked and with the
    /// image "accept" or "decline" by its state.
    KeyedItems smuiSelectDBs;
    KeyedItems mnuSelectDBPopup; ///< mnuAdd, mnuModify, mnuDelete
    KeyedItems frmSSHelper;      ///< txtAlias, txtDBLocation, cmdMore, OKButton, CancelButton

    // What the dialog is open for.
    Int16 DBModType;  ///< 0: add, 1: modify
    Int16 Index = -1; ///< 1-based database to change; -1: a new one

    /// Empty, as a process starts.
    void reset();

  signals:
    void Used();                         ///< the mouse or a key did something on the list
    void ItemMarked(const QString& key); ///< this one is the selected one; "" for none
};

/// The one list; it lives with the process.
DatabaseList& Databases();

/// By 1-based index; raises Subscript.
ListedDatabase DatabaseAt(int index);

/// Fills the list and DBCount from the file. Raises what reading the file raises, and Overflow for
/// more than 32,767 databases; the list is then as it was.
void LoadDatabaseList();
/// Asks for a database and opens the dialog for it. True when the dialog was opened.
bool AddDatabase();
/// Opens the dialog for the selected database; raises Subscript when there is none.
void ModifyDatabase();
/// Removes the line of the selected database, without asking; a failure is told in a box.
void DeleteDatabase();
/// Writes one database to its line, or at the end when the file is shorter.
void UpdateDatabaseListLine(Int16 Index);

/// Prepares the dialog: DBModType 0 to add, 1 to modify; Index 1-based, -1 for a new one. Result is
/// 0, or 106 when something is to be added that the file lists already, which a box then says.
void loadSSHelperForm(const QString& Alias, const QString& Loc, Int16 DBModType, Int16 Index,
                      Int16& Result);
/// Takes the dialog over to file and list and closes it. The file comes first: when it can't be
/// written that is raised, the list is as it was, and the dialog stays open with what was typed.
void closeHelperForm();

void smuiSelectDBs_ItemClick(const QString& key);
/// x in twips from the list's left edge. The left button in the icons' column, 50 to 300 without
/// its bounds, flips the state of the selected database.
void smuiSelectDBs_MouseUp(Qt::MouseButton button, double x);
/// Before the menu opens: there is something to modify or delete only with a selected database.
void PrepareDatabaseMenu();
/// Space flips, Del deletes, Enter adds. False for any other key.
bool smuiSelectDBs_KeyDown(int key);
/// A double click beside the databases adds one, as Enter does.
void smuiSelectDBs_Activate();

/// Connects menu and dialog to the routines; once a process.
void WireDatabaseList();

} // namespace kelvrane
