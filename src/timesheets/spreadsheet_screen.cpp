#include "timesheets/spreadsheet_screen.h"

#include "collections/collection_location.h"
#include "collections/current_collection.h"
#include "collections/sheet_check.h"
#include "collections/sheet_name.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/help_topics.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "timesheets/database_list.h"
#include "timesheets/sheet_calculation.h"
#include "timesheets/sheet_files.h"
#include "timesheets/sheet_toolbox.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/template_files.h"
#include "timesheets/template_variables.h"
#include "timevalues/time_values.h"
#include "worksheet/page_painter.h"

#include <QDir>
#include <QScopeGuard>

#include <utility>

namespace kelvrane {

namespace {

const QString templateName = QStringLiteral("TEMPLATE_NAME");
const QString collectionName = QStringLiteral("COLLECTION_NAME");
const QString startDate = QStringLiteral("STARTDATE");
const QString progress = QStringLiteral("PROGRESS");
const QString saveCommand = QStringLiteral("TEMPLATE_SAVE");

SpreadsheetState& state() {
    return Sheets().state;
}

QString stored(const char* name) {
    return StripAtNull(RegQueryValue(keys::SpreadSheetInfo, QString::fromLatin1(name)));
}

bool isThere() {
    return ports.screens->isLoaded(Screen::frmSpreadsheet);
}

void setStartDate(QDate date) {
    state().selectedDate = date;
    Sheets().SmartToolBar.setCaption(startDate, DateText(date));
}

void showCollection() {
    Sheets().smuiStatusBar.setCaption(
        collectionName, CollectionFileName.isEmpty()
                            ? QStringLiteral("** Collection information not present ***")
                            : CollectionLoc + QDir::separator() + CollectionFileName);
}

/// A setting that is missing or no number leaves its default.
void readSettings() {
    SkipErrors step(QStringLiteral("frmSpreadsheet_Load"));
    StartOfWeek = stored("StartOfWeek");
    step([] { state().CalcNumDays = ToInt16(stored("CalcNumDays")); });
    SS_Template = stored("SS_Template");
    TimeIncrements = stored("TimeIncrements");
    step([] { ReadCollectionSettings(); });
    state().SortOrder = stored("SortOrder");
    state().CurrentTemplate = SS_Template;
}

// The commands of the tool bar.

void enterTemplate(bool canSave) {
    state().TemplateEditing = true;
    state().TemplateModified = false;
    Sheets().SmartToolBar.setEnabled(saveCommand, canSave);
}

void calculate() {
    state().caption = SheetCaption;
    if (!CheckTemplateChanges())
        return;
    FillSMUIToolbox();
    AddData();
    Sheets().layOut();
}

void showSetup() {
    FillSMUIToolbox();
    state().ToolboxVisible = true;
    Sheets().layOut();
}

void showTemplateSetup() {
    state().ToolboxVisible = true;
    FillSMUIToolbox();
    state().sheetShown = true;
    state().noData = false;
    Sheets().layOut();
}

void newTemplate() {
    if (!CheckTemplateChanges())
        return;
    Sheets().ss1.setHTMLData({});
    state().CurrentTemplate.clear();
    showTemplateSetup();
    enterTemplate(false);
}

void openTemplate() {
    if (!CheckTemplateChanges() || !ShowLoad(false))
        return;
    showTemplateSetup();
    enterTemplate(true);
}

void saveNewTemplate() {
    bool written = false;
    if (ShowSave(SheetFileKind::Template, &written))
        state().TemplateEditing = false;
    if (written)
        state().TemplateModified = false;
}

void saveTemplate() {
    const QString path = Sheets().smuiStatusBar.item(templateName).caption;
    if (path.isEmpty())
        return;
    if (ports.files->exists(path)) {
        ports.files->writeAtomically(path, SheetFileBytes(Sheets().ss1));
        state().TemplateModified = false;
    } else {
        saveNewTemplate();
    }
    Sheets().SmartToolBar.setEnabled(saveCommand, false);
}

void saveTemplateAs() {
    saveNewTemplate();
    Sheets().SmartToolBar.setEnabled(saveCommand, false);
}

void viewCurrentTemplate() {
    const QString path = Sheets().smuiStatusBar.item(templateName).caption;
    if (path.isEmpty() || !ports.files->exists(path)) {
        state().CurrentTemplate = path;
        MsgBox(QStringLiteral("No current template saved"));
        return;
    }
    if (!CheckTemplateChanges())
        return;
    Sheets().ss1.setHTMLURL(path);
    state().CurrentTemplate = path;
    showTemplateSetup();
    enterTemplate(true);
}

void setDefault() {
    if (!state().CurrentTemplate.isEmpty())
        SetDefaultTemplate(state().CurrentTemplate);
    else if (MsgBox(QStringLiteral("Are you sure you want to save a blank form as a template?"), {},
                    BoxIcon::None, BoxButtons::YesNoCancel) == BoxAnswer::Yes)
        saveNewTemplate();
}

void addToCollection() {
    if (ports.screens->isLoaded(Screen::frmCollectionLoc)) // it waits for that one already
        return;
    const auto done = qScopeGuard([] {
        if (isThere())
            state().TemplateEditing = false;
    });
    if (!HasCollection()) {
        if (!Agrees(QStringLiteral("Collection information unavailable.  Would you like to create "
                                   "a new collection?"),
                    QStringLiteral("Collection information unavailable")))
            return;
        ports.screens->show(Screen::frmCollectionLoc);
        ports.events->waitUntil([] { return !ports.screens->isLoaded(Screen::frmCollectionLoc); });
        if (!isThere() || !HasCollection())
            return;
    }
    AskSheetName(
        SheetNameOfDate(Sheets().SmartToolBar.item(startDate).caption),
        [] { return Sheets().ss1.HTMLData(); }, Sheets().smuiStatusBar);
    if (isThere())
        Sheets().smuiStatusBar.setValue(progress, QStringLiteral("0"));
}

void toggleCalendar() {
    state().caption = SheetCaption;
    state().calendarShown = !state().calendarShown;
    Sheets().layOut();
}

struct Command {
    const char* key;
    void (*run)();
};
constexpr Command commands[] = {
    {"TIMESHEET_CALCULATE", calculate},
    {"VIEW_TEMPLATE_SETUP", showSetup},
    {"TIMESHEET_SAVE", [] { ShowSave(SheetFileKind::Timesheet); }},
    {"ADDTO_COLLECTION", addToCollection},
    {"TIMESHEET_PRINT", ShowPrint},
    {"EXIT", CloseSpreadsheet},
    {"TEMPLATE_NEW", newTemplate},
    {"TEMPLATE_OPEN", openTemplate},
    {"TEMPLATE_SAVE", saveTemplate},
    {"TEMPLATE_SAVE_AS", saveTemplateAs},
    {"TEMPALTE_VIEW_CUR", viewCurrentTemplate},
    {"TEMPLATE_SET_DEFAULT", setDefault},
    {"SEL_COL_LOC", [] { ports.screens->show(Screen::frmCollectionLoc); }},
    {"VIEW_COLLECTION", [] { ports.screens->show(Screen::frmCollectionViewer); }},
    {"STARTINGDATE", toggleCalendar},
    {"HELP", [] { ShowHelpTopic(SpreadsheetHelpTopic()); }},
};

} // namespace

void LoadSpreadsheet() {
    SkipErrors step = ReportingSteps(QStringLiteral("frmSpreadsheet_Load"));
    SpreadsheetOpen = true;
    SpreadsheetModel& sheets = Sheets();
    sheets.reset();
    state().Filling = true;
    if (CurrentEntryIndex >= 0)
        step([] { AddDataToDayInfoDataBase(); });
    setStartDate(ports.clock->today());
    step([] { InitSpreadsheetTables(); });
    readSettings();
    sheets.smuiStatusBar.setCaption(templateName, SS_Template);
    showCollection();
    Databases().reset(); // a list that can't be read shows none
    step([] { LoadDatabaseList(); });
    SelectedDBIndex = -1;
    FillSMUIToolbox();
    EnableAdding();
    sheets.layOut();
}

void UnloadSpreadsheet() {
    const QString sheet = Sheets().ss1.HTMLData();
    bool settled = false;
    SkipErrors step = ReportingSteps(QStringLiteral("frmSpreadsheet_Unload"));
    step([&] { settled = CheckTemplateChanges(); });
    if (!settled)
        step([&] { TellKept(KeepUnsavedSheet(sheet)); });
    state().TemplateModified = false;
    RemoveSheetFiles();
    SpreadsheetOpen = false;
}

void KeepTemplateChanges() {
    if (SpreadsheetOpen && state().TemplateModified)
        KeepUnsavedSheet(Sheets().ss1.HTMLData());
}

bool MayLeaveTemplate() {
    if (!state().TemplateModified)
        return true;
    ports.screens->bringForward(Screen::frmSpreadsheet);
    if (!CheckTemplateChanges())
        return false;
    state().TemplateModified = false; // the unload asks no second time
    return true;
}

void CloseSpreadsheet() {
    if (!MayLeaveTemplate())
        return;
    ports.screens->unload(Screen::frmSpreadsheet);
}

void ShowPrint() {
    const QString file = InAppPath(QString::fromLatin1(sheet_files::PrintData));
    SkipErrors step(QStringLiteral("ShowPrint"));
    step([&] { ports.files->create(file, SheetFileBytes(Sheets().ss1)); });
    const auto done = qScopeGuard([&] { step([&] { ports.files->remove(file, true); }); });
    if (!ports.printer->choose(QStringLiteral("Print")) || !isThere())
        return;
    const SheetContents contents = Sheets().ss1.worksheet().contents();
    ports.printer->print(state().caption,
                         [&](QPagedPaintDevice& device) { PrintSheet(contents, device); });
}

void SheetBarClick(const QString& key) {
    if (key != u"STARTINGDATE")
        HideSheetCalendar();
    SkipErrors step = ReportingSteps(QStringLiteral("SmartToolBar_Click"));
    for (const Command& command : commands)
        if (key == QLatin1String(command.key))
            step(command.run);
}

void SheetDateClick(QDate date) {
    if (!CheckTemplateChanges())
        return;
    setStartDate(date);
    HideSheetCalendar();
    AddData();
}

void HideSheetCalendar() {
    Sheets().hideCalendar();
}

int SpreadsheetHelpTopic() {
    return state().ToolboxVisible ? topics::SheetSetup : topics::Sheet;
}

void SheetEdited() {
    if (state().TemplateEditing)
        state().TemplateModified = true;
}

void WireSpreadsheet() {
    static bool wired = false;
    WireDatabaseList();
    if (std::exchange(wired, true))
        return;
    SpreadsheetModel& sheets = Sheets();
    QObject::connect(&sheets.SmartToolBar, &KeyedItems::Clicked, &sheets, [](const QString& key) {
        Guarded(QStringLiteral("SmartToolBar_Click"), [&] { SheetBarClick(key); });
    });
    QObject::connect(&sheets.SmartToolbox, &KeyedItems::Edited, &sheets,
                     [](const QString& key, const QString& value) {
                         Guarded(QStringLiteral("SmartToolbox_Change"),
                                 [&] { SheetOptionChange(key, value); });
                     });
    QObject::connect(&sheets.ss1, &Spreadsheet::Edited, &sheets, SheetEdited);
    QObject::connect(&Databases(), &DatabaseList::Used, &sheets, HideSheetCalendar);
    QObject::connect(&CollectionPlace(), &CollectionLocation::Chosen, &sheets, [] {
        if (SpreadsheetOpen)
            showCollection();
    });
}

} // namespace kelvrane
