// The four time rules of the minute tick. Now is the minute of the day by the clock, 0 to 1439.
// An interval of 0 and a work time that can't be read raise an error, which the tick passes over:
// that rule then does nothing.
#pragma once

#include "platform/int16.h"

namespace kelvrane {

/// Shows the end-of-day prompt at StopWorkTime and every EndOfDayTimeInterval minutes after it,
/// while a day with entries isn't stopped. EndDayReminder isn't asked; that is wanted.
void EndOfDayRule(Int16 Now);
/// Shows the control screen at StartWorkTime from Monday to Friday when AutoStartDay is "On".
void AutoStartRule(Int16 Now);
/// Rolls the day up at each quarter of the hour but midnight when AutoSave is "On".
void AutoSaveRule(Int16 Now);
/// Shows the control screen and plays the sound every AutoDayReminderValue minutes of the clock.
void IntraDayReminderRule(Int16 Now);

} // namespace kelvrane
