#include "collections/collection_fixture.h"
#include "collections/collection_location.h"
#include "collections/frmCollectionLoc.h"
#include "widgets/entry_list.h"
#include "widgets/keyed_panel.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace kelvrane::testing {
namespace {

class frmCollectionLocTest : public CollectionTest {
  protected:
    frmCollectionLocTest() {
        QDir(folder.path()).mkpath("Sheets/May");
        writeFile("Sheets/b.col", "");
        StoreCollection(path("Sheets"), "a");
        screens.show(Screen::frmCollectionLoc);
        screen = std::make_unique<frmCollectionLoc>();
        screen->show();
    }
    template <typename Control>
    Control* find(const char* name) {
        return screen->findChild<Control*>(QString::fromLatin1(name));
    }
    void click(const char* button) {
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }
    QPoint row(const char* list, const char* key) {
        return find<EntryList>(list)->rowRect(QString::fromLatin1(key)).center();
    }
    static QString field(const char* key) { return CollectionPlace().smuiCollLoc.value(key); }

    std::unique_ptr<frmCollectionLoc> screen;
};

TEST_F(frmCollectionLocTest, ACollectionIsPickedByMouse) {
    EXPECT_EQ(find<QLabel>("Label1")->text(), CollectionPlace().controls.item("Label1").caption);
    EXPECT_EQ(find<QComboBox>("Drive1")->currentText(), "/");
    QTest::mouseClick(find<EntryList>("File1")->viewport(), Qt::LeftButton, {},
                      row("File1", "b.col"));
    EXPECT_EQ(field("FILENAME"), "b.col");
    QTest::mouseDClick(find<EntryList>("Dir1")->viewport(), Qt::LeftButton, {}, row("Dir1", "May"));
    EXPECT_EQ(field("DIRLOC"), path("Sheets/May"));
    click("SELECT");
    EXPECT_EQ(CollectionLoc, path("Sheets/May"));
    EXPECT_EQ(CollectionFileName, "b");
    EXPECT_EQ(screens.unloaded.last(), Screen::frmCollectionLoc);
}

TEST_F(frmCollectionLocTest, FoldersAndFieldsByKeyboard) {
    QWidget* folders = screen->focusWidget();
    ASSERT_TRUE(folders);
    QTest::keyClick(folders, Qt::Key_Down);
    QTest::keyClick(folders, Qt::Key_Return);
    EXPECT_EQ(field("DIRLOC"), path("Sheets/May"));
    auto* panel = find<KeyedPanel>("smuiCollLoc");
    panel->setCurrentKey("FILENAME");
    QTest::keyClick(panel->focusProxy(), Qt::Key_F2);
    QTest::keyClicks(panel->findChild<QLineEdit*>(), "c");
    click("SELECT"); // takes the open field over
    EXPECT_EQ(CollectionFileName, "c");
    click("HELP");
    EXPECT_EQ(help.pages,
              QStringList{"Collections/Collection_Location_Screen/Select_Collection_Location.htm"});
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_EQ(screens.unloaded.size(), 2);
}

TEST_F(frmCollectionLocTest, ANewFolderTakesThePlaceOfTheFields) {
    auto* menu = find<QMenu>("mnuNewFolder");
    emit find<EntryList>("Dir1")->contextMenuWanted({}, screen->mapToGlobal(QPoint(20, 20)));
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(menu->actions().size(), 3);
    menu->hide();
    menu->findChild<QAction*>("mnuAddNewFolder")->trigger();
    EXPECT_FALSE(find<QWidget>("smuiCollLoc")->isVisible());
    auto* name = find<QLineEdit>("txtNewFolderName");
    EXPECT_TRUE(name->isVisible());
    QTest::keyClick(name, Qt::Key_Escape);
    EXPECT_FALSE(name->isVisible());
    EXPECT_TRUE(screens.isLoaded(Screen::frmCollectionLoc)) << "Esc closed the name alone";
    menu->findChild<QAction*>("mnuAddNewFolder")->trigger();
    QTest::keyClicks(name, "June");
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_TRUE(QDir(path("Sheets/June")).exists());
    EXPECT_TRUE(find<QWidget>("smuiCollLoc")->isVisible());
}

} // namespace
} // namespace kelvrane::testing
