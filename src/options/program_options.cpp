#include "options/program_options.h"

#include "frame/error_report.h"
#include "frame/help_topics.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "options/options_model.h"
#include "options/reminder_options.h"
#include "options/sheet_options.h"
#include "options/stored_option.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "records/record_tables.h"
#include "timevalues/time_values.h"

#include <QScopeGuard>

#include <utility>

namespace kelvrane {

namespace {

constexpr int defaultWidth = 11130; // twips
constexpr int defaultHeight = 5730;
constexpr int largestSize = 150000;

const QString databasePage = QStringLiteral("DATABASE");
const QString databaseRow = QStringLiteral("DATABASELOC");
const QString recentProjects = QStringLiteral("cboRecentProjects");
const QString showTips = QStringLiteral("chkShowTips");

QString T(const char* text) {
    return QString::fromLatin1(text);
}

void takeRecentProjects(const QString& text) {
    const Int16 count = ToInt16(text);
    ShowNumProjects = count;
    SaveRegNumber(count, keys::Main, T("ShowNumProjects"));
}

/// The tip window writes other words to the same value; only "On" is a tick here, and that is
/// wanted.
void toggleTips() {
    const bool on = !Options().controls.item(showTips).ticked;
    SaveRegText(on ? T("On") : T("Off"), keys::Main, T("Show Tips at Startup"));
    Options().controls.setTicked(showTips, on);
}

void closeProjectTables() {
    // The manager's panel shows rows of the former database and must not write them into this one.
    ports.screens->unload(Screen::frmDataBase);
    while (ProjectTable)
        CloseProjectTable();
}

// What the user does: a panel, a row (null: each of them) and the routine behind it.

struct Change {
    OptionPanel panel;
    const char* row;
    void (*take)(const QString& value);
};
constexpr Change changes[] = {
    {&OptionsModel::smuiAutoStartTime, nullptr, [](const QString&) { TakeStartTime(); }},
    {&OptionsModel::smuiEndDayReminderTime, nullptr, [](const QString&) { TakeStopTime(); }},
    {&OptionsModel::controls, "cboEndDayInterval", TakeEndDayInterval},
    {&OptionsModel::controls, "cboIntraDayInterval", TakeIntraDayInterval},
    {&OptionsModel::controls, "cboRecentProjects", takeRecentProjects},
    {&OptionsModel::smuiSoundFile, "SOUNDFILE", TakeSoundFile},
    {&OptionsModel::smuiSpreadSheet, "Time Increment", TakeTimeIncrement},
    {&OptionsModel::smuiSpreadSheet, "WEEKSTARTDAY", TakeWeekStart},
    {&OptionsModel::smuiSpreadSheet, "CALCNUMDAYS", TakeNumDays},
};

struct Press {
    OptionPanel panel;
    const char* row;
    void (*act)();
};
constexpr Press presses[] = {
    {&OptionsModel::smuiSelect, "CLOSE", [] { ports.screens->unload(Screen::frmOptions); }},
    {&OptionsModel::smuiSelect, "HELP", [] { ShowHelpTopic(OptionsHelpTopic()); }},
    {&OptionsModel::controls, "cmdTestSoundFile", TestSoundFile},
    {&OptionsModel::controls, "chkShowTips", toggleTips},
    {&OptionsModel::smuiSoundFile, "SOUNDFILE", BrowseSoundFile},
    {&OptionsModel::smuiSpreadSheet, "TIMESHEETLOC", BrowseTemplate},
    {&OptionsModel::smuiSpreadSheet, "COLLOC", BrowseCollection},
    {&OptionsModel::smuiSpreadSheet, "COLFILENAME", BrowseCollection},
    {&OptionsModel::smuiDatabase, "DATABASELOC", BrowseDatabase},
};

void changed(OptionPanel panel, const QString& key, const QString& value) {
    for (const Change& change : changes)
        if (change.panel == panel && (!change.row || key == QLatin1String(change.row)))
            change.take(value);
}

void pressed(OptionPanel panel, const QString& key) {
    for (const Press& press : presses)
        if (press.panel == panel && key == QLatin1String(press.row))
            press.act();
    if (panel == &OptionsModel::controls)
        ToggleOptionSwitch(key);
}

void wirePanel(OptionPanel panel) {
    KeyedItems* items = &(Options().*panel);
    const auto press = [panel](const QString& key) {
        Guarded(T("frmOptions"), [&] { pressed(panel, key); });
    };
    QObject::connect(items, &KeyedItems::Clicked, items, press);
    QObject::connect(items, &KeyedItems::ButtonPressed, items, press);
    QObject::connect(items, &KeyedItems::Edited, items,
                     [panel](const QString& key, const QString& value) {
                         Guarded(T("frmOptions"), [&] { changed(panel, key, value); });
                     });
}

void getKelvraneOptions() {
    SetAutoStartup();
    SetEndDayReminder();
    SetIntraDayReminder();
    SetAutoSave();
}

struct PageFill {
    const char* page;
    void (*fill)();
};
constexpr PageFill fills[] = {
    {"KELVRANE", getKelvraneOptions},
    {"SPREADSHEET", GetSpreadSheetOptions},
    {"DATABASE", GetDatabaseOptions},
    {"MISC", GetMiscOptions},
};

void fillPage(const QString& page) {
    for (const PageFill& row : fills)
        if (page == QLatin1String(row.page))
            row.fill();
}

/// What is missing or no size is the fallback.
int storedSize(const char* name, int fallback) {
    double size = fallback;
    SkipErrors step(T("frmOptions_Load"));
    step([&] {
        size = ToDouble(ports.settings->section(T("Options"), T(name), QString::number(fallback)));
    });
    return size > 0 && size <= largestSize ? int(size) : fallback;
}

} // namespace

void LoadOptions() {
    OptionsModel& model = Options();
    model.Loading = true;
    model.reset();
    for (const OptionRow& row : OptionRows())
        if (row.kind == ItemKind::DropDown)
            FillOptionItem(model.*row.panel, T(row.key), T(row.choices));
    model.Width = storedSize("Width", defaultWidth);
    model.Height = storedSize("Height", defaultHeight);
    fillPage(model.Page);
}

void UnloadOptions() {
    ports.settings->beginChanges();
    ports.settings->setSection(T("Options"), T("Width"), QString::number(Options().Width));
    ports.settings->setSection(T("Options"), T("Height"), QString::number(Options().Height));
    ports.settings->endChanges();
    DatabaseSelectCancelled = true;
}

void WireOptions() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    KeyedItems* pages = &Options().SmartTabStrip;
    QObject::connect(pages, &KeyedItems::Clicked, pages, [](const QString& page) {
        Guarded(T("SmartTabStrip_Click"), [&] { SmartTabStrip_Click(page); });
    });
    for (const OptionPanel panel : OptionPanels())
        wirePanel(panel);
}

