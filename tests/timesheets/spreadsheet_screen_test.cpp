#include "collections/current_collection.h"
#include "frame/settings.h"
#include "sheet_fixture.h"
#include "timesheets/database_list.h"
#include "timesheets/sheet_toolbox.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/spreadsheet_screen.h"
#include "timesheets/template_files.h"

#include <QDir>
#include <QFile>

namespace kelvrane::testing {
namespace {

class SpreadsheetScreenTest : public SheetTest {
  protected:
    SpreadsheetScreenTest() {
        addDay("1/6/2003", "Alpha", 60);
        listDatabases({ownLine()});
        keep("SS_Template", weekTemplate());
        keep("SortOrder", QStringLiteral("By Project"));
        keep("CalcNumDays", QStringLiteral("7"));
        keep("StartOfWeek", QStringLiteral("1"));
        keep("TimeIncrements", QStringLiteral("15 Minutes"));
        WireSpreadsheet();
        load();
    }
    ~SpreadsheetScreenTest() override { UnloadSpreadsheet(); }

    void keep(const char* name, const QString& value) {
        settings->setValue(keys::SpreadSheetInfo, QString::fromLatin1(name), value);
    }
    static QString kept(const char* name) {
        return RegQueryValue(keys::SpreadSheetInfo, QString::fromLatin1(name)).remove(QChar(0));
    }
    void load() {
        screens.loaded.insert(Screen::frmSpreadsheet);
        LoadSpreadsheet();
    }
    static void click(const char* key) { Sheets().SmartToolBar.click(QString::fromLatin1(key)); }
    static void option(const char* key, const QString& value) {
        Sheets().SmartToolbox.edit(QString::fromLatin1(key), value);
    }
    static QString cell(const char* name) {
        return Sheets().ss1.worksheet().text(ParseAddress(QString::fromLatin1(name)).value());
    }
    static QString status(const char* key) {
        return Sheets().smuiStatusBar.item(QString::fromLatin1(key)).caption;
    }
    static void typeIntoSheet(const char* name, const char* text) {
        Sheets().ss1.edit([&](Worksheet& sheet) {
            sheet.enter(ParseAddress(QString::fromLatin1(name)).value(), QString::fromLatin1(text));
        });
    }
};

TEST_F(SpreadsheetScreenTest, OpensWithTheSettingsAndAnEmptySheet) {
    EXPECT_TRUE(SpreadsheetOpen);
    EXPECT_EQ(Sheets().SmartToolBar.item("STARTDATE").caption, "1/5/2003");
    EXPECT_EQ(status("TEMPLATE_NAME"), path("week.htm"));
    EXPECT_EQ(status("COLLECTION_NAME"), "** Collection information not present ***");
    EXPECT_FALSE(Sheets().state.sheetShown);
    EXPECT_FALSE(Sheets().SmartToolBar.item("ADDTO_COLLECTION").enabled);
    EXPECT_EQ(Sheets().SmartToolbox.value("WEEKSTARTDAY"), "Sunday");
    EXPECT_EQ(Sheets().SmartToolbox.value("CALCNUMDAYS"), "7");
    UnloadSpreadsheet();
    EXPECT_FALSE(SpreadsheetOpen);
}

TEST_F(SpreadsheetScreenTest, CalculateFillsTheWeekAndEachOptionRecalculates) {
    click("TIMESHEET_CALCULATE");
    EXPECT_TRUE(Sheets().state.sheetShown);
    EXPECT_EQ(cell("A5"), "Alpha");
    EXPECT_EQ(cell("D5"), "1");
    EXPECT_TRUE(Sheets().SmartToolBar.item("ADDTO_COLLECTION").enabled);

    addDay("1/7/2003", "Alpha", 10);
    option("TIMEINCREMENTS", "None");
    EXPECT_EQ(kept("TimeIncrements"), "None");
    EXPECT_EQ(cell("E5"), "0.17");
    option("CALCNUMDAYS", "1");
    EXPECT_EQ(cell("A1"), "Week 2, Jan 5 -  Jan 5");
    EXPECT_EQ(cell("A5"), "");
    for (const char* ignored : {"", "-3", "many", "99999"})
        option("CALCNUMDAYS", QString::fromLatin1(ignored));
    dialogs.expect("Number of days must be greater than 0");
    option("CALCNUMDAYS", "0");
    EXPECT_EQ(dialogs.shown.last().title, "Invalid Entry");
    EXPECT_EQ(Sheets().state.CalcNumDays, 1);
    option("WEEKSTARTDAY", "Monday");
    EXPECT_EQ(StartOfWeek, "2");
    EXPECT_EQ(cell("A1"), "Week 1, Jan 5 -  Jan 5");

    SheetDateClick(QDate(2003, 1, 6));
    EXPECT_EQ(Sheets().SmartToolBar.item("STARTDATE").caption, "1/6/2003");
    EXPECT_EQ(cell("C5"), "1");
    EXPECT_TRUE(dialogs.fileQuestions.isEmpty());
}

TEST_F(SpreadsheetScreenTest, SeveralDatabasesOrInvoicesNeedACollection) {
    option("SORTORDER", "By Project");
    EXPECT_TRUE(dialogs.shown.isEmpty());
    dialogs.expect("Please select a valid Collection Location, then rerun the spreadsheet.");
    option("SORTORDER", "By Customer");
    EXPECT_EQ(dialogs.shown.last().title, "Invalid Collection Location");
    EXPECT_EQ(screens.shown.last(), Screen::frmCollectionLoc);
    EXPECT_EQ(kept("SortOrder"), "By Customer");

    keep("SortOrder", "By Project");
    listDatabases({ownLine(), "Declined;" + path("none.mdb") + ";DECLINE"});
    load();
    dialogs.expect("Please select a valid Collection Location, then rerun the spreadsheet.");
    click("TIMESHEET_CALCULATE");
}

TEST_F(SpreadsheetScreenTest, AMissingTemplateIsAskedFor) {
    QFile::rename(path("week.htm"), path("moved.htm"));
    dialogs.expect("Can not find spread sheet template: " + path("week.htm") +
                       ". \rPress OK to select a template or press cancel to cancel spreadsheet "
                       "generation.",
                   BoxAnswer::Cancel);
    click("TIMESHEET_CALCULATE");
    EXPECT_EQ(dialogs.shown.last().title, "Missing file");
    EXPECT_EQ(cell("A5"), "");

    dialogs.expect("Can not find spread sheet template", BoxAnswer::Ok);
    dialogs.expectFile(path("moved.htm"));
    dialogs.expect("Set " + path("moved.htm") + " as default?", BoxAnswer::No);
    click("TIMESHEET_CALCULATE");
    EXPECT_EQ(cell("A5"), "Alpha") << "whatever the answer, it serves this run";
    EXPECT_EQ(kept("SS_Template"), path("week.htm"));
    EXPECT_EQ(status("TEMPLATE_NAME"), path("moved.htm"));
}

TEST_F(SpreadsheetScreenTest, MissingAnchorsAreToldBeforeAnythingIsWritten) {
    keep("SS_Template", saveTemplate("none.htm", {{"A5", "plain"}}));
    load();
    dialogs.expect("TimeSheet can not be created without setting the #NAME# variable");
    click("TIMESHEET_CALCULATE");
    EXPECT_EQ(dialogs.shown.last().title, "Spreadsheet can not be calculated");
}

TEST_F(SpreadsheetScreenTest, ATemplateIsOpenedEditedAndSaved) {
    dialogs.expectFile(path("week.htm"));
    click("TEMPLATE_OPEN");
    EXPECT_TRUE(Sheets().state.TemplateEditing);
    EXPECT_TRUE(Sheets().SmartToolBar.item("TEMPLATE_SAVE").enabled);
    EXPECT_EQ(cell("A5"), "#NAME#");
    typeIntoSheet("A1", "Changed #WEEK#");
    EXPECT_TRUE(Sheets().state.TemplateModified);
    // Replacing it asks; No leaves the file.
    dialogs.expect("Changes were found between this file and the saved file.  Do you wish to save "
                   "changes?",
                   BoxAnswer::No);
    click("TIMESHEET_CALCULATE");
    EXPECT_EQ(dialogs.shown.last().title, "Save changes?");
    EXPECT_EQ(cell("A1"), "Week 2, Jan 5 -  Jan 11");

    click("TEMPALTE_VIEW_CUR");
    typeIntoSheet("A1", "Changed #WEEK#");
    click("TEMPLATE_SAVE");
    EXPECT_FALSE(Sheets().SmartToolBar.item("TEMPLATE_SAVE").enabled);
    click("TIMESHEET_CALCULATE");
    EXPECT_EQ(cell("A1"), "Changed 2");

    click("TEMPALTE_VIEW_CUR");
    typeIntoSheet("A1", "Typed again");
    dialogs.expect("Changes were found", BoxAnswer::Yes);
    SheetDateClick(QDate(2003, 1, 5));
    EXPECT_EQ(cell("A1"), "Typed again");
}

TEST_F(SpreadsheetScreenTest, AResultIsNoTemplate) {
    dialogs.expectFile(path("week.htm"));
    click("TEMPLATE_OPEN");
    typeIntoSheet("A1", "typed");
    dialogs.expect("Changes were found", BoxAnswer::No);
    option("TIMEINCREMENTS", "1 Hour"); // asks like any other road
    EXPECT_FALSE(Sheets().state.TemplateEditing);
    EXPECT_FALSE(Sheets().SmartToolBar.item("TEMPLATE_SAVE").enabled);
    typeIntoSheet("D5", "8"); // a correction on the result
    const QByteArray before = fileBytes("week.htm");
    click("TIMESHEET_CALCULATE");
    EXPECT_EQ(fileBytes("week.htm"), before);
}

TEST_F(SpreadsheetScreenTest, ANewTemplateThatIsToBeKeptStaysUntilItHasAName) {
    click("TEMPLATE_NEW");
    typeIntoSheet("A1", "precious");
    dialogs.expect("Changes were found", BoxAnswer::Yes);
    dialogs.expectFile(std::nullopt); // the file dialog is cancelled
    click("TIMESHEET_CALCULATE");
    EXPECT_EQ(cell("A1"), "precious");
    dialogs.expect("Changes were found", BoxAnswer::Yes);
    dialogs.expectFile(path("week.htm"));
    dialogs.expect("File Exists, Overwrite this file?", BoxAnswer::No);
    click("EXIT");
    EXPECT_EQ(cell("A1"), "precious");
    EXPECT_FALSE(screens.unloaded.contains(Screen::frmSpreadsheet));
    EXPECT_TRUE(Sheets().state.TemplateModified);
    Sheets().state.TemplateModified = false;
}

TEST_F(SpreadsheetScreenTest, AChangedTemplateOutlivesTheProgram) {
    click("TEMPLATE_NEW");
    typeIntoSheet("A1", "precious");
    KeepTemplateChanges(); // the session ends and asks nothing
    EXPECT_TRUE(fileBytes("Unsaved sheet 1.htm").contains("precious"));
    // Ended by its menu the program asks, and goes on when the save is called off.
    dialogs.expect("Changes were found", BoxAnswer::Yes);
    dialogs.expectFile(std::nullopt);
    EXPECT_FALSE(MayLeaveTemplate());
    // A day that ends takes the screen along; the sheet is kept then too.
    dialogs.expect("Changes were found", BoxAnswer::Yes);
    dialogs.expectFile(std::nullopt);
    dialogs.expect("The sheet could not be saved.  It is kept as " + path("Unsaved sheet 2.htm"));
    UnloadSpreadsheet();
    EXPECT_TRUE(fileBytes("Unsaved sheet 2.htm").contains("precious"));

    load();
    click("TEMPALTE_VIEW_CUR");
    typeIntoSheet("A1", "kept in its file");
    dialogs.expect("Changes were found", BoxAnswer::Yes);
    UnloadSpreadsheet();
    EXPECT_TRUE(fileBytes("week.htm").contains("kept in its file"));
    KeepTemplateChanges();
    EXPECT_FALSE(disk.exists(path("Unsaved sheet 3.htm")));
}

TEST_F(SpreadsheetScreenTest, ACalculationIsntStartedWithinAnother) {
    StoreCollection(path("sheets"), "Week");
    QDir().mkpath(path("sheets"));
    const QString other = path("other.mdb");
    CreateDayInfoDatabase(other);
    addDayTo(other, "1/6/2003", "Beta", 60);
    listDatabases({ownLine(), "Ann;" + other + ";ACCEPT"});
    load();
    int nested = 0;
    events.onYield = [&] { // while a sheet is filed
        ++nested;
        click("TIMESHEET_CALCULATE");
        SheetDateClick(QDate(2003, 1, 5));
    };
    click("TIMESHEET_CALCULATE");
    events.onYield = nullptr;
    EXPECT_GT(nested, 0);
    EXPECT_TRUE(QFile::exists(path("sheets/Week_data/Me.htm")));
    EXPECT_TRUE(QFile::exists(path("sheets/Week_data/Ann.htm")));
    EXPECT_EQ(cell("A5"), "Beta");
    EXPECT_EQ(cell("A6"), "");
}

TEST_F(SpreadsheetScreenTest, NewTemplatesAreSavedUnderANameAndMayBecomeTheDefault) {
    click("TEMPLATE_NEW");
    dialogs.expect("Are you sure you want to save a blank form as a template?", BoxAnswer::Cancel);
    click("TEMPLATE_SET_DEFAULT");
    EXPECT_EQ(dialogs.shown.last().buttons, BoxButtons::YesNoCancel);
    typeIntoSheet("A1", "#NAME#");
    dialogs.expectFile(path("mine.htm"));
    click("TEMPLATE_SAVE_AS");
    EXPECT_EQ(dialogs.fileQuestions.last().fileName, "template.htm");
    EXPECT_EQ(dialogs.fileQuestions.last().folder, path("data"));
    EXPECT_TRUE(QFile::exists(path("mine.htm")));
    click("TEMPLATE_SET_DEFAULT");
    EXPECT_EQ(kept("SS_Template"), path("mine.htm"));

    dialogs.expectFile(path("mine.htm"));
    dialogs.expect("File Exists, Overwrite this file?", BoxAnswer::No);
    const QByteArray before = fileBytes("mine.htm");
    typeIntoSheet("A1", "other");
    click("TIMESHEET_SAVE");
    EXPECT_EQ(dialogs.fileQuestions.last().fileName, "1_5_2003.htm");
    EXPECT_EQ(fileBytes("mine.htm"), before);
    dialogs.expectFile(std::nullopt);
    click("TIMESHEET_SAVE");
}

TEST_F(SpreadsheetScreenTest, BadFilesAreRefusedAndTheSheetStays) {
    click("TIMESHEET_CALCULATE");
    const SheetContents before = Sheets().ss1.worksheet().contents();
    writeFile("huge.htm", QByteArray(50 * 1024 * 1024, 'x'));
    writeFile("empty.htm", "<html><body><p>no table</p></body></html>");
    for (const char* name : {"huge.htm", "empty.htm", "missing folder"}) {
        dialogs.expectFile(path(name));
        if (QFile::exists(path(name)))
            dialogs.expect("This error was generated by the SmartToolBar_Click function.");
        click("TEMPLATE_OPEN");
        EXPECT_EQ(Sheets().ss1.worksheet().contents(), before) << name;
    }
}

TEST_F(SpreadsheetScreenTest, PrintingGoesThroughThePrinterDialog) {
    click("TIMESHEET_CALCULATE");
    click("TIMESHEET_PRINT");
    ASSERT_EQ(printer.documents.size(), 1);
    EXPECT_TRUE(printer.documents[0].startsWith("%PDF"));
    printer.chooses = false;
    click("TIMESHEET_PRINT");
    EXPECT_EQ(printer.documents.size(), 1);
    EXPECT_FALSE(QFile::exists(path("TPrintData.htm")));
}

TEST_F(SpreadsheetScreenTest, HelpPanelCalendarAndClosing) {
    click("HELP");
    click("VIEW_TEMPLATE_SETUP");
    EXPECT_TRUE(Sheets().state.ToolboxVisible);
    click("HELP");
    EXPECT_EQ(help.pages, (QStringList{"Spread_Sheet_Screen/SpreadSheet_Form.htm",
                                       "Spread_Sheet_Screen/SS_SetupVew.htm"}));
    CloseToolbox();
    EXPECT_FALSE(Sheets().state.ToolboxVisible);
    click("STARTINGDATE");
    EXPECT_TRUE(Sheets().state.calendarShown);
    click("VIEW_TEMPLATE_SETUP"); // any other command hides it
    EXPECT_FALSE(Sheets().state.calendarShown);
    dialogs.expectFile(path("week.htm"));
    click("TEMPLATE_OPEN");
    typeIntoSheet("A1", "changed");
    dialogs.expect("Changes were found", BoxAnswer::No);
    click("EXIT");
    EXPECT_EQ(screens.unloaded.last(), Screen::frmSpreadsheet);
}

} // namespace
} // namespace kelvrane::testing
