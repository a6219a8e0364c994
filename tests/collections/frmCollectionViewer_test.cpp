#include "collections/frmCollectionViewer.h"
#include "collections/viewer_fixture.h"
#include "widgets/entry_list.h"
#include "widgets/sheet_editor.h"
#include "widgets/sheet_view.h"

#include <QAbstractButton>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QToolButton>
#include <QUrl>

namespace kelvrane::testing {
namespace {

class frmCollectionViewerTest : public ViewerTest {
  protected:
    frmCollectionViewerTest() {
        screens.show(Screen::frmCollectionViewer);
        screen = std::make_unique<frmCollectionViewer>();
        screen->show();
    }
    template <typename Control>
    Control* find(const char* name) {
        return screen->findChild<Control*>(QString::fromLatin1(name));
    }
    void menu(const char* entry) {
        find<QWidget>("smuiToolBar")->findChild<QAction*>(QString::fromLatin1(entry))->trigger();
    }
    void clickRow(const char* entry, bool onBox = false) {
        auto* list = find<EntryList>("smuiCollections");
        const QRect row = list->rowRect(QString::fromLatin1(entry));
        const QPoint place = onBox ? QPoint(row.left() + 10, row.center().y()) : row.center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    }

    std::unique_ptr<frmCollectionViewer> screen;
};

TEST_F(frmCollectionViewerTest, EachModeHasItsPane) {
    EXPECT_EQ(screen->windowTitle(), "Collection Viewer");
    EXPECT_TRUE(find<SheetView>("Web")->isVisible());
    EXPECT_EQ(find<SheetView>("Web")->contents(), Viewer().web());
    EXPECT_EQ(find<EntryList>("smuiCollections")->currentKey(), "Acme.htm");
    clickRow(missing);
    EXPECT_TRUE(find<QLabel>("txtError")->isVisible());
    EXPECT_EQ(find<QLabel>("txtError")->text(), "File not found");
    QTest::keyClick(screen->focusWidget(), Qt::Key_Down);
    EXPECT_EQ(shown(), "Crisp");
    menu("DM_EDIT");
    EXPECT_TRUE(find<SheetEditor>("ss1")->isVisible());
    menu("DM_VIEW");
    EXPECT_TRUE(find<SheetView>("Web")->isVisible());
    emit find<SheetEditor>("ss1")->HelpWanted();
    emit find<SheetEditor>("ss1")->AboutWanted();
    EXPECT_EQ(help.pages, QStringList{"Spread_Sheet_Screen/SpreadSheet_Form.htm"});
    EXPECT_EQ(screens.shown.last(), Screen::frmAbout);
}

TEST_F(frmCollectionViewerTest, ThePrintMenuComesAndGoesAndBoxesTick) {
    EXPECT_FALSE(find<QToolButton>("P")->isVisible());
    menu("DM_PRINT");
    EXPECT_TRUE(find<QToolButton>("P")->isVisible());
    EXPECT_EQ(find<QToolButton>("P")->menu()->actions().size(), 3);
    clickRow("Acme.htm", true);
    EXPECT_TRUE(Viewer().smuiCollections.item("Acme.htm").ticked);
    QTest::keyClick(screen->focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(Viewer().smuiCollections.item("Acme.htm").ticked);
    clickRow(missing, true);
    EXPECT_FALSE(Viewer().smuiCollections.item(missing).ticked);
    menu("P_SELECT");
    menu("P_PRINT");
    EXPECT_EQ(printer.titles, QStringList({"Acme.htm", "Crisp"}));
    menu("DM_VIEW");
    EXPECT_FALSE(find<QToolButton>("P")->isVisible());
}

TEST_F(frmCollectionViewerTest, TheStatusBarAndADropPickAnotherCollection) {
    QDir(folder.path()).mkpath("Other");
    writeFile("Other/June.col", fileBytes("Week.col"));
    dialogs.expectFile(path("Other/June.col"));
    QTest::mouseClick(find<QAbstractButton>("LOCATION"), Qt::LeftButton);
    EXPECT_EQ(find<QAbstractButton>("LOCATION")->accessibleName(),
              "Current Collection: " + path("Other/June.col"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path("Week.col"))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(screen.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(screen.get(), &drop);
    EXPECT_EQ(location(), path("Week.col"));
    EXPECT_EQ(shown(), "Acme");
}

TEST_F(frmCollectionViewerTest, ClosingAsksForTheChangedSheetWithWhatIsBeingTyped) {
    menu("DM_EDIT");
    QWidget* grid = nullptr;
    for (QWidget* child : find<SheetEditor>("ss1")->findChildren<QWidget*>())
        if (QByteArray(child->metaObject()->className()).endsWith("SheetGrid"))
            grid = child;
    ASSERT_TRUE(grid);
    QTest::keyClicks(grid, "Typed");
    dialogs.expect(question, BoxAnswer::Yes);
    screen->close();
    EXPECT_EQ(filed("Acme.htm"), "Typed");
    EXPECT_FALSE(screens.isLoaded(Screen::frmCollectionViewer));
}

} // namespace
} // namespace kelvrane::testing
