// How much time the history holds for a project.
#pragma once

#include <QString>

#include <optional>

namespace kelvrane {

/// A project as the history knows it. Where several projects have the name, the number tells them
/// apart; an empty one stands for all of them.
struct BookedProject {
    QString name;
    QString number = {};
};

struct BookedTime {
    int rows = 0;
    qint64 workMinutes = 0; ///< without breaks
};

/// Sums the rows of the project over all dates. std::nullopt when the history can't be read.
std::optional<BookedTime> ReadBookedTime(const BookedProject& project);

/// "12.25 hours", two decimals at most.
QString HoursText(qint64 minutes);

} // namespace kelvrane
