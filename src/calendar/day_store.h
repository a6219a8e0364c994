// A past day in the history, as groups of a project and its times.
//
//     HistoryFile history;
//     for (const DayGroup& group : ReadDayGroups(history, "3/1/2026", step)) ...
#pragma once

#include "platform/connection.h"
#include "platform/skip_errors.h"

#include <QList>
#include <QString>

#include <optional>

namespace kelvrane {

/// Times are span texts; work goes without the break.
struct DayGroup {
    QString project = {};
    QString number = {};
    QString breakTime = QStringLiteral("0 Minutes");
    QString workTime = QStringLiteral("0 Minutes");

    bool operator==(const DayGroup&) const = default;
};

/// The history's database, opened at its first use: a command that saves a day and reads another
/// opens it once.
class HistoryFile {
  public:
    /// Raises DatabaseOpen.
    Connection& connection();
    /// To be closed before anything that waits for the user.
    void close() { m_connection.reset(); }

  private:
    std::optional<Connection> m_connection;
};

/// The rows of a date (m/d/yyyy) in the order of their keys. A row whose times can't be read is a
/// failed step and left out. Raises DatabaseOpen, Sql.
QList<DayGroup> ReadDayGroups(HistoryFile& history, const QString& date, SkipErrors& step);

/// Writes break and total (work and break) of each group, all in one transaction.
///
/// On a day that has rows a group changes the first row of its project; one without a row is passed
/// over, and its data are lost: that is wanted. On a day that has none each group becomes a row
/// that carries its project's customer, if the project is still there; a group without project and
/// times is none. A group that can't be looked up is a failed step; the others are written. Raises
/// DatabaseOpen, Sql when the day as a whole can't be written.
void WriteDayGroups(HistoryFile& history, const QString& date, QList<DayGroup> groups,
                    SkipErrors& step);

} // namespace kelvrane
