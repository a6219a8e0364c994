// The counter behind the running entry. It counts the ticks of a timer, not the clock: every tick
// adds its interval, and each full minute raises Minute.
#pragma once

#include "platform/int16.h"

#include <QObject>

namespace kelvrane {

class IntervalTimer;

class cTimer : public QObject {
    Q_OBJECT
  public:
    static constexpr int designInterval = 10'000; ///< milliseconds

    /// Counts the ticks of eTimer, which must outlive it and keeps its state.
    explicit cTimer(IntervalTimer* eTimer, QObject* parent = nullptr);

    void StartCounting(); ///< enables the timer
    void StopCounting();  ///< disables it
    /// Minutes and hours to 0. The seconds stay, so the first minute after a reset may be short;
    /// that is wanted.
    void ResetTimer();
    void SetTimerHourOffset(Int16 hours) { m_hours = hours; }
    void SetTimerMinuteOffset(Int16 minutes) { m_minutes = minutes; }
    /// The part below the hour; 60 while Minute is raised at the turn of the hour.
    Int16 TotalMinutes() const { return m_minutes; }
    Int16 TotalHours() const { return m_hours; }
    bool counting() const { return m_counting; }

  signals:
    void Minute(); ///< before the turn of the hour is counted
    void Hour();

  private:
    void tick();

    IntervalTimer* m_timer;
    bool m_counting = false;
    Int16 m_minutes;
    Int16 m_hours;
    qint32 m_seconds = 0;
};

} // namespace kelvrane
