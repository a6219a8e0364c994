#include "timevalues/counter.h"

#include "platform/ports.h"

#include <cmath>

namespace kelvrane {

cTimer::cTimer(IntervalTimer* eTimer, QObject* parent) : QObject(parent), m_timer(eTimer) {
    connect(m_timer, &IntervalTimer::Timer, this, &cTimer::tick);
}

void cTimer::StartCounting() {
    m_counting = true;
    m_timer->setEnabled(true);
}

void cTimer::StopCounting() {
    m_counting = false;
    m_timer->setEnabled(false);
}

void cTimer::ResetTimer() {
    m_minutes = 0;
    m_hours = 0;
}

void cTimer::tick() {
    m_seconds = qint32(std::lround(m_seconds + m_timer->interval() / 1000.0));
    // Equality, not a limit: an interval that doesn't divide a minute never raises Minute.
    if (m_seconds != 60)
        return;
    m_minutes += 1;
    m_seconds = 0;
    emit Minute();
    if (m_minutes == 60) {
        m_hours += 1;
        m_minutes = 0;
        emit Hour();
    }
}

} // namespace kelvrane
