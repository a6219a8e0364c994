// The number of a week within its year.
#pragma once

#include <QDate>

namespace kelvrane {

/// Week 1 holds January 1, each further one begins on startOfWeek: Sunday is 1, Saturday 7. The
/// last days of December count on, to 53 or 54. Raises BadArgument for an invalid date or another
/// day.
int WeekNumber(QDate date, int startOfWeek);

} // namespace kelvrane
