#include "widgets/real_ports.h"

#include "frame/error_report.h"
#include "platform/installed_files.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QEvent>
#include <QEventLoop>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLibrary>
#include <QProcess>
#include <QTimer>
#include <QUrl>

namespace kelvrane {

namespace {

class QtTimer final : public IntervalTimer {
  public:
    explicit QtTimer(QObject* owner) {
        setParent(owner);
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this,
                [this] { Guarded(QStringLiteral("Timer"), [this] { emit Timer(); }); });
    }

    void setInterval(int milliseconds) override {
        m_interval = milliseconds;
        run();
    }
    int interval() const override { return m_interval; }
    void setEnabled(bool enabled) override {
        m_enabled = enabled;
        run();
    }

  private:
    /// An interval of 0 is no ticks at all. A timer that runs as it should isn't begun anew.
    void run() {
        if (!m_enabled || m_interval <= 0)
            m_timer.stop();
        else if (!m_timer.isActive() || m_timer.interval() != m_interval)
            m_timer.start(m_interval);
    }

    QTimer m_timer;
    int m_interval = 0;
    bool m_enabled = false;
};

/// Null where the module is missing: then there is no sound.
QObject* loadPlayer() {
    using Create = QObject* (*)();
    QLibrary module(InstalledFile(QStringLiteral("kelvrane-sound.so")));
    const auto create = reinterpret_cast<Create>(module.resolve("CreateSoundPlayer"));
    return create ? create() : nullptr;
}

} // namespace

QtEvents::QtEvents() {
    if (QCoreApplication* application = QCoreApplication::instance())
        application->installEventFilter(this);
}

bool QtEvents::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Quit && watched == QCoreApplication::instance())
        m_shuttingDown = true;
    return false;
}

void QtEvents::yield() {
    QCoreApplication::processEvents();
}

bool QtEvents::waitUntil(const std::function<bool()>& condition) {
    while (!m_shuttingDown) {
        if (condition())
            return true;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return false;
}

void QtEvents::pause(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void QtEvents::shutDown() {
    m_shuttingDown = true;
    // Wakes a wait that sleeps.
    if (QCoreApplication* application = QCoreApplication::instance())
        QCoreApplication::postEvent(application, new QEvent(QEvent::None));
}

IntervalTimer* QtTimers::create(QObject* parent) {
    return new QtTimer(parent);
}

QtSound::QtSound() = default;
QtSound::~QtSound() = default;

void QtSound::play(const QString& path) {
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return;
    if (!m_player)
        m_player.reset(loadPlayer());
    if (m_player)
        QMetaObject::invokeMethod(m_player.get(), "play", Q_ARG(QString, path));
}

void QtClipboard::setText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

bool DesktopLauncher::open(const QString& address) {
    return QDesktopServices::openUrl(QUrl::fromUserInput(address));
}

bool DesktopLauncher::run(const QString& program) {
    return QProcess::startDetached(program, {}, QFileInfo(program).path());
}

void QtProcess::end() {
    m_ended = true;
    m_events->shutDown();
    QCoreApplication::exit(0);
}

} // namespace kelvrane
