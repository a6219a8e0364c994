// The running program: every real port, built in one visible order, and the wiring between them.
//
//     Program program;
//     if (program.start(commandText) == StartResult::Running)
//         return QApplication::exec();
#pragma once

#include "app/help_key.h"
#include "app/screen_host.h"
#include "app/transfer_internet.h"
#include "platform/clock.h"
#include "platform/file_store.h"
#include "platform/instance_lock.h"
#include "platform/settings_store.h"
#include "startup/main_program.h"
#include "widgets/help_window.h"
#include "widgets/message_boxes.h"
#include "widgets/printing.h"
#include "widgets/progress_box.h"
#include "widgets/real_ports.h"
#include "widgets/tray_icon.h"

#include <QObject>

#include <memory>

namespace kelvrane {

/// Lets a test or the tour put its own in the place of single ports.
struct PortChoices {
    Clock* clock = nullptr;
    Timers* timers = nullptr;
    Dialogs* dialogs = nullptr;
    Printer* printer = nullptr;
    Help* help = nullptr;
};

class Program : public QObject {
    Q_OBJECT
  public:
    explicit Program(const PortChoices& choices = {});
    ~Program() override;

    /// Claims the day of the program folder, then the install step, then Main.
    StartResult start(const QString& commandText);

    /// Saves the day and rolls it up without stopping anything; for a log-out and for signals.
    void saveForLogOut();

    ScreenHost& screens() { return m_screens; }
    TrayIcon& tray() { return m_tray; }
    HelpViewer& help() { return m_help; }
    bool hasEnded() const { return m_process.hasEnded(); }

  private:
    void wireTray();
    int helpTopic(const QWidget* window) const;

    SystemClock m_clock;
    DiskFileStore m_files;
    std::unique_ptr<SettingsStore> m_settings;
    MessageBoxes m_dialogs;
    QtEvents m_events;
    QtTimers m_timers;
    QtSound m_sound;
    QtPrinter m_printer;
    MountedVolumes m_volumes;
    QtClipboard m_clipboard;
    QtProcess m_process{&m_events};
    HelpViewer m_help;
    DesktopLauncher m_launcher;
    TransferInternet m_internet;
    ProgressBox m_progress;
    ScreenHost m_screens;
    TrayIcon m_tray;
    HelpKey m_helpKey;
    std::unique_ptr<InstanceLock> m_lock;
};

} // namespace kelvrane
