// Ports for measuring: a clock that stands still, and a world that hears everything and does
// nothing. A message box is printed, since a benchmark that raises one measures the wrong thing.
#pragma once

#include "platform/ports.h"
#include "platform/settings_store.h"

#include <QDebug>
#include <QTimer>

#include <memory>

namespace kelvrane::bench {

class StillClock final : public Clock {
  public:
    explicit StillClock(const QDateTime& present) : m_present(present) {}
    QDateTime now() const override { return m_present; }

  private:
    QDateTime m_present;
};

class QuietDialogs final : public Dialogs {
  public:
    BoxAnswer ask(const Box& box) override {
        qWarning().noquote() << "message box:" << box.text;
        return box.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Cancel;
    }
    std::optional<QString> openFile(const FileQuestion&) override { return std::nullopt; }
    std::optional<QString> saveFile(const FileQuestion&) override { return std::nullopt; }
};

class QuietScreens final : public Screens {
  public:
    void show(Screen) override {}
    void bringForward(Screen) override {}
    void unload(Screen) override {}
    bool isVisible(Screen) const override { return false; }
    bool isLoaded(Screen) const override { return false; }
};

class QuietProgress final : public Progress {
  public:
    void show(const QString&) override {}
    void setPercent(int) override {}
    void close() override {}
    bool isShown() const override { return false; }
};

class QuietTray final : public Tray {
  public:
    void showIcon() override {}
    void removeIcon() override {}
    void setState(DayState, const QString&) override {}
    void notify(const QString& title, const QString& text) override {
        qWarning().noquote() << "notice:" << title << text;
    }
};

class QuietSound final : public Sound {
  public:
    void play(const QString&) override {}
};

class QuietHelp final : public Help {
  public:
    void show(const QString&) override {}
};

class QuietInternet final : public Internet {
  public:
    void fetch(const InternetRequest&, OnStatus, OnResult) override {}
    void cancelAll() override {}
};

class QuietEvents final : public Events {
  public:
    void yield() override {}
    void pause(int) override {}
    bool waitUntil(const std::function<bool()>& condition) override { return condition(); }
};

class StillTimer final : public IntervalTimer {
  public:
    explicit StillTimer(QObject* parent) { setParent(parent); }
    void setInterval(int milliseconds) override { m_interval = milliseconds; }
    int interval() const override { return m_interval; }
    void setEnabled(bool) override {}

  private:
    int m_interval = 0;
};

class StillTimers final : public Timers {
  public:
    IntervalTimer* create(QObject* parent) override { return new StillTimer(parent); }
};

/// Fills kelvrane::ports for its lifetime.
class QuietPorts {
  public:
    explicit QuietPorts(const QDateTime& present) : m_clock(present) {
        ports.clock = &m_clock;
        ports.files = &m_files;
        ports.dialogs = &m_dialogs;
        ports.screens = &m_screens;
        ports.progress = &m_progress;
        ports.tray = &m_tray;
        ports.sound = &m_sound;
        ports.help = &m_help;
        ports.internet = &m_internet;
        ports.events = &m_events;
        ports.timers = &m_timers;
    }
    ~QuietPorts() { ports = {}; }
    QuietPorts(const QuietPorts&) = delete;
    QuietPorts& operator=(const QuietPorts&) = delete;

    FileStore& files() { return m_files; }
    void openSettings(const QString& path) {
        m_settings = std::make_unique<SettingsStore>(m_files, path);
        ports.settings = m_settings.get();
    }

  private:
    StillClock m_clock;
    DiskFileStore m_files;
    QuietDialogs m_dialogs;
    QuietScreens m_screens;
    QuietProgress m_progress;
    QuietTray m_tray;
    QuietSound m_sound;
    QuietHelp m_help;
    QuietInternet m_internet;
    QuietEvents m_events;
    StillTimers m_timers;
    std::unique_ptr<SettingsStore> m_settings;
};

} // namespace kelvrane::bench
