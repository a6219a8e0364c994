#include "collections/sheet_check.h"
#include "collections/viewer_fixture.h"

#include <QFile>

#include <sys/stat.h>

namespace kelvrane::testing {
namespace {

TEST_F(ViewerTest, TheCurrentCollectionOpensOnItsFirstSheet) {
    open();
    EXPECT_EQ(Viewer().CollectionFiles, QStringList({"Acme.htm", missing, "Crisp"}));
    EXPECT_EQ(shown(), "Acme");
    EXPECT_EQ(Viewer().pane(), ViewerPane::Web);
    EXPECT_EQ(location(), path("Week.col"));
    EXPECT_TRUE(Viewer().smuiToolBar.item("DM_VIEW").ticked);
    EXPECT_FALSE(enabled("SAVE"));
    choose("Crisp");
    EXPECT_EQ(shown(), "Crisp");
    choose(missing);
    EXPECT_EQ(Viewer().pane(), ViewerPane::txtError);
    EXPECT_EQ(Viewer().CurrentFile, path("Week_data/Crisp"));
    disk.remove(path("Week_data/Acme.htm"), true); // while it is listed
    choose("Acme.htm");
    EXPECT_EQ(Viewer().pane(), ViewerPane::txtError);
    click("HELP");
    EXPECT_EQ(help.pages, QStringList{"Collections/Viewing_Collections/Viewing_Collections.htm"});
}

TEST_F(ViewerTest, TheEndOfTheSessionKeepsAChangedSheetAside) {
    open();
    click("DM_EDIT");
    KeepViewerChanges();
    EXPECT_FALSE(disk.exists(path("Unsaved sheet 1.htm"))) << "nothing was changed";
    type("changed");
    KeepViewerChanges();
    Spreadsheet kept;
    kept.setHTMLURL(path("Unsaved sheet 1.htm"));
    EXPECT_EQ(kept.Range("A1").Value(), "changed");
    EXPECT_EQ(filed("Acme.htm"), "Acme");
    dialogs.expect(question, BoxAnswer::No);
    click("CLOSE");
}

TEST_F(ViewerTest, WhatCannotBeOpenedLeavesTheViewerClosed) {
    writeList({});
    open();
    EXPECT_FALSE(screens.isLoaded(Screen::frmCollectionViewer)) << "an empty list";
    writeFile("Week.col", "cut off");
    dialogs.expect("Error # 62");
    open();
    EXPECT_FALSE(screens.isLoaded(Screen::frmCollectionViewer));
    disk.remove(path("Week.col"), true);
    dialogs.expect("Please select a valid colleciton");
    open();
    EXPECT_FALSE(screens.isLoaded(Screen::frmCollectionViewer));
    StoreCollection({}, {});
    open();
    EXPECT_TRUE(screens.isLoaded(Screen::frmCollectionViewer));
    EXPECT_EQ(location(), "Please Select a collection");
    EXPECT_EQ(Viewer().pane(), ViewerPane::txtError);
}

TEST_F(ViewerTest, AFileSwapsTheCollectionOnDisplay) {
    open();
    QDir(folder.path()).mkpath("Other/June_data");
    writeFile("Other/June.COL", fileBytes("Week.col"));
    disk.copy(path("Week_data/Crisp"), path("Other/June_data/Bold.htm"));
    dialogs.expectFile(path("Other/June.COL"));
    Viewer().smuiStatusBar.click("LOCATION");
    EXPECT_EQ(dialogs.fileQuestions.last().filter, "Kelvrane Colleciton Files |*.col");
    EXPECT_EQ(dialogs.fileQuestions.last().folder, folder.path());
    EXPECT_EQ(location(), path("Other/June.COL"));
    EXPECT_EQ(Viewer().CollectionFiles.at(1), "Bold.htm");
    EXPECT_EQ(Viewer().pane(), ViewerPane::txtError) << "its first sheet is missing";
    EXPECT_EQ(CollectionFileName, "Week") << "the current one stays";
    TakeCollectionFile(path("Week_data/Acme.htm")); // not a list
    TakeCollectionFile("x");
    EXPECT_EQ(location(), path("Other/June.COL"));
    TakeCollectionFile(path("Week.col"));
    EXPECT_EQ(shown(), "Acme");
    LoadNewCollections({});
    EXPECT_EQ(location(), "Please Select a collection");
    EXPECT_EQ(Viewer().smuiCollections.count(), 0);
}

TEST_F(ViewerTest, EditingAsksBeforeTheSheetGoes) {
    open();
    click("DM_EDIT");
    EXPECT_EQ(Viewer().pane(), ViewerPane::ss1);
    EXPECT_TRUE(enabled("SAVE"));
    choose("Crisp"); // unchanged: no question
    EXPECT_EQ(Viewer().ss1.Range("A1").Value(), "Crisp");

    type("More");
    click("SAVE");
    EXPECT_EQ(filed("Crisp"), "More");
    EXPECT_TRUE(enabled("SAVE"));
    choose("Acme.htm"); // saved first: no question

    type("Dropped");
    dialogs.expect(question, BoxAnswer::No);
    choose("Crisp");
    EXPECT_EQ(dialogs.shown.last().title, "Save changes?");
    EXPECT_EQ(dialogs.shown.last().icon, BoxIcon::Question);
    EXPECT_EQ(filed("Acme.htm"), "Acme");

    type("Kept");
    dialogs.expect(question, BoxAnswer::Yes);
    click("DM_VIEW");
    EXPECT_EQ(shown(), "Kept");
    EXPECT_FALSE(enabled("SAVE"));
    EXPECT_FALSE(disk.exists(path("BWSS_template_for_verify_0938.htm")));
}

TEST_F(ViewerTest, EveryWayOutAsksOnce) {
    for (const bool byCommand : {true, false}) {
        open();
        click("DM_EDIT");
        type(byCommand ? "One" : "Two");
        dialogs.expect(question, byCommand ? BoxAnswer::No : BoxAnswer::Yes);
        if (byCommand)
            click("CLOSE");
        else
            screens.unload(Screen::frmCollectionViewer);
        EXPECT_FALSE(screens.isLoaded(Screen::frmCollectionViewer));
    }
    EXPECT_EQ(filed("Acme.htm"), "Two");
    open();
    click("DM_EDIT");
    type("Three");
    dialogs.expect(question, BoxAnswer::Yes);
    TakeCollectionFile(path("Week.col"));
    EXPECT_EQ(filed("Acme.htm"), "Three");
}

TEST_F(ViewerTest, ChangesThatCannotBeSavedStayInTheEditor) {
    open();
    click("DM_EDIT");
    type("Mine");
    ASSERT_EQ(::chmod(QFile::encodeName(path("Week_data/Acme.htm")).constData(), 0400), 0);
    dialogs.expect(question, BoxAnswer::Yes);
    dialogs.expect("Permission denied");
    choose("Crisp");
    EXPECT_EQ(Viewer().ss1.Range("A1").Value(), "Mine");
    EXPECT_EQ(filed("Acme.htm"), "Acme");
    dialogs.expect("Permission denied");
    click("SAVE");
    disk.remove(path("Week_data/Acme.htm"), true); // a sheet that vanished is written anew
    dialogs.expect(question, BoxAnswer::Yes);
    choose("Crisp");
    EXPECT_EQ(filed("Acme.htm"), "Mine");
}

TEST_F(ViewerTest, ASheetThatCannotBeReadIsNeverSavedOver) {
    writeFile("Week_data/Crisp", "no sheet at all");
    open();
    click("DM_EDIT");
    dialogs.expect("RefreshDisplayMode");
    choose("Crisp");
    EXPECT_EQ(Viewer().pane(), ViewerPane::txtError);
    click("SAVE"); // the editor still holds the sheet before
    EXPECT_EQ(sheet("Crisp"), "no sheet at all");
    writeFile("outside", "mine");
    disk.remove(path("Week_data/Crisp"), true);
    ASSERT_TRUE(QFile::link(path("outside"), path("Week_data/Crisp")));
    dialogs.expect("a link to another place");
    choose("Crisp");
    EXPECT_EQ(Viewer().CurrentFile, "");
}

TEST_F(ViewerTest, ADataFolderThatIsALinkHasNoSheets) {
    QDir(folder.path()).rename("Week_data", "elsewhere");
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("Week_data")));
    dialogs.expect("a link to another place");
    open();
    EXPECT_EQ(Viewer().CollectionFiles.filter("** Missing **").size(), 3);
}

