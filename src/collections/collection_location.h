// The screen that picks the current collection, or names a new one: drives, folders, the list files
// in the folder, and the two fields that count.
#pragma once

#include "platform/keyed_items.h"

#include <QObject>
#include <QString>

namespace kelvrane {

class CollectionLocation : public QObject {
    Q_OBJECT
  public:
    CollectionLocation();

    KeyedItems smuiCollLoc; ///< DIRLOC, FILENAME
    KeyedItems smuiToolBar; ///< SELECT, HELP
    KeyedItems controls; ///< Drive1, Label1, lblNewFolderName, txtNewFolderName, cmdOK, cmdCancel
    KeyedItems Dir1;     ///< "..", the folder on display (key "."), and its subfolders by name
    KeyedItems File1;    ///< the list files in it
    KeyedItems mnuNewFolder; ///< the folders' menu

    const QString& folder() const { return m_folder; }
    /// Another folder on display; the fields stay as they are. Nothing for a folder that isn't
    /// there.
    bool goTo(const QString& folder);
    /// Reads folder and files anew.
    void refresh();

    /// The name of a new folder is asked for, in the place of smuiCollLoc.
    bool isNaming() const { return m_naming; }
    void setNaming(bool naming);
    void wantFolderName() { emit FolderNameWanted(); }

    /// As a newly opened screen has it.
    void reset();

  signals:
    void NamingChanged();
    void FolderNameWanted(); ///< the focus belongs to txtNewFolderName
    /// Another collection is the current one. Whoever shows it follows.
    void Chosen(const QString& location, const QString& name);

  private:
    QString m_folder;
    bool m_naming = false;
};

/// The one model; it lives with the process.
CollectionLocation& CollectionPlace();

/// Fills the fields from the settings and goes to the collection's folder.
void LoadCollectionLoc();
/// Drive1 was changed.
void Drive1_Change(const QString& root);
/// An entry of Dir1 was opened: DIRLOC takes the folder.
void Dir1_Change(const QString& key);
/// An entry of Dir1 was only chosen: FILENAME is cleared.
void Dir1_Click();
/// FILENAME takes the file's name.
void File1_Click(const QString& name);
/// SELECT or HELP.
void CollectionLocToolBar_Click(const QString& key);
/// mnuAddNewFolder; mnuDeleteFolder and mnuRenameFolder have nothing behind them.
void mnuNewFolder_Click(const QString& key);
/// cmdOK creates the folder, cmdCancel gives up.
void NewFolder_Click(const QString& button);

/// Connects the model to the routines; once a process.
void WireCollectionLoc();

} // namespace kelvrane
