// A project's booked time goes along with its new name.
#pragma once

#include <QString>

namespace kelvrane {

/// Gives the history's rows of one project another name, all of them in one transaction. With a
/// number only the rows that have it: where several projects have the name it tells them apart.
///
/// Where a date would then hold two rows of one name and number, and on the date of the open day
/// (DayDate) two of one name, they become one row with the sum of both, which is what a roll-up
/// keeps for them. To be called before the day whose entries were renamed is rolled up again: a
/// roll-up in between adds a row under the new name, and both would count until the next one.
///
/// Repeating it is harmless. Raises DatabaseOpen, and Sql when the history can't be written
/// (another program holds it): then nothing was changed.
void RenameProjectInHistory(const QString& from, const QString& to, const QString& number = {});

} // namespace kelvrane
