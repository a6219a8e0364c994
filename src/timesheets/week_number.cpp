#include "timesheets/week_number.h"

#include "platform/error.h"

namespace kelvrane {

namespace {
constexpr int daysInWeek = 7;
} // namespace

int WeekNumber(QDate date, int startOfWeek) {
    if (!date.isValid() || startOfWeek < 1 || startOfWeek > daysInWeek)
        Raise(errors::BadArgument);
    // Sunday is 0 on both sides.
    const int newYear = QDate(date.year(), 1, 1).dayOfWeek() % daysInWeek;
    const int daysBefore = (newYear - (startOfWeek - 1) + daysInWeek) % daysInWeek;
    return (date.dayOfYear() - 1 + daysBefore) / daysInWeek + 1;
}

} // namespace kelvrane
