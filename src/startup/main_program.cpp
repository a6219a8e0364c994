#include "startup/main_program.h"

#include "charts/chart_types.h"
#include "frame/globals.h"
#include "frame/other_process.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "frame/trace.h"
#include "history/day_history.h"
#include "options/program_options.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "startup/command_line.h"
#include "startup/first_run_data.h"
#include "timekeeping/shut_down.h"
#include "timesheets/template_variables.h"
#include "tray/hidden_form.h"
#include "update/auto_update.h"

#include <variant>

namespace kelvrane {

namespace {

// Every setting that the start reads, in its order.
struct Setting {
    const QString& key;
    const char* name;
    std::variant<Int16*, QString*> target;
};

void readSettings(SkipErrors& step) {
    const Setting settings[] = {
        {keys::Main, "ShowNumProjects", &ShowNumProjects},
        {keys::Main, "EndOfDayTimeInterval", &EndOfDayTimeInterval},
        {keys::Main, "StopWorkTime", &StopWorkTime},
        {keys::Main, "StartWorkTime", &StartWorkTime},
        {keys::Main, "EndDayReminder", &EndDayReminder},
        {keys::Main, "ProjectDatabase", &ProjectDatabase},
        {keys::Main, "AutoStartDay", &AutoStartDay},
        {keys::Main, "AutoSave", &AutoSave},
        {keys::Main, "AutoDayReminder", &AutoDayReminder},
        {keys::Main, "AutoDayReminderValue", &AutoDayReminderValue},
        {keys::SpreadSheetInfo, "StartOfWeek", &StartOfWeek},
        {keys::SpreadSheetInfo, "TimeIncrements", &TimeIncrements},
    };
    for (const Setting& setting : settings) {
        const QString text = RegQueryValue(setting.key, QString::fromLatin1(setting.name));
        if (QString* const* target = std::get_if<QString*>(&setting.target))
            **target = text;
        else // a missing number stays 0
            step([&] { *std::get<Int16*>(setting.target) = ToInt16(text); });
    }
}

void reportMissingHistory() {
    TellMissingDayHistory();
    UnloadAllForms();
    ports.tray->removeIcon();
    UnloadHiddenForm();
}

void createDatabaseList() {
    const QString list = InAppPath(QString::fromLatin1(files::DatabaseList));
    if (ports.files->exists(list))
        return;
    const QString line =
        QStringLiteral("Current User;") + DayHistoryPath() + QStringLiteral(";\r\n");
    ports.files->writeAtomically(list, ToFileBytes(line));
}

/// False when the user gave up choosing a project database.
bool verifyProjectDatabase() {
    LogStep(QStringLiteral("Verifying Day Info Database location"));
    try {
        return ports.files->exists(ProjectDatabase) || DatabaseDialogLoop();
    } catch (const RuntimeError& error) {
        return error.number != errors::BadFileName || DatabaseDialogLoop();
    }
}

} // namespace

bool DatabaseDialogLoop() {
    MsgBox(
        QStringLiteral("The Kelvrane database '") + ProjectDatabase +
            QStringLiteral("' does not exist.  Please select a valid Kelvrane database location."),
        QStringLiteral("Database Error"), BoxIcon::Stop);
    ports.screens->show(Screen::frmOptions);
    ShowDatabasePageAlone();
    DatabaseSelected = false;
    DatabaseSelectCancelled = false;
    ports.events->waitUntil([] { return DatabaseSelected || DatabaseSelectCancelled; });
    const bool selected = DatabaseSelected;
    ports.screens->unload(Screen::frmOptions);
    return selected;
}

StartResult Main(const QString& CommandText, bool previousInstance) {
    SkipErrors step(QStringLiteral("Main"));
    step([] { HiddenForm(); });
    step([] { FetchUsageLog(); });
    DebugMode = false;
    if (!CommandText.isEmpty()) {
        if (ProcessCommandLine(CommandText)) {
            UnloadHiddenForm();
            return StartResult::Ended;
        }
    } else if (previousInstance) {
        MsgBox(QStringLiteral("Kelvrane is already open and running."),
               QStringLiteral("Application already running"), BoxIcon::Exclamation);
        UnloadHiddenForm();
        return StartResult::Ended;
    }
    if (DebugMode)
        step([] { ports.screens->show(Screen::frmDebugWindow); });
    if (!KeepsDay)
        LogStep(OtherProcessText);
    LogStep(QStringLiteral("Start DB Initialize"));
    step([] { InitializeDayInfo(); });
    LogStep(QStringLiteral("End DB Initialize"));
    LogStep(QStringLiteral("Checking for update"));
    step([] { AutoUpdate(false, false, {}); });
    CounterMinutes = BreakMinutes = 0;
    OnBreak = 0;
    DayStopped = false;
    LogStep(QStringLiteral("Getting Registry entries"));
    readSettings(step);
    if (!verifyProjectDatabase()) {
        UnloadHiddenForm();
        return StartResult::Ended;
    }
    if (!step.condition(DayHistoryExists)) {
        reportMissingHistory();
        return StartResult::Ended;
    }
    LogStep(QStringLiteral("Creating SSDBInfo.dat file"));
    step([] { createDatabaseList(); });
    LogStep(QStringLiteral("Verifying Recent File List"));
    NoRecentProjects = RegQueryValue(keys::RecentInfo, QStringLiteral("File1")).isEmpty();
    LogStep(QStringLiteral("Creating System Tray Icon"));
    step([] { ports.tray->showIcon(); });
    LogStep(QStringLiteral("Setting Global Chart Types"));
    InitSpreadsheetTables();
    FillChartTypes();
    LogStep(QStringLiteral("Loading Control form"));
    step([] { ports.screens->show(Screen::frmSTM); });
    LogStep(QStringLiteral("Loading Tips"));
    step([] { ports.screens->show(Screen::frmTip); });
    SpreadsheetOpen = false;
    DayCalendarOpen = false;
    LogStep(QStringLiteral("Kelvrane load complete"));
    return StartResult::Running;
}

} // namespace kelvrane
