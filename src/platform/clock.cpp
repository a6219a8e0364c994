#include "platform/clock.h"

#include <ctime>

namespace kelvrane {

namespace {

#ifdef CLOCK_BOOTTIME
constexpr clockid_t bootClock = CLOCK_BOOTTIME;
#else
constexpr clockid_t bootClock = CLOCK_MONOTONIC; // a sleep isn't seen there
#endif

qint64 milliseconds(clockid_t clock) {
    timespec time = {};
    ::clock_gettime(clock, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

} // namespace

qint64 SystemClock::bootTime() const {
    return milliseconds(bootClock);
}

qint64 SystemClock::awakeTime() const {
    return milliseconds(CLOCK_MONOTONIC);
}

} // namespace kelvrane
