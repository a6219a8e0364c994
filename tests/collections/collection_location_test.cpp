#include "collections/collection_fixture.h"
#include "collections/collection_location.h"
#include "frame/settings.h"
#include "options/options_model.h"
#include "options/sheet_options.h"

namespace kelvrane::testing {
namespace {

class CollectionLocationTest : public CollectionTest {
  protected:
    CollectionLocationTest() {
        WireCollectionLoc();
        QDir(folder.path()).mkpath("Sheets/May");
        writeFile("Sheets/b.col", "");
        writeFile("Sheets/a.col", "");
        writeFile("Sheets/notes.txt", "");
        StoreCollection(path("Sheets"), "a");
        LoadCollectionLoc();
        screens.show(Screen::frmCollectionLoc);
    }
    QString field(const char* key) const { return place.smuiCollLoc.value(key); }
    void type(const char* key, const QString& text) { place.smuiCollLoc.edit(key, text); }
    static QStringList captions(const KeyedItems& items) {
        QStringList texts;
        for (const KeyedItem& item : items.items())
            texts.append(item.caption);
        return texts;
    }

    CollectionLocation& place = CollectionPlace();
};

TEST_F(CollectionLocationTest, FoldersAndFilesFollowEachOther) {
    EXPECT_EQ(field("DIRLOC"), path("Sheets"));
    EXPECT_EQ(field("FILENAME"), "a");
    EXPECT_EQ(captions(place.Dir1), QStringList({"..", "Sheets", "May"}));
    EXPECT_EQ(captions(place.File1), QStringList({"a.col", "b.col"}));
    EXPECT_EQ(place.controls.value("Drive1"), "/");
    place.File1.select("b.col");
    EXPECT_EQ(field("FILENAME"), "b.col");
    place.Dir1.select("May");
    EXPECT_EQ(field("FILENAME"), "");
    EXPECT_EQ(field("DIRLOC"), path("Sheets")) << "only chosen, not opened";
    place.Dir1.click("May");
    EXPECT_EQ(field("DIRLOC"), path("Sheets/May"));
    EXPECT_EQ(place.File1.count(), 0);
    QDir(path("Sheets")).rename("May", "June");
    place.Dir1.click("..");
    EXPECT_EQ(field("DIRLOC"), path("Sheets"));
    EXPECT_TRUE(place.Dir1.contains("June"));
    QDir(path("Sheets/June")).removeRecursively();
    place.Dir1.click("June"); // gone meanwhile
    EXPECT_FALSE(place.Dir1.contains("June"));
    place.controls.choose("Drive1", 0);
    EXPECT_EQ(field("DIRLOC"), "/");
    EXPECT_FALSE(place.Dir1.contains(".."));
}

TEST_F(CollectionLocationTest, AFileBelongsToTheFolderOnDisplay) {
    place.smuiCollLoc.edit("DIRLOC", path("vanished"));
    place.File1.select("b.col");
    EXPECT_EQ(field("DIRLOC"), place.folder());
}

TEST_F(CollectionLocationTest, SelectingStoresTheCollectionAndTellsWhoShowsIt) {
    GetSpreadSheetOptions();
    type("DIRLOC", "  " + path("Sheets/New") + "/ ");
    type("FILENAME", " b.col ");
    place.smuiToolBar.click("SELECT");
    EXPECT_EQ(CollectionLoc, path("Sheets/New"));
    EXPECT_EQ(CollectionFileName, "b");
    EXPECT_EQ(RegQueryValue(keys::SpreadSheetInfo, "CollectionFileName"), "b");
    EXPECT_EQ(Options().smuiSpreadSheet.value("COLLOC"), path("Sheets/New"));
    EXPECT_EQ(Options().smuiSpreadSheet.value("COLFILENAME"), "b.col");
    EXPECT_FALSE(screens.isLoaded(Screen::frmCollectionLoc));
    EXPECT_FALSE(disk.exists(path("Sheets/New/b.col"))) << "its first sheet makes it";
    SpreadsheetOpen = true;
    type("FILENAME", "2003");
    place.smuiToolBar.click("SELECT");
    EXPECT_EQ(Options().smuiSpreadSheet.value("COLFILENAME"), "b.col");
    LoadCollectionLoc();
    EXPECT_EQ(field("FILENAME"), "2003") << "without the terminator that digits keep";
}

TEST_F(CollectionLocationTest, FieldsThatCannotBeRightAreRefused) {
    const struct {
        QString location, name, message;
    } rows[] = {
        {path("Sheets"), "  ", "Please select a valid filename."},
        {path("Sheets"), ".col", "Please select a valid filename."},
        {path("Sheets"), "../x", "Please select a valid filename."},
        {path("Sheets"), "..", "Please select a valid filename."},
        {path("Sheets"), "a\\b", "Please select a valid filename."},
        {"  ", "x", "Please select a valid directory."},
        {"relative", "x", "Please select a valid directory."},
        {QStringLiteral("/a\0b"), "x", "Please select a valid directory."},
    };
    for (const auto& row : rows) {
        type("DIRLOC", row.location);
        type("FILENAME", row.name);
        dialogs.expect(row.message);
        place.smuiToolBar.click("SELECT");
        EXPECT_EQ(dialogs.shown.last().icon, BoxIcon::Exclamation);
    }
    EXPECT_EQ(CollectionFileName, "a");
    EXPECT_TRUE(screens.isLoaded(Screen::frmCollectionLoc));
}

TEST_F(CollectionLocationTest, ANewFolderIsMadeInTheOneOnDisplay) {
    int wanted = 0;
    const auto counting =
        QObject::connect(&place, &CollectionLocation::FolderNameWanted, [&wanted] { ++wanted; });
    for (const char* inert : {"mnuDeleteFolder", "mnuRenameFolder"})
        place.mnuNewFolder.click(inert);
    EXPECT_FALSE(place.isNaming());
    place.mnuNewFolder.click("mnuAddNewFolder");
    EXPECT_TRUE(place.isNaming());
    for (const char* name : {"  ", "../up", "a/b", ".."}) {
        place.controls.edit("txtNewFolderName", name);
        dialogs.expect("Please enter a new folder name");
        place.controls.click("cmdOK");
    }
    EXPECT_EQ(wanted, 5);
    place.controls.edit("txtNewFolderName", "May");
    dialogs.expect("Directory already Exists");
    place.controls.click("cmdOK");
    EXPECT_EQ(dialogs.shown.last().title, "Directory Exists");
    EXPECT_TRUE(place.isNaming());
    place.controls.edit("txtNewFolderName", " July ");
    place.controls.click("cmdOK");
    EXPECT_FALSE(place.isNaming());
    EXPECT_TRUE(place.Dir1.contains("July"));
    EXPECT_TRUE(QDir(path("Sheets/July")).exists());
    QObject::disconnect(counting);
}

} // namespace
} // namespace kelvrane::testing
