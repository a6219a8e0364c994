#include "collections/collection_location.h"

#include "collections/current_collection.h"
#include "collections/sheet_file_name.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/help_topics.h"
#include "platform/ports.h"

#include <QDir>

#include <utility>

namespace kelvrane {

namespace {

const QString locationRow = QStringLiteral("DIRLOC");
const QString nameRow = QStringLiteral("FILENAME");
const QString drive = QStringLiteral("Drive1");
const QString folderName = QStringLiteral("txtNewFolderName");
const QString upward = QStringLiteral("..");
const QString here = QStringLiteral(".");
const QString extension = QStringLiteral(".col");

struct Row {
    KeyedItems CollectionLocation::*panel;
    const char* key;
    const char* caption;
    ItemKind kind;
    const char* image = "";
};
constexpr Row rows[] = {
    {&CollectionLocation::smuiCollLoc, "DIRLOC", "Location:", ItemKind::Edit},
    {&CollectionLocation::smuiCollLoc, "FILENAME", "Filename:", ItemKind::Edit},
    {&CollectionLocation::smuiToolBar, "SELECT", "Select", ItemKind::Button, "SELECT"},
    {&CollectionLocation::smuiToolBar, "HELP", "Help", ItemKind::Button, "HELP"},
    {&CollectionLocation::controls, "Drive1", "Drive", ItemKind::DropDown},
    {&CollectionLocation::controls, "Label1",
     "Select an existing collection or choose a new location and enter a file name to create a new "
     "collection.  Press select to continue.",
     ItemKind::Text},
    {&CollectionLocation::controls, "lblNewFolderName", "Enter new folder name:", ItemKind::Text},
    {&CollectionLocation::controls, "txtNewFolderName", "New folder name", ItemKind::Edit},
    {&CollectionLocation::controls, "cmdOK", "OK", ItemKind::Button},
    {&CollectionLocation::controls, "cmdCancel", "Cancel", ItemKind::Button},
    {&CollectionLocation::mnuNewFolder, "mnuAddNewFolder", "New Folder", ItemKind::Button},
    {&CollectionLocation::mnuNewFolder, "mnuDeleteFolder", "Delete Folder", ItemKind::Button},
    {&CollectionLocation::mnuNewFolder, "mnuRenameFolder", "Rename Folder", ItemKind::Button},
};

QString joined(const QString& folder, const QString& name) {
    return QString(folder.endsWith(u'/') ? folder : folder + u'/') + name;
}

/// The drive that holds the folder: the longest root that leads to it.
QString driveOf(const QString& folder, const QStringList& roots) {
    QString best;
    for (const QString& root : roots)
        if (root.size() > best.size() && joined(folder, {}).startsWith(joined(root, {})))
            best = root;
    return best;
}

/// Without the separator at its end; the root keeps it.
QString plainFolder(const QString& folder) {
    QString plain = folder.trimmed();
    while (plain.size() > 1 && plain.endsWith(u'/'))
        plain.chop(1);
    return plain;
}

void refuse(const char* text) {
    MsgBox(QString::fromLatin1(text), {}, BoxIcon::Exclamation);
}

void select() {
    CollectionLocation& place = CollectionPlace();
    QString name = place.smuiCollLoc.value(nameRow).trimmed();
    if (name.contains(extension))
        name.chop(extension.size());
    if (!IsBareFileName(name)) {
        refuse("Please select a valid filename.");
        return;
    }
    const QString location = plainFolder(place.smuiCollLoc.value(locationRow));
    if (location.isEmpty() || location.contains(QChar::Null) || !QDir::isAbsolutePath(location)) {
        refuse("Please select a valid directory.");
        return;
    }
    StoreCollection(location, name);
    emit place.Chosen(location, name);
    ports.screens->unload(Screen::frmCollectionLoc);
}

void createFolder() {
    CollectionLocation& place = CollectionPlace();
    const QString name = place.controls.value(folderName).trimmed();
    if (!IsBareFileName(name)) {
        place.wantFolderName();
        MsgBox(QStringLiteral("Please enter a new folder name"));
        return;
    }
    const QString path = joined(place.folder(), name);
    if (QFileInfo(path).exists()) {
        MsgBox(QStringLiteral("Directory already Exists"), QStringLiteral("Directory Exists"));
        return;
    }
    ports.files->createFolder(path);
    place.refresh();
    place.setNaming(false);
}

} // namespace

CollectionLocation::CollectionLocation() {
    for (const Row& row : rows)
        (this->*row.panel)
            .append({.key = QString::fromLatin1(row.key),
                     .caption = QString::fromLatin1(row.caption),
                     .kind = row.kind,
                     .image = QString::fromLatin1(row.image)});
}

bool CollectionLocation::goTo(const QString& folder) {
    const QString clean = QDir::cleanPath(folder);
    if (folder.isEmpty() || !QDir(clean).exists())
        return false;
    m_folder = clean;
    refresh();
    return true;
}

void CollectionLocation::refresh() {
    const QDir shown(m_folder);
    QList<KeyedItem> folders;
    if (!shown.isRoot())
        folders.append({.key = upward, .caption = QStringLiteral(".."), .image = "up"});
    folders.append({.key = here,
                    .caption = shown.isRoot() ? QStringLiteral("/") : shown.dirName(),
                    .toolTip = m_folder,
                    .image = "folder"});
    for (const QString& name :
         shown.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase))
        folders.append({.key = name, .caption = name, .image = "folder"});
    Dir1.refill(folders);
    QList<KeyedItem> lists;
    for (const QString& name : ports.files->filesIn(m_folder))
        if (name.endsWith(extension) && !name.startsWith(u'.'))
            lists.append({.key = name, .caption = name, .image = "book"});
    File1.refill(lists);
    const QStringList roots = ports.volumes->roots();
    controls.setChoices(drive, roots);
    controls.setValue(drive, driveOf(m_folder, roots));
}

