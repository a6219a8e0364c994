#include "app/program.h"

#include "frame/globals.h"
#include "frame/help_topics.h"
#include "frame/program_folder.h"
#include "frame/tray_menus.h"
#include "history/roll_up.h"
#include "platform/skip_errors.h"
#include "startup/command_line.h"
#include "startup/day_claim.h"
#include "startup/install_step.h"
#include "startup/open_folder.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/control_views.h"
#include "tray/hidden_form.h"
#include "tray/minute_tick.h"

namespace kelvrane {

Program::Program(const PortChoices& choices)
    : m_tray(&Menus().mnuSysTray, &Menus().mnuRProjects),
      m_helpKey([this](const QWidget* window) { return helpTopic(window); }) {
    const auto choose = [](auto* chosen, auto* real) { return chosen ? chosen : real; };
    ports = {.clock = choose(choices.clock, static_cast<Clock*>(&m_clock)),
             .files = &m_files,
             .dialogs = choose(choices.dialogs, static_cast<Dialogs*>(&m_dialogs)),
             .screens = &m_screens,
             .progress = &m_progress,
             .tray = &m_tray,
             .sound = &m_sound,
             .printer = choose(choices.printer, static_cast<Printer*>(&m_printer)),
             .volumes = &m_volumes,
             .help = choose(choices.help, static_cast<Help*>(&m_help)),
             .launcher = &m_launcher,
             .internet = &m_internet,
             .events = &m_events,
             .clipboard = &m_clipboard,
             .timers = choose(choices.timers, static_cast<Timers*>(&m_timers)),
             .process = &m_process};
    WireControlScreen();
    wireTray();
}

Program::~Program() {
    m_dialogs.shutDown();
    m_help.close();
    m_screens.unloadAll();
    UnloadHiddenForm();
    ResetRollUp(); // its timer is the port's
    ports = {};
}

void Program::wireTray() {
    connect(&m_tray, &TrayIcon::activated, this, [] { TrayActivate(); });
    connect(&m_tray, &TrayIcon::clicked, this, [](int button) { TrayClick(button); });
    connect(&m_tray, &TrayIcon::rebuildRecentMenu, this, [] { RebuildRecentMenu(); });
}

/// A menu that stands over no window is the tray's.
int Program::helpTopic(const QWidget* window) const {
    if (m_tray.isFallback(window) || window->windowType() == Qt::Popup)
        return topics::TrayIcon;
    return m_screens.helpTopic(window);
}

StartResult Program::start(const QString& commandText) {
    m_files.createFolder(AppPath());
    m_settings =
        std::make_unique<SettingsStore>(m_files, InAppPath(QString::fromLatin1(files::Settings)));
    ports.settings = m_settings.get();
    m_lock = std::make_unique<InstanceLock>(InAppPath(QString::fromLatin1(files::Lock)));
    const DayClaim claim = ClaimDay(*m_lock, ParseCommandLine(commandText).command);
    if (claim == DayClaim::Declined)
        return StartResult::Ended;
    if (m_settings->wasDamaged())
        MsgBox(
            QStringLiteral("The settings could not be read. Kelvrane starts with its defaults; a "
                           "copy of the damaged file is kept beside it."),
            {}, BoxIcon::Exclamation);
    // Beside another process nothing is installed: it works with what is there.
    if (claim == DayClaim::Kept || claim == DayClaim::NotNeeded)
        RunInstallStep();
    const StartResult result = Main(commandText, claim == DayClaim::AlreadyRunning);
    if (result == StartResult::Running) {
        connect(HiddenForm().Timer1(), &IntervalTimer::Timer, &m_tray, &TrayIcon::checkTray);
        ShowOpenFolder();
    }
    return m_process.hasEnded() ? StartResult::Ended : result;
}

void Program::saveForLogOut() {
    SkipErrors step(QStringLiteral("LogOut"));
    step([] { SaveForLogOut(); });
    step([] { SaveControlLayout(); });
}

} // namespace kelvrane
