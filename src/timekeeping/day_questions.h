// The questions that the day asks where nobody may be there: about an entry that ran when the
// machine fell asleep over midnight, and about entries of a date that is later than the clock's.
#pragma once

#include "frame/globals.h"

#include <QtGlobal>

namespace kelvrane {

struct ClockStep;

/// The entry ended when the machine fell asleep: start it again, count the night, or leave it. The
/// night is offered only on the date of the wake, and while no other entry began.
void AskAboutSleep(const DayEntry& entry, const ClockStep& step);

/// The entries' date is later than the clock's. "The clock is right now" puts that day by under its
/// date, and today begins with the entries from firstSince (0-based) on, those begun since the
/// clock went back, and with what the last day file holds of it.
void AskAboutClock(qsizetype firstSince);
void WithdrawClockQuestion();

/// Makes both kinds known; again does no harm.
void RegisterDayQuestions();

} // namespace kelvrane
