#include "timekeeping/control_screen.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/help_topics.h"
#include "frame/recent_projects.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "frame/trace.h"
#include "frame/waiting_questions.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "timekeeping/break_down.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_views.h"
#include "timekeeping/day_change.h"
#include "timekeeping/day_load.h"
#include "timekeeping/day_questions.h"
#include "timekeeping/tray_state.h"
#include "timekeeping/week_hours.h"
#include "timekeeping/working_day.h"
#include "timevalues/day_file.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

const QString projectName = QStringLiteral("PROJECT_NAME");
const QString projectNumber = QStringLiteral("PROJECT_NUM");
const QString deleteItem = QStringLiteral("mnuSetDataDeleteProject");
const QString modifyItem = QStringLiteral("mnuSetDataModifyTime");
const QString separatorItem = QStringLiteral("mnuSetDataSep1");

// Launchers of the panel, and the screens that they open.
struct ScreenLauncher {
    const char* key;
    Screen screen;
};
constexpr ScreenLauncher launchers[] = {
    {"GRAPHSCREEN", Screen::frmChart}, {"SPREADSHEETSCREEN", Screen::frmSpreadsheet},
    {"DATABASE", Screen::frmDataBase}, {"OPTIONS", Screen::frmOptions},
    {"DAYINFO", Screen::frmDayInfo},
};

/// The only digit that counts for a delete is the key's last one; entries from 10 on delete the
/// entry of their last digit. It stays so.
int deleteIndex() {
    const int index = SelectedEntryKey.isEmpty() ? -1 : SelectedEntryKey.back().digitValue();
    return std::max(index, 0);
}

void tellDamagedDay(const RuntimeError& error) {
    ports.tray->notify(
        QStringLiteral("Part of today's file could not be read"),
        error.description +
            QStringLiteral(
                ". What could be read is loaded; the file as it was is kept beside it."));
}

void loadDay() {
    try {
        LoadDay();
    } catch (const RuntimeError& error) {
        tellDamagedDay(error);
        throw;
    }
}

} // namespace

void LoadControlScreen() {
    SkipErrors step(QStringLiteral("frmSTM_Load"));
    ControlModel& control = Control();
    control.loaded = true;
    QString runningName;
    QString runningNumber;
    LogStep(QStringLiteral("  Getting Control Screen Variables"));
    step([] { ReadControlLayout(); });
    step([] { ShowControlPanel(Control().layout.ControlPanelShowing, false); });
    LogStep(QStringLiteral("  Loading Current Day's information"));
    step([] { loadDay(); });
    LogStep(QStringLiteral("  Configuring Display"));
    const ControlLayout layout = control.layout;
    step([] { ShowGraph(GraphShowing, false); });
    step([] { ShowWeekView(WeekViewShowing, false); });
    step([&] { ShowBreakDown(layout.BreakDownShowing, false); });
    step([&] { ShowQuickView(layout.QuickViewShowing, false); });
    ControlScreenLoaded = true;
    control.smuiBreakDown.clear();
    if (FillBreakDownList() == status::Done)
        step([&] {
            runningName = At(DayEntries, CurrentEntryIndex).ProjectName;
            runningNumber = DayEntries[CurrentEntryIndex].ProjectNumber;
        });
    step([] { UpdateDayStatistics(); });
    if (OnBreak == 1)
        step([] { ShowBreakState(); });
    if (CurrentEntryIndex == -1)
        DayStopped = true;
    LogStep(QStringLiteral("  Loading recent file list"));
    step([&] { FillRecentProjectList(runningName, runningNumber); });
    LogStep(QStringLiteral("  Setting up list view"));
    step([] { SetLVWColumnHeaders(); });
    step([] { FillWeekView(); });
    step([] { AddDataToDayInfoDataBase(); });
    step([] { RefreshTrayState(); });
    emit control.LayoutChanged();
}

void EnsureControlScreenLoaded() {
    // The end-of-day prompt that ran out leaves the status off although the day may be in the
    // model.
    if (!Control().loaded || !ControlScreenLoaded)
        LoadControlScreen();
}

void UnloadControlScreen() {
    SaveControlLayout();
    Control().loaded = false;
}

void FillRecentProjectList(const QString& name, const QString& number) {
    KeyedItems& fields = Control().smuiProjectStatus;
    const QStringList choices = ProjectChoices();
    fields.setChoices(projectName, choices);
    if (choices.size() == 1) // no project yet: the fields stay as they are
        return;
    fields.setValue(projectName, name);
    fields.setValue(projectNumber, number);
    StatusHeading = name;
    SetStatusText(StatusHeading);
}

void RestoreProjectName() {
    const DayEntry running = EntryRunning() ? DayEntries[CurrentEntryIndex] : DayEntry();
    Control().smuiProjectStatus.setValue(projectName, running.ProjectName);
    Control().smuiProjectStatus.setValue(projectNumber, running.ProjectNumber);
}

void StartProjectByName(const QString& name) {
    EnsureControlScreenLoaded();
    FollowClock();
    const qsizetype entries = DayEntries.size();
    Control().smuiProjectStatus.setValue(projectName, name);
    const OpenTable* opened = nullptr;
    // By its name: the Database Manager may have been opened behind a box meanwhile.
    const auto close = qScopeGuard([&] { CloseProjectTable(opened); });
    try {
        OpenProjectTable(QStringLiteral("ReadOnly"));
        opened = ProjectTable.get();
        StartNewProject(QStringLiteral("Project_Name = '") + name + QLatin1Char('\''));
    } catch (...) {
        if (DayEntries.size() == entries)
            RestoreProjectName();
        throw;
    }
}

