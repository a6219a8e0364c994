// What the modules ask of the world outside: small abstract classes, built for real in app/, faked
// in tests. All are set before the first module runs.
#pragma once

#include "platform/clock.h"
#include "platform/file_store.h"
#include "platform/internet.h"
#include "platform/screens.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QPagedPaintDevice;

namespace kelvrane {

class SettingsStore;

enum class BoxIcon { None, Information, Exclamation, Stop, Question };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };

struct Box {
    QString text;
    QString title = QStringLiteral("Kelvrane");
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::Ok;
};

struct FileQuestion {
    QString title;
    QString folder;
    QString filter;           ///< "Database Files ( *.mdb ) |*.mdb"
    QString defaultExtension; ///< ".mdb"
    QString fileName = {};    ///< offered to save under
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;
    /// Shows a message box and waits. Closing it by its frame is its safest answer: Cancel, No, or
    /// Ok where there is nothing else.
    virtual BoxAnswer ask(const Box& box) = 0;
    /// std::nullopt when cancelled.
    virtual std::optional<QString> openFile(const FileQuestion& question) = 0;
    /// Doesn't ask about a file that exists: the caller does, in its own words.
    virtual std::optional<QString> saveFile(const FileQuestion& question) = 0;
};

/// The small screen frmProgress: a caption line and a bar.
class Progress {
  public:
    virtual ~Progress() = default;
    virtual void show(const QString& caption) = 0;
    virtual void setPercent(int percent) = 0; ///< 0 to 100; lets events through
    virtual void close() = 0;
    virtual bool isShown() const = 0;
};

enum class DayState { Stopped, Running, OnBreak };

class Tray {
  public:
    virtual ~Tray() = default;
    virtual void showIcon() = 0;
    virtual void removeIcon() = 0;
    virtual void setState(DayState state, const QString& toolTip) = 0;
    /// A notice that asks for nothing.
    virtual void notify(const QString& title, const QString& text) = 0;
};

class Sound {
  public:
    virtual ~Sound() = default;
    /// Starts a sound file and returns at once; silent when there is no device.
    virtual void play(const QString& path) = 0;
};

class Printer {
  public:
    virtual ~Printer() = default;
    /// The printer dialog. False when cancelled, and where there is no printer at all.
    virtual bool choose(const QString& title) = 0;
    /// Paints a document on the printer chosen last, which may be a PDF file. False when it failed.
    virtual bool print(const QString& title,
                       const std::function<void(QPagedPaintDevice&)>& paint) = 0;
};

class Volumes {
  public:
    virtual ~Volumes() = default;
    /// "/" and the mounted volumes, as paths.
    virtual QStringList roots() const = 0;
};

class Help {
  public:
    virtual ~Help() = default;
    virtual void show(const QString& page) = 0; ///< a page of the help file; empty: the contents
};

/// Hands things to the desktop.
class Launcher {
  public:
    virtual ~Launcher() = default;
    /// Opens a web address or a file with the desktop's program for it and doesn't wait. False when
    /// there is none.
    virtual bool open(const QString& address) = 0;
    /// Starts a program of its own, which outlives this one. False when it couldn't be started.
    virtual bool run(const QString& program) = 0;
};

class Events {
  public:
    virtual ~Events() = default;
    /// Lets waiting events run and returns.
    virtual void yield() = 0;
    /// Runs events until the condition holds. Ends early, with False, when the program shuts down.
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;
    /// Runs events for so long; the user's input waits. For waits that have an end of their own.
    virtual void pause(int milliseconds) = 0;
};

class Clipboard {
  public:
    virtual ~Clipboard() = default;
    virtual void setText(const QString& text) = 0;
};

/// A repeating timer; the signal comes once an interval while enabled.
class IntervalTimer : public QObject {
    Q_OBJECT
  public:
    virtual void setInterval(int milliseconds) = 0;
    virtual int interval() const = 0;
    virtual void setEnabled(bool enabled) = 0;

  signals:
    void Timer();
};

class Timers {
  public:
    virtual ~Timers() = default;
    virtual IntervalTimer* create(QObject* parent) = 0;
};

class Process {
  public:
    virtual ~Process() = default;
    virtual void end() = 0; ///< leaves the event loop; all waits end
};

struct Ports {
    Clock* clock = nullptr;
    FileStore* files = nullptr;
    SettingsStore* settings = nullptr;
    Dialogs* dialogs = nullptr;
    Screens* screens = nullptr;
    Progress* progress = nullptr;
    Tray* tray = nullptr;
    Sound* sound = nullptr;
    Printer* printer = nullptr;
    Volumes* volumes = nullptr;
    Help* help = nullptr;
    Launcher* launcher = nullptr;
    Internet* internet = nullptr;
    Events* events = nullptr;
    Clipboard* clipboard = nullptr;
    Timers* timers = nullptr;
    Process* process = nullptr;
};
inline Ports ports;

/// Asks through the dialog port. An empty title becomes "Kelvrane".
inline BoxAnswer MsgBox(const QString& text, const QString& title = {},
                        BoxIcon icon = BoxIcon::None, BoxButtons buttons = BoxButtons::Ok) {
    return ports.dialogs->ask(
        {text, title.isEmpty() ? QStringLiteral("Kelvrane") : title, icon, buttons});
}

/// Asks a question with Yes and No. False also when it is closed by its frame.
inline bool Agrees(const QString& question, const QString& title) {
    return MsgBox(question, title, BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes;
}

} // namespace kelvrane
