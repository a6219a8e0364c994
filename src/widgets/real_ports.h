// The plain ports for real: events, timers, sound, clipboard, the end of the process.
#pragma once

#include "platform/ports.h"

#include <memory>

namespace kelvrane {

class QtEvents : public QObject, public Events {
    Q_OBJECT
  public:
    QtEvents();
    void yield() override;
    bool waitUntil(const std::function<bool()>& condition) override;
    void pause(int milliseconds) override;

    /// Ends every wait, those begun later included.
    void shutDown();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool m_shuttingDown = false;
};

/// Precise timers: coarse ones drift by minutes a day.
class QtTimers : public Timers {
  public:
    IntervalTimer* create(QObject* parent) override;
};

/// Nothing is loaded before the first sound is played.
class QtSound : public Sound {
  public:
    QtSound();
    ~QtSound() override;
    void play(const QString& path) override;

  private:
    std::unique_ptr<QObject> m_player; ///< of the module kelvrane-sound
};

class QtClipboard : public Clipboard {
  public:
    void setText(const QString& text) override;
};

class DesktopLauncher : public Launcher {
  public:
    bool open(const QString& address) override;
    bool run(const QString& program) override;
};

class QtProcess : public Process {
  public:
    explicit QtProcess(QtEvents* events) : m_events(events) {}
    void end() override;
    /// True after end(), also where the event loop hadn't begun yet.
    bool hasEnded() const { return m_ended; }

  private:
    QtEvents* m_events;
    bool m_ended = false;
};

} // namespace kelvrane
