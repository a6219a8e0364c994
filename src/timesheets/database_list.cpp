#include "timesheets/database_list.h"

#include "frame/error_report.h"
#include "frame/program_folder.h"
#include "platform/ports.h"
#include "timesheets/database_list_file.h"

#include <iterator>
#include <limits>
#include <utility>

namespace kelvrane {

namespace {

constexpr int modifying = 1;
constexpr double flipBeyond = 50; ///< twips
constexpr double flipBefore = 300;

const QString mnuAdd = QStringLiteral("mnuAdd");
const QString mnuModify = QStringLiteral("mnuModify");
const QString mnuDelete = QStringLiteral("mnuDelete");
const QString txtAlias = QStringLiteral("txtAlias");
const QString txtDBLocation = QStringLiteral("txtDBLocation");
const QString extension = QStringLiteral(".mdb");

KeyedItem itemOf(int number, const ListedDatabase& database) {
    const bool accepted = database.isAccepted();
    return {.key = QString::number(number),
            .caption = database.Text,
            .value = database.Location,
            .kind = ItemKind::Check,
            .toolTip = database.Location,
            .image = accepted ? QStringLiteral("accept") : QStringLiteral("decline"),
            .ticked = accepted};
}

/// File first, so that the list never shows what isn't kept.
void store(int number, const ListedDatabase& database) {
    database_list_file::SetLine(number, database);
    QList<KeyedItem> items = Databases().smuiSelectDBs.items();
    if (number > items.size())
        items.append(itemOf(number, database));
    else
        items[number - 1] = itemOf(number, database);
    Databases().smuiSelectDBs.refill(items);
    DBCount = items.size();
}

void flipSelected() {
    if (SelectedDBIndex < 1)
        return;
    ListedDatabase database = DatabaseAt(SelectedDBIndex);
    database.State = database.isAccepted() ? database_state::Decline : database_state::Accept;
    store(SelectedDBIndex, database);
}

void openHelper() {
    ports.screens->show(Screen::frmSSHelper);
}

void closeHelper() {
    ports.screens->unload(Screen::frmSSHelper);
}

void addFromMenu() {
    SelectedDBIndex = DBCount;
    // What is marked is what a key would change.
    emit Databases().ItemMarked(DBCount > 0 ? QString::number(DBCount) : QString());
    AddDatabase();
}

void browseForLocation() {
    const auto path = ports.dialogs->openFile({.title = QStringLiteral("Select Database"),
                                               .folder = AppPath(),
                                               .filter = QStringLiteral("Access Database Files "
                                                                        "|*.mdb"),
                                               .defaultExtension = extension});
    if (path && ports.files->exists(*path))
        Databases().frmSSHelper.setValue(txtDBLocation, *path);
}

void cancelHelper() {
    const QString question = Databases().DBModType == modifying
                                 ? QStringLiteral("Cancel modify database?")
                                 : QStringLiteral("Cancel add new database?");
    if (Agrees(question, QStringLiteral("Cancel operation")))
        closeHelper();
}

struct Command {
    QString key;
    void (*run)();
};
const Command menuCommands[] = {
    {mnuAdd, addFromMenu}, {mnuModify, ModifyDatabase}, {mnuDelete, DeleteDatabase}};
const Command helperCommands[] = {{QStringLiteral("cmdMore"), browseForLocation},
                                  {QStringLiteral("OKButton"), closeHelperForm},
                                  {QStringLiteral("CancelButton"), cancelHelper}};

template <size_t size>
void connectCommands(KeyedItems& items, const Command (&commands)[size]) {
    QObject::connect(&items, &KeyedItems::Clicked, &Databases(), [&commands](const QString& key) {
        for (const Command& command : commands)
            if (command.key == key)
                Guarded(key + QStringLiteral("_Click"), command.run);
    });
}

} // namespace

DatabaseList::DatabaseList()
    : mnuSelectDBPopup(
          {{.key = mnuAdd, .caption = QStringLiteral("Add"), .kind = ItemKind::Button},
           {.key = mnuModify, .caption = QStringLiteral("Modify"), .kind = ItemKind::Button},
           {.key = mnuDelete, .caption = QStringLiteral("Delete"), .kind = ItemKind::Button}}),
      frmSSHelper(
          {{.key = txtAlias, .caption = QStringLiteral("Alias:"), .kind = ItemKind::Edit},
           {.key = txtDBLocation, .caption = QStringLiteral("Location:"), .kind = ItemKind::Edit},
           {.key = QStringLiteral("cmdMore"),
            .caption = QStringLiteral("..."),
            .kind = ItemKind::Button,
            .toolTip = QStringLiteral("Select a database file")},
           {.key = QStringLiteral("OKButton"),
            .caption = QStringLiteral("OK"),
            .kind = ItemKind::Button},
           {.key = QStringLiteral("CancelButton"),
            .caption = QStringLiteral("Cancel"),
            .kind = ItemKind::Button}}) {}

void DatabaseList::reset() {
    smuiSelectDBs.clear();
    DBModType = 0;
    Index = -1;
    DBCount = 0;
    SelectedDBIndex = -1;
}

DatabaseList& Databases() {
    static DatabaseList list;
    return list;
}

ListedDatabase DatabaseAt(int index) {
    const KeyedItem& item = At(Databases().smuiSelectDBs.items(), index - 1);
    return {item.caption, item.value,
            item.ticked ? database_state::Accept : database_state::Decline};
}

void LoadDatabaseList() {
    QList<KeyedItem> items;
    for (const ListedDatabase& database : database_list_file::Read())
        items.append(itemOf(int(items.size()) + 1, database));
    if (items.size() > std::numeric_limits<qint16>::max())
        Raise(errors::Overflow, QStringLiteral("%1 lists more than %2 databases")
                                    .arg(InAppPath(QString::fromLatin1(files::DatabaseList)))
                                    .arg(std::numeric_limits<qint16>::max()));
    Databases().smuiSelectDBs.refill(items);
    DBCount = items.size();
}

bool AddDatabase() {
    const auto path = ports.dialogs->openFile({.title = QStringLiteral("Add Database"),
                                               .folder = AppPath(),
                                               .filter = QStringLiteral("Kelvrane Database Files "
                                                                        "|*.mdb"),
                                               .defaultExtension = extension});
    if (!path)
        return false;
    if (path->right(extension.size()).toLower() != extension) {
        MsgBox(QStringLiteral("Invalid file, please select an .mdb file"),
               QStringLiteral("Invalid file"), BoxIcon::Stop);
        return false;
    }
    Int16 Result;
    loadSSHelperForm({}, *path, 0, -1, Result);
    if (Result != 0)
        return false;
    openHelper();
    return true;
}

void ModifyDatabase() {
    const ListedDatabase database = DatabaseAt(SelectedDBIndex);
    Int16 Result;
    loadSSHelperForm(database.Text, database.Location, modifying, SelectedDBIndex, Result);
    openHelper();
}

void DeleteDatabase() {
    const SkipErrors::Handler tell = [](const RuntimeError&) {
        MsgBox(QStringLiteral("Unable to delete ") +
                   InAppPath(QString::fromLatin1(files::DatabaseList)) +
                   QStringLiteral(".  Please close the file and retry"),
               QStringLiteral("Unexpected File I/O Error"));
    };
    SkipErrors step(QStringLiteral("mnuDelete_Click"), tell);
    step([] {
        database_list_file::RemoveLine(SelectedDBIndex);
        LoadDatabaseList();
        if (SelectedDBIndex > DBCount)
            SelectedDBIndex = -1;
        emit Databases().ItemMarked(SelectedDBIndex < 1 ? QString()
                                                        : QString::number(SelectedDBIndex));
    });
}

void UpdateDatabaseListLine(Int16 Index) {
    database_list_file::SetLine(Index, DatabaseAt(Index));
}

void loadSSHelperForm(const QString& Alias, const QString& Loc, Int16 DBModType, Int16 Index,
                      Int16& Result) {
    DatabaseList& list = Databases();
    Result = 0;
    list.frmSSHelper.setValue(txtAlias, Alias);
    list.frmSSHelper.setValue(txtDBLocation, Loc);
    list.DBModType = DBModType;
    list.Index = Index;
    if (DBModType == modifying || !database_list_file::Lists(Loc))
        return;
    MsgBox(QStringLiteral("This file already exists in the database list.  The same database can "
                          "not be added twice even it the alias' are different."),
           QStringLiteral("Database already exists!"), BoxIcon::Stop);
    Result = StatusAlreadyListed;
}

void closeHelperForm() {
    const DatabaseList& list = Databases();
    const bool isNew = list.Index == -1;
    const Int16 number = isNew ? Int16(DBCount + 1) : list.Index;
    ListedDatabase database = isNew ? ListedDatabase{} : DatabaseAt(number);
    const QString alias = list.frmSSHelper.value(txtAlias);
    database.Location = list.frmSSHelper.value(txtDBLocation);
    database.Text = alias.trimmed().isEmpty() ? database.Location : alias;
    if (database.Text.contains(u';') || database.Location.contains(u';')) {
        MsgBox(
            QStringLiteral("An alias or a location can't have a semicolon (;) in it: the list of "
                           "databases puts one between the two.  Please enter another."),
            QStringLiteral("Invalid Entry"), BoxIcon::Exclamation);
        return;
    }
    if (isNew)
        database.State = database_state::Accept;
    store(number, database);
    closeHelper();
}

void smuiSelectDBs_ItemClick(const QString& key) {
    const int row = Databases().smuiSelectDBs.rowOf(key);
    if (row < 0)
        return;
    SelectedDBIndex = row + 1;
    emit Databases().ItemMarked(key);
    emit Databases().Used();
}

void smuiSelectDBs_MouseUp(Qt::MouseButton button, double x) {
    emit Databases().Used();
    if (button == Qt::LeftButton && x > flipBeyond && x < flipBefore)
        flipSelected();
    else if (button == Qt::RightButton)
        PrepareDatabaseMenu();
}

void PrepareDatabaseMenu() {
    for (const QString& key : {mnuModify, mnuDelete})
        Databases().mnuSelectDBPopup.setEnabled(key, SelectedDBIndex != -1);
}

bool smuiSelectDBs_KeyDown(int key) {
    switch (key) {
    case Qt::Key_Space:
        flipSelected();
        break;
    case Qt::Key_Delete:
        if (SelectedDBIndex != -1)
            DeleteDatabase();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        AddDatabase();
        break;
    default:
        return false;
    }
    emit Databases().Used();
    return true;
}

void smuiSelectDBs_Activate() {
    AddDatabase();
}

void WireDatabaseList() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    connectCommands(Databases().mnuSelectDBPopup, menuCommands);
    connectCommands(Databases().frmSSHelper, helperCommands);
}

} // namespace kelvrane