void ShowDatabasePageAlone() {
    GetDatabaseOptions();
    Options().turnTo(databasePage);
    for (const OptionPage& page : OptionPages())
        Options().SmartTabStrip.setVisible(T(page.key), databasePage == QLatin1String(page.key));
}

void SmartTabStrip_Click(const QString& page) {
    Options().Page = page;
    fillPage(page);
}

int OptionsHelpTopic() {
    for (const OptionPage& page : OptionPages())
        if (Options().Page == QLatin1String(page.key))
            return page.helpNumber;
    return topics::Contents;
}

void KeepOptionsSize(int width, int height) {
    if (Options().Loading)
        return;
    Options().Width = width;
    Options().Height = height;
}

void GetDatabaseOptions() {
    KeyedItems& panel = Options().smuiDatabase;
    panel.setValue(databaseRow, ProjectDatabase);
    panel.setRole(databaseRow,
                  OptionFileExists(ProjectDatabase) ? TextRole::Value : TextRole::Inactive);
}

void GetMiscOptions() {
    Options().controls.setValue(recentProjects, StoredOption("ShowNumProjects"));
    Options().controls.setTicked(showTips, StoredOption("Show Tips at Startup") == u"On");
}

void FillOptionItem(KeyedItems& panel, const QString& rowName, const QString& listText) {
    panel.setChoices(rowName, listText.split(QLatin1Char(';')));
}

void BrowseDatabase() {
    const QString folder = PathOfFile(ProjectDatabase);
    const auto chosen =
        ports.dialogs->openFile({.title = QStringLiteral("Database Location"),
                                 .folder = folder.isEmpty() ? AppPath() : folder,
                                 .filter = QStringLiteral("Database Files ( *.mdb ) |*.mdb"),
                                 .defaultExtension = QStringLiteral(".mdb")});
    if (!chosen)
        return;
    closeProjectTables();
    ProjectDatabase = *chosen;
    KeyedItems& panel = Options().smuiDatabase;
    panel.setValue(databaseRow, ProjectDatabase);
    panel.setRole(databaseRow, TextRole::Inactive); // until it has opened
    {
        const auto close = qScopeGuard([] { CloseProjectTable(); });
        OpenProjectTable(QStringLiteral("Optimistic"));
    }
    panel.setRole(databaseRow, TextRole::Value);
    SaveRegText(ProjectDatabase, keys::Main, T("ProjectDatabase"));
    DatabaseSelected = true;
}

} // namespace kelvrane