void CollectionLocation::setNaming(bool naming) {
    if (std::exchange(m_naming, naming) != naming)
        emit NamingChanged();
}

void CollectionLocation::reset() {
    smuiCollLoc.setValue(locationRow, {});
    smuiCollLoc.setValue(nameRow, {});
    controls.setValue(folderName, {});
    setNaming(false);
}

CollectionLocation& CollectionPlace() {
    static CollectionLocation place;
    return place;
}

void LoadCollectionLoc() {
    CollectionLocation& place = CollectionPlace();
    place.reset();
    ReadCollectionSettings();
    if (!CollectionLoc.isEmpty()) {
        place.smuiCollLoc.setValue(locationRow, CollectionLoc);
        place.smuiCollLoc.setValue(nameRow, CollectionFileName);
    }
    if (!place.goTo(CollectionLoc))
        place.goTo(QDir::homePath());
}

void Drive1_Change(const QString& root) {
    if (CollectionPlace().goTo(root))
        Dir1_Change(here);
    else
        CollectionPlace().refresh(); // the volume is gone
}

void Dir1_Change(const QString& key) {
    CollectionLocation& place = CollectionPlace();
    const QString former = place.folder();
    if (!place.goTo(key == here ? former : joined(former, key)))
        place.refresh();
    else
        place.smuiCollLoc.setValue(locationRow, place.folder());
}

void Dir1_Click() {
    CollectionPlace().smuiCollLoc.setValue(nameRow, {});
}

void File1_Click(const QString& name) {
    CollectionLocation& place = CollectionPlace();
    place.smuiCollLoc.setValue(nameRow, name);
    // The file is in the folder on display, whatever stood there: the stored one may be gone.
    place.smuiCollLoc.setValue(locationRow, place.folder());
}

void CollectionLocToolBar_Click(const QString& key) {
    if (key == u"SELECT")
        select();
    else if (key == u"HELP")
        ShowHelpTopic(topics::CollectionLocation);
}

void mnuNewFolder_Click(const QString& key) {
    CollectionLocation& place = CollectionPlace();
    if (key != u"mnuAddNewFolder")
        return;
    place.controls.setValue(folderName, {});
    place.setNaming(true);
    place.wantFolderName();
}

void NewFolder_Click(const QString& button) {
    if (button == u"cmdOK")
        createFolder();
    else if (button == u"cmdCancel")
        CollectionPlace().setNaming(false);
}

void WireCollectionLoc() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    CollectionLocation& place = CollectionPlace();
    const auto bind = [&place](KeyedItems& items, auto signal, const char* routine, auto handler) {
        QObject::connect(&items, signal, &place, [routine, handler](const QString& key) {
            Guarded(QString::fromLatin1(routine), [&] { handler(key); });
        });
    };
    bind(place.smuiToolBar, &KeyedItems::Clicked, "smuiToolBar_Click", CollectionLocToolBar_Click);
    bind(place.controls, &KeyedItems::Clicked, "cmdOK_Click", NewFolder_Click);
    bind(place.mnuNewFolder, &KeyedItems::Clicked, "mnuNewFolder_Click", mnuNewFolder_Click);
    bind(place.Dir1, &KeyedItems::Clicked, "Dir1_Change", Dir1_Change);
    bind(place.Dir1, &KeyedItems::Selected, "Dir1_Click", [](const QString&) { Dir1_Click(); });
    bind(place.File1, &KeyedItems::Selected, "File1_Click", File1_Click);
    QObject::connect(&place.controls, &KeyedItems::Chosen, &place,
                     [](const QString&, int, const QString& root) {
                         Guarded(QStringLiteral("Drive1_Change"), [&] { Drive1_Change(root); });
                     });
}

} // namespace kelvrane