TEST_F(ViewerTest, ASelectionIsPrinted) {
    open();
    EXPECT_FALSE(Viewer().smuiToolBar.item("P").visible);
    click("P_SELECT"); // out of reach
    click("DM_PRINT");
    EXPECT_TRUE(Viewer().smuiToolBar.item("P").visible);
    KeyedItems& list = Viewer().smuiCollections;
    EXPECT_EQ(list.item("Acme.htm").kind, ItemKind::Check);
    EXPECT_FALSE(list.item(missing).enabled);
    list.toggle("Crisp");
    list.toggle(missing);
    printer.chooses = false;
    click("P_PRINT");
    EXPECT_TRUE(printer.titles.isEmpty());
    printer.chooses = true;
    click("P_PRINT");
    EXPECT_EQ(printer.titles, QStringList{"Crisp"});
    click("P_SELECT");
    EXPECT_FALSE(list.item(missing).ticked);
    disk.remove(path("Week_data/Acme.htm"), true);
    dialogs.expect("These sheets could not be printed:\rAcme.htm");
    click("P_PRINT");
    EXPECT_EQ(printer.titles, QStringList({"Crisp", "Crisp"})) << "the others are printed";
    EXPECT_TRUE(printer.documents.last().startsWith("%PDF"));
    click("P_DESELECT");
    EXPECT_FALSE(list.item("Crisp").ticked);
    EXPECT_TRUE(Viewer().smuiToolBar.item("P").visible);
    click("DM_VIEW");
    EXPECT_EQ(list.item("Acme.htm").kind, ItemKind::Text);
    EXPECT_FALSE(Viewer().smuiToolBar.item("P").visible);
}

