// locked_history: a roll-up while another process holds the history for two seconds. Prints the
// longest stall of the event loop, beside that of an idle one, and how long after the lock went the
// rows were there. Exits 1 when a stall is over the limit or nothing was written.
#include "bench_folder.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "history/day_history.h"
#include "history/roll_up.h"
#include "quiet_ports.h"
#include "timekeeping/control_model.h"
#include "timekeeping/week_hours.h"
#include "timekeeping/working_day.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace kelvrane::bench {
namespace {

constexpr int heldFor = 2000; // milliseconds
constexpr int patience = 10'000;
constexpr double stallLimit = 50;
const QDateTime present(QDate(2026, 3, 4), QTime(12, 7));

class RealTimer final : public IntervalTimer {
  public:
    explicit RealTimer(QObject* parent) {
        setParent(parent);
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, &IntervalTimer::Timer);
    }
    void setInterval(int milliseconds) override { m_timer.setInterval(milliseconds); }
    int interval() const override { return m_timer.interval(); }
    void setEnabled(bool enabled) override { enabled ? m_timer.start() : m_timer.stop(); }

  private:
    QTimer m_timer;
};

class RealTimers final : public Timers {
  public:
    IntervalTimer* create(QObject* parent) override { return new RealTimer(parent); }
};

/// Runs events until the condition holds; the longest time in milliseconds between two beats of a
/// timer of one millisecond.
double longestStall(const std::function<bool()>& done) {
    QElapsedTimer since;
    double longest = 0;
    QTimer beat;
    QEventLoop loop;
    QObject::connect(&beat, &QTimer::timeout, &loop, [&] {
        longest = std::max(longest, double(since.nsecsElapsed()) / 1e6);
        since.restart();
        if (done())
            loop.quit();
    });
    beat.setTimerType(Qt::PreciseTimer);
    since.start();
    beat.start(1);
    loop.exec();
    return longest;
}

/// Another process that locks the database and says so through a pipe.
pid_t holdHistory(const QString& path) {
    int ready[2];
    if (::pipe(ready) != 0)
        return -1;
    const pid_t child = ::fork();
    if (child == 0) {
        {
            Connection connection(path);
            connection.execute(QStringLiteral("BEGIN EXCLUSIVE"));
            [[maybe_unused]] const auto written = ::write(ready[1], "x", 1);
            ::usleep(heldFor * 1000);
        }
        ::_exit(0);
    }
    char byte = 0;
    [[maybe_unused]] const auto got = ::read(ready[0], &byte, 1);
    ::close(ready[0]);
    ::close(ready[1]);
    return child;
}

int run() {
    QuietPorts quiet(present);
    RealTimers timers;
    ports.timers = &timers;
    QTemporaryDir folder(QDir::currentPath() + QStringLiteral("/bench-XXXXXX"));
    PrepareFolder(quiet, folder.path(), 125'000, present.date());
    SetAppPath(folder.path());
    quiet.openSettings(InAppPath(QString::fromLatin1(files::Settings)));
    StartOfWeek = QStringLiteral("2");
    TimeIncrements = QStringLiteral("15 Minutes");
    DayDate = present.date();
    DayEntries = {{QStringLiteral("Locked out"), QStringLiteral("1"), QStringLiteral("9:00 AM"),
                   QStringLiteral("10:00 AM"), QStringLiteral("0 Minutes"),
                   QStringLiteral("1 Hours 0 Minutes")}};
    SetLVWColumnHeaders();

    QElapsedTimer clock;
    clock.start();
    const double idle = longestStall([&] { return clock.elapsed() > 500; });
    const pid_t child = holdHistory(DayHistoryPath());
    clock.restart();
    QTimer::singleShot(0, [] { AddDataToDayInfoDataBase(); });
    QTimer::singleShot(100, [] { FillWeekView(); }); // what the tick reads beside it
    bool began = false;
    const double stall = longestStall([&] {
        began = began || RollUpPending();
        return (began && !RollUpPending()) || clock.elapsed() > patience;
    });
    const qint64 written = clock.elapsed();
    ::waitpid(child, nullptr, 0);
    const bool kept = stall <= stallLimit && began && !RollUpPending();
    std::printf("%-34s longest stall %6.1f ms (idle %.1f, limit %.0f); written %lld ms after the "
                "lock was taken for %d  %s\n",
                "roll-up against a locked history", stall, idle, stallLimit,
                static_cast<long long>(written), heldFor, kept ? "ok" : "OVER");
    ResetRollUp();
    globals = {};
    return kept ? 0 : 1;
}

} // namespace
} // namespace kelvrane::bench

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    return kelvrane::bench::run();
}
