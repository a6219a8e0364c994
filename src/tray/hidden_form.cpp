#include "tray/hidden_form.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/recent_projects.h"
#include "frame/tray_menus.h"
#include "platform/ports.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/shut_down.h"
#include "timekeeping/working_day.h"
#include "timesheets/spreadsheet_screen.h"
#include "timevalues/counter.h"
#include "tray/minute_tick.h"
#include "update/auto_update.h"

#include <algorithm>
#include <memory>

namespace kelvrane {

namespace {

struct ScreenLauncher {
    const char* key;
    Screen screen;
    bool bringForward;
};
constexpr ScreenLauncher launchers[] = {
    {"mnuAboutKelvrane", Screen::frmAbout, true},
    {"mnuSystrayViewProjectInfo", Screen::frmSTM, false},
    {"mnuSysTrayGraph", Screen::frmChart, true},
    {"mnuSysTraySpreadsheet", Screen::frmSpreadsheet, true},
    {"mnuSysTrayDatabase", Screen::frmDataBase, true},
    {"mnuSystrayOptions", Screen::frmOptions, true},
    {"mnuDaysInfo", Screen::frmDayInfo, false},
};

void checkForUpdate() {
    if (Agrees(QStringLiteral("You must be connected to the internet to successfully update "
                              "Kelvrane.  Are you connected to the internet?"),
               QStringLiteral("Internet connection available")))
        AutoUpdate(true, false, {});
}

void exitProgram() {
    if (MsgBox(QStringLiteral("Do you really want to exit Kelvrane?"),
               QStringLiteral("Exit Program"), BoxIcon::None,
               BoxButtons::OkCancel) != BoxAnswer::Cancel &&
        MayLeaveTemplate())
        ShutDownProgram();
}

struct Command {
    const char* key;
    void (*run)();
};
constexpr Command commands[] = {
    {"mnuSysTrayStop", [] { StopCurrentEntry(); }},
    {tray_items::Break, [] { ModifySysTrayStatusHeading(QStringLiteral("Break")); }},
    {"mnuSystrayStatusQuitSaveDay", QuitAndSaveDay},
    {"mnuCheckForUpdate", checkForUpdate},
    {"mnuSysTrayExit", exitProgram},
};

std::unique_ptr<frmInfo>& holder() {
    static std::unique_ptr<frmInfo> form;
    return form;
}

} // namespace

frmInfo::frmInfo(QObject* parent)
    : QObject(parent), m_timer(ports.timers->create(this)), m_counter(new cTimer(m_timer, this)) {
    TMR = m_counter;
    connect(m_counter, &cTimer::Minute, this,
            [] { Guarded(QStringLiteral("TMR_Minute"), [] { TMR_Minute(); }); });
    connect(m_timer, &IntervalTimer::Timer, this,
            [] { Guarded(QStringLiteral("TMR_Minute"), [] { ReadClocks(); }); });
    connect(&Control(), &ControlModel::DateChanged, this, CheckForNightlyUpdate);
    connect(&Menus().mnuSysTray, &KeyedItems::Clicked, this, [](const QString& key) {
        Guarded(QStringLiteral("mnuSysTray_Click"), [&] { TrayMenuClick(key); });
    });
    connect(&Menus().mnuRProjects, &KeyedItems::Clicked, this, [](const QString& key) {
        Guarded(QStringLiteral("MnuRecProj_Click"), [&] { RecentProjectClick(key); });
    });
    m_timer->setInterval(cTimer::designInterval);
    m_timer->setEnabled(true);
}

frmInfo::~frmInfo() {
    if (TMR == m_counter)
        TMR = nullptr;
}

frmInfo& HiddenForm() {
    if (!holder())
        holder() = std::make_unique<frmInfo>();
    return *holder();
}

void UnloadHiddenForm() {
    holder().reset();
}

void TrayActivate() {
    TrayMenuClick(QStringLiteral("mnuSystrayViewProjectInfo"));
    ports.screens->bringForward(Screen::frmSTM);
}

void TrayClick(int button) {
    constexpr int recentProjects = 2;
    if (button == recentProjects)
        RebuildRecentMenu();
}

void RebuildRecentMenu() {
    KeyedItems& menu = Menus().mnuRProjects;
    const auto show = [&menu](int place, const QString& caption) {
        menu.setCaption(tray_items::RecentKey(place), caption);
        menu.setVisible(tray_items::RecentKey(place), true);
    };
    int place = 1;
    if (!NoRecentProjects)
        while (place <= RecentProjects.size() && place < tray_items::RecentCount &&
               !RecentProjects[place - 1].isEmpty()) {
            show(place, RecentLabel(place - 1));
            ++place;
        }
    show(place, MoreProjects);
    for (++place; place <= tray_items::RecentCount; ++place)
        menu.setVisible(tray_items::RecentKey(place), false);
}

void TrayMenuClick(const QString& key) {
    for (const ScreenLauncher& launcher : launchers) {
        if (key != QLatin1String(launcher.key))
            continue;
        ports.screens->show(launcher.screen);
        if (launcher.bringForward)
            ports.screens->bringForward(launcher.screen);
    }
    for (const Command& command : commands)
        if (key == QLatin1String(command.key))
            command.run();
}

void RecentProjectClick(const QString& key) {
    const QString caption = Menus().mnuRProjects.item(key).caption;
    if (caption == MoreProjects) {
        ports.screens->show(Screen::frmDataBase);
        return;
    }
    int place = 1;
    while (place < tray_items::RecentCount && tray_items::RecentKey(place) != key)
        ++place;
    const RecentProject project = RecentProjectOf(place - 1, caption);
    StartProjectByName(project.name, project.number);
}

} // namespace kelvrane