void ChooseProject(int place, const QString& value) {
    const bool isProject =
        !NoRecentProjects && !RecentProjects.isEmpty() && place < RecentProjects.size();
    if (isProject)
        StartProjectByName(value);
    else
        ports.screens->show(Screen::frmDataBase);
}

void TimeCtrlClick(const QString& key) {
    struct Command {
        const char* key;
        void (*run)();
    };
    static constexpr Command commands[] = {
        {"CONTROLPANEL", [] { ShowControlPanel(!Control().layout.ControlPanelShowing, true); }},
        {"STOP", StopDay},
        {"BREAK",
         [] {
             FollowClock();
             if (EntryRunning())
                 ModifySysTrayStatusHeading(QStringLiteral("Break"));
         }},
        {"QUITANDSAVE", QuitAndSaveDay},
        {"HELP", [] { ShowHelpTopic(topics::ControlScreen); }},
    };
    SkipErrors step(QStringLiteral("smuiTimeCtrl_Click"));
    for (const Command& command : commands)
        if (key == QLatin1String(command.key))
            step(command.run);
}

void PanelClick(const QString& key) {
    const ControlLayout& layout = Control().layout;
    if (key == QLatin1String("BREAKDOWN"))
        ShowBreakDown(!layout.BreakDownShowing, true);
    else if (key == QLatin1String("QUICKVIEW"))
        ShowQuickView(!layout.QuickViewShowing, true);
    else if (key == QLatin1String("GRAPH"))
        ShowGraph(!GraphShowing, true);
    else if (key == QLatin1String("WEEKVIEW"))
        ShowWeekView(!WeekViewShowing, true);
    for (const ScreenLauncher& launcher : launchers)
        if (key == QLatin1String(launcher.key))
            ports.screens->show(launcher.screen);
}

void BreakDownSelect(const QString& key) {
    if (key.isEmpty())
        return;
    SelectedEntryKey = key;
    const int index = BreakDownIndex(key);
    const QString project =
        index >= 0 && index < DayEntries.size() ? DayEntries[index].ProjectName : QString();
    KeyedItems& menu = Control().mnuSetData;
    menu.setCaption(modifyItem, QStringLiteral("Modify ") + project);
    const bool offered = deleteIndex() != 0;
    if (offered)
        menu.setCaption(deleteItem,
                        QStringLiteral(" ** Delete ") + project + QStringLiteral(" **"));
    menu.setVisible(deleteItem, offered);
    menu.setVisible(separatorItem, offered);
}

void SetDataClick(const QString& key) {
    if (key == modifyItem) {
        ModifyOpen = true;
        ports.screens->show(Screen::frmModify);
        ports.screens->bringForward(Screen::frmModify);
    } else if (key == deleteItem) {
        DeleteDayEntry(deleteIndex());
    }
}

namespace {

/// A project chosen in the Database Manager becomes the day's.
void takeSelection(const QString& name, const QString& number) {
    EnsureControlScreenLoaded();
    FollowClock();
    const qsizetype entries = DayEntries.size();
    const QString heading = StatusHeading;
    AddRecentProject(name);
    FillRecentProjectList(name, number);
    try {
        StartNewProject(QStringLiteral("Project_Name = '") + name + QLatin1Char('\''));
    } catch (...) {
        if (DayEntries.size() == entries) { // what runs goes on, and the fields say so
            RestoreProjectName();
            StatusHeading = heading;
            SetStatusText(StatusHeading);
        }
        throw;
    }
}

/// The settings that the control screen shows the effect of.
void followSetting(const QString& name) {
    if (ControlScreenLoaded && (name == u"StartOfWeek" || name == u"TimeIncrements")) {
        SetLVWColumnHeaders();
        FillWeekView();
    }
}

} // namespace

void WireControlScreen() {
    selectionSinks.day = {takeSelection, RestoreProjectName};
    RegisterDayQuestions();
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    ControlModel& control = Control();
    QObject::connect(&Questions(), &WaitingQuestions::Answered, &control,
                     [] { Guarded(QStringLiteral("SaveDayFile"), SaveDayFile); });
    QObject::connect(&SettingsSignal(), &SettingsChanges::Changed, &control,
                     [](const QString&, const QString& name) {
                         Guarded(QStringLiteral("SettingsChanged"), [&] { followSetting(name); });
                     });
    QObject::connect(&control.smuiTimeCtrl, &KeyedItems::Clicked, &control, [](const QString& key) {
        Guarded(QStringLiteral("smuiTimeCtrl_Click"), [&] { TimeCtrlClick(key); });
    });
    QObject::connect(&control.smuiProjectStatus, &KeyedItems::Chosen, &control,
                     [](const QString& /*key*/, int place, const QString& value) {
                         Guarded(QStringLiteral("smuiProjectStatus_Change"),
                                 [&] { ChooseProject(place, value); });
                     });
    for (KeyedItems* panel : {&control.smuiPanelLayout, &control.smuiPanelLaunch})
        QObject::connect(panel, &KeyedItems::Clicked, &control, [](const QString& key) {
            Guarded(QStringLiteral("smuiPanel_Click"), [&] { PanelClick(key); });
        });
    QObject::connect(
        &control.smuiBreakDown, &KeyedItems::Selected, &control, [](const QString& key) {
            Guarded(QStringLiteral("smuiBreakDown_Click"), [&] { BreakDownSelect(key); });
        });
    QObject::connect(&control.mnuSetData, &KeyedItems::Clicked, &control, [](const QString& key) {
        Guarded(QStringLiteral("mnuSetData_Click"), [&] { SetDataClick(key); });
    });
}

} // namespace kelvrane
