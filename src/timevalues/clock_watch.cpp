#include "timevalues/clock_watch.h"

#include <cmath>
#include <cstdlib>

namespace kelvrane {

namespace {

constexpr qint64 jumpSeconds = 60;
constexpr qint64 sleepMilliseconds = 60'000;
constexpr qint64 daySeconds = 24 * 60 * 60;
constexpr int dayMinutes = 24 * 60;

/// Seconds of the wall clock as if there were no zones.
qint64 wallSeconds(const QDateTime& wall) {
    return wall.date().toJulianDay() * daySeconds + wall.time().msecsSinceStartOfDay() / 1000;
}

WallMoment momentAt(qint64 seconds) {
    return {.date = QDate::fromJulianDay(seconds / daySeconds),
            .minute = int(seconds % daySeconds / 60)};
}

} // namespace

WallMoment MomentOf(const QDateTime& wall) {
    return momentAt(wallSeconds(wall));
}

ClockStep StepBetween(const ClockReading& last, const ClockReading& now) {
    const qint64 passed = now.boot - last.boot;
    const QDateTime unset = last.wall.addMSecs(passed);
    // However little: back over midnight the wall is a day behind the entries.
    const bool jumped = std::abs(wallSeconds(now.wall) - wallSeconds(unset)) > jumpSeconds ||
                        now.wall.date() < last.wall.date();
    const QDateTime expected = jumped ? unset : now.wall;
    const qint64 gained = wallSeconds(unset) - wallSeconds(last.wall) - passed / 1000;
    return {.last = MomentOf(last.wall),
            .expected = MomentOf(expected),
            .now = MomentOf(now.wall),
            .zoneShift = int(std::lround(double(gained) / 60)),
            .sinceMidnight = int(expected.date().startOfDay().secsTo(expected) / 60),
            .slept = passed - (now.awake - last.awake) >= sleepMilliseconds,
            .jumped = jumped};
}

qint64 MinutesBetween(const WallMoment& from, const WallMoment& to) {
    return from.date.daysTo(to.date) * dayMinutes + to.minute - from.minute;
}

} // namespace kelvrane