TEST_F(ViewerTest, AClickWhileASheetLoadsIsIgnored) {
    open();
    int clicks = 0;
    events.onYield = [&] {
        ++clicks;
        EXPECT_TRUE(Viewer().isBusy());
        click("DM_PRINT");
        click("CLOSE");
    };
    click("DM_EDIT");
    events.onYield = {};
    EXPECT_GT(clicks, 0);
    EXPECT_EQ(Viewer().DisplayMode, display_modes::Edit);
    EXPECT_FALSE(Viewer().isBusy());
    EXPECT_TRUE(screens.isLoaded(Screen::frmCollectionViewer));
}

TEST_F(ViewerTest, ALargeCollectionOpensAndTicksInAMoment) {
    QStringList names{"Acme.htm", "Acme.htm"}; // one sheet listed twice
    for (int sheet = 0; sheet < 100'000; ++sheet)
        names.append(QStringLiteral("Customer %1.htm").arg(sheet));
    writeList(names);
    open();
    click("DM_PRINT");
    click("P_SELECT");
    EXPECT_EQ(Viewer().smuiCollections.count(), 100'001);
    EXPECT_TRUE(Viewer().smuiCollections.item("Acme.htm").ticked);
}

class SheetCheck : public ProgramTest {
  protected:
    static QString page(const QString& style, const QString& cells) {
        return "<html>\n<head>\n" + style + "\n</head>\n<xml>\n</xml>\n" + cells + "\n</html>";
    }
    QString temporary() const { return path("BWSS_template_for_verify_0938.htm"); }
};

TEST_F(SheetCheck, OnlyWhatASaveDoesNotChangeByItselfCounts) {
    writeFile("saved.htm", page(".s1 {a}", "<td class=s1 x>1</td>").toUtf8());
    QString tempPath;
    EXPECT_FALSE(VerifyAgainstSSData({}, "x", tempPath));
    EXPECT_TRUE(tempPath.isEmpty());
    EXPECT_FALSE(
        VerifyAgainstSSData(path("saved.htm"), page(".s7 {b}", "<td class=s7 x>1</td>"), tempPath));
    EXPECT_FALSE(disk.exists(temporary()));
    EXPECT_TRUE(
        VerifyAgainstSSData(path("saved.htm"), page(".s1 {a}", "<td class=s1 x>2</td>"), tempPath));
    EXPECT_EQ(tempPath, temporary());
    dialogs.expect("Save changes?", BoxAnswer::Yes);
    EXPECT_EQ(PromptSaveSheetChanges(path("saved.htm"), tempPath), SaveAnswer::Saved);
    EXPECT_TRUE(fileBytes("saved.htm").contains(">2<"));
    EXPECT_FALSE(disk.exists(temporary()));
    writeFile("saved.htm", "no marks");
    dialogs.expect("VerifyAgainstSSData");
    EXPECT_FALSE(VerifyAgainstSSData(path("saved.htm"), page("", ""), tempPath));
    EXPECT_TRUE(dialogs.shown.last().text.contains("Error # 62"));
}

} // namespace
} // namespace kelvrane::testing
