// Fakes of the ports, and the fixture that puts them in place: a clock that is set, timers that are
// fired, dialogs with a queue of answers that fail on a box nobody expected.
//
//     class WorkingDayTest : public ProgramTest {};
//     TEST_F(WorkingDayTest, ...) { clock.set("2026-03-02 09:00"); dialogs.expect("Delete",
//     BoxAnswer::Ok); ... }
#pragma once

#include "platform/ports.h"
#include "platform/settings_store.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace kelvrane::testing {

class FakeClock final : public Clock {
  public:
    QDateTime now() const override { return m_now; }
    qint64 bootTime() const override { return m_boot; }
    qint64 awakeTime() const override { return m_awake; }
    /// "yyyy-MM-dd hh:mm" with or without seconds. Forward: the machine was awake meanwhile.
    /// Backward: the clock is set.
    void set(const QString& text);
    void pass(qint64 seconds);  ///< the machine is awake
    void sleep(qint64 seconds); ///< it is asleep
    void jump(qint64 seconds);  ///< the clock is set, by so much
    /// Sleeps until then.
    void sleepUntil(const QString& text);
    void advanceMinutes(int minutes) { pass(qint64(minutes) * 60); }

  private:
    QDateTime m_now{QDate(2026, 3, 2), QTime(9, 0)};
    qint64 m_boot = 1'000'000; ///< milliseconds
    qint64 m_awake = 900'000;
};

class FakeDialogs final : public Dialogs {
  public:
    /// The next box must hold this text somewhere in its text or title.
    void expect(const QString& part, BoxAnswer answer = BoxAnswer::Ok);
    void expectFile(const std::optional<QString>& path) { m_files.append(path); }
    BoxAnswer ask(const Box& box) override;
    std::optional<QString> openFile(const FileQuestion& question) override;
    std::optional<QString> saveFile(const FileQuestion& question) override {
        return openFile(question);
    }

    QList<Box> shown;                          ///< every box, in order
    QList<FileQuestion> fileQuestions;         ///< every file dialog
    bool strict = true;                        ///< fail on a box that nobody expected
    std::function<void(const Box&)> whileOpen; ///< runs while a box is open
    ~FakeDialogs() override;

  private:
    QList<QPair<QString, BoxAnswer>> m_expected;
    QList<std::optional<QString>> m_files;
};

class FakeScreens final : public Screens {
  public:
    void show(Screen screen) override;
    void bringForward(Screen screen) override { forward.append(screen); }
    void unload(Screen screen) override;
    bool isVisible(Screen screen) const override { return visible.contains(screen); }
    bool isLoaded(Screen screen) const override { return loaded.contains(screen); }

    QSet<Screen> visible, loaded;
    QList<Screen> shown, unloaded, forward;
    std::function<void(Screen)> onLoad, onUnload;
};

class FakeProgress final : public Progress {
  public:
    void show(const QString& caption) override {
        captions.append(caption);
        open = true;
    }
    void setPercent(int percent) override { percents.append(percent); }
    void close() override { open = false; }
    bool isShown() const override { return open; }
    QStringList captions;
    QList<int> percents;
    bool open = false;
};

class FakeTray final : public Tray {
  public:
    void showIcon() override { iconShown = true; }
    void removeIcon() override { iconShown = false; }
    void setState(DayState newState, const QString& tip) override {
        state = newState;
        toolTip = tip;
    }
    void notify(const QString& title, const QString& text) override {
        notices.append(title + QLatin1Char('\n') + text);
    }
    bool iconShown = false;
    DayState state = DayState::Stopped;
    QString toolTip;
    QStringList notices;
};

class FakeSound final : public Sound {
  public:
    void play(const QString& path) override { played.append(path); }
    QStringList played;
};

/// Prints into PDF files of its own.
class FakePrinter final : public Printer {
  public:
    bool choose(const QString&) override {
        ++asked;
        return chooses;
    }
    bool print(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint) override;
    bool chooses = true;
    int asked = 0;
    QStringList titles; ///< of what was printed
    QList<QByteArray> documents;
};

class FakeVolumes final : public Volumes {
  public:
    QStringList roots() const override { return {QStringLiteral("/")}; }
};

class FakeHelp final : public Help {
  public:
    void show(const QString& page) override { pages.append(page); }
    QStringList pages;
};

class FakeLauncher final : public Launcher {
  public:
    bool open(const QString& address) override {
        opened.append(address);
        return starts;
    }
    bool run(const QString& program) override {
        ran.append(program);
        return starts;
    }
    QStringList opened, ran;
    bool starts = true; ///< false: nothing can be started
};

/// Answers from a table of addresses; what isn't in it can't be reached. A quiet request waits for
/// deliver(), every other one is answered at once.
class FakeInternet final : public Internet {
  public:
    struct Reply {
        QByteArray bytes = {}; ///< the text, or what the file holds
        int error = 0;         ///< a file is then not there
        QList<InternetStatus> statuses = {};
    };
    void fetch(const InternetRequest& request, OnStatus onStatus, OnResult onResult) override;
    void cancelAll() override {
        m_waiting.clear();
        ++cancels;
    }
    void deliver();

    QHash<QString, Reply> replies; ///< by address
    QList<InternetRequest> requests;
    bool hangs = false; ///< nothing is ever answered
    int cancels = 0;

    QStringList addresses() const;

  private:
    void answer(const InternetRequest& request, const OnStatus& onStatus, const OnResult& onResult);
    QList<std::function<void()>> m_waiting;
};

class FakeEvents final : public Events {
  public:
    void yield() override {
        ++yields;
        if (onYield)
            onYield();
    }
    bool waitUntil(const std::function<bool()>& condition) override;
    void pause(int milliseconds) override {
        paused += milliseconds;
        yield();
    }
    int yields = 0;
    int paused = 0; ///< milliseconds
    std::function<void()> onYield;
};

class FakeClipboard final : public Clipboard {
  public:
    void setText(const QString& newText) override { text = newText; }
    QString text;
};

class FakeTimer final : public IntervalTimer {
  public:
    void setInterval(int milliseconds) override { m_interval = milliseconds; }
    int interval() const override { return m_interval; }
    void setEnabled(bool on) override { enabled = on; }
    void fire() {
        if (enabled)
            emit Timer();
    }
    bool enabled = false;

  private:
    int m_interval = 0;
};

class FakeTimers final : public Timers {
  public:
    IntervalTimer* create(QObject* parent) override;
    QList<FakeTimer*> created;
};

class FakeProcess final : public Process {
  public:
    void end() override { ended = true; }
    bool ended = false;
};

/// A whole reset of the program's state, a temporary program folder, and fakes in all ports. The
/// file store is the real one.
class ProgramTest : public ::testing::Test {
  protected:
    ProgramTest();
    ~ProgramTest() override;

    /// The settings store in the folder, with its keys and the usual defaults.
    void installSettings();
    QString path(const QString& name) const;
    QByteArray fileBytes(const QString& name) const;
    void writeFile(const QString& name, const QByteArray& bytes) const;

    QTemporaryDir folder;
    FakeClock clock;
    FakeDialogs dialogs;
    FakeScreens screens;
    FakeProgress progress;
    FakeTray tray;
    FakeSound sound;
    FakePrinter printer;
    FakeVolumes volumes;
    FakeHelp help;
    FakeLauncher launcher;
    FakeInternet internet;
    FakeEvents events;
    FakeClipboard clipboard;
    FakeTimers timers;
    FakeProcess process;
    DiskFileStore disk;
    std::unique_ptr<SettingsStore> settings;
};

} // namespace kelvrane::testing
