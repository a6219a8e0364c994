// The one source of the present time: the wall clock, and two clocks that nobody can set.
#pragma once

#include <QDateTime>

namespace kelvrane {

/// All clocks at one moment.
struct ClockReading {
    QDateTime wall;   ///< invalid: none was taken
    qint64 boot = 0;  ///< milliseconds, of Clock::bootTime
    qint64 awake = 0; ///< milliseconds, of Clock::awakeTime
};

class Clock {
  public:
    virtual ~Clock() = default;
    /// Local date and time.
    virtual QDateTime now() const = 0;
    /// Milliseconds since a fixed moment. Goes on while the machine sleeps, and doesn't follow a
    /// wall clock that is set or changes to summer time.
    virtual qint64 bootTime() const { return now().toMSecsSinceEpoch(); }
    /// The same, but stops while the machine sleeps.
    virtual qint64 awakeTime() const { return bootTime(); }

    QDate today() const { return now().date(); }
    QTime time() const { return now().time(); }
    ClockReading read() const { return {now(), bootTime(), awakeTime()}; }
};

class SystemClock final : public Clock {
  public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    qint64 bootTime() const override;
    qint64 awakeTime() const override;
};

} // namespace kelvrane
