// What happened between two readings of the clocks: time that really passed, a sleep of the
// machine, a change to or from summer time, a wall clock that was set.
//
// It is told in two steps. First the time passed on a clock that nobody set, from `last` to
// `expected`, summer time included; then the clock jumped, from `expected` to `now`. Without a jump
// the last two are the same.
#pragma once

#include "platform/clock.h"

#include <QDate>

namespace kelvrane {

/// A place on the wall, which may come twice or never: no offset, no zone.
struct WallMoment {
    QDate date;
    int minute = 0; ///< of the day, 0 to 1439

    bool operator==(const WallMoment&) const = default;
};

struct ClockStep {
    WallMoment last;
    WallMoment expected;
    WallMoment now;
    int zoneShift = 0;     ///< minutes that the wall gained on real time up to `expected`
    int sinceMidnight = 0; ///< minutes that really passed on the date of `expected`
    bool slept = false;    ///< a minute or more of the time passed asleep, beginning at `last`
    bool jumped = false;   ///< by more than a minute, or back to an earlier date
};

WallMoment MomentOf(const QDateTime& wall);

/// Both readings hold a wall clock.
ClockStep StepBetween(const ClockReading& last, const ClockReading& now);

/// Minutes from one moment to the other, dates included.
qint64 MinutesBetween(const WallMoment& from, const WallMoment& to);

} // namespace kelvrane
