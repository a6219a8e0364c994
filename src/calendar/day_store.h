// A past day in the history, as groups of a project and its times.
//
//     HistoryFile history;
//     for (const DayGroup& group : ReadDayGroups(history, "3/1/2026", step)) ...
#pragma once

#include "platform/connection.h"
#include "platform/skip_errors.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace kelvrane {

/// Times are span texts; work goes without the break.
struct DayGroup {
    QString project = {};
    QString number = {};
    QString breakTime = QStringLiteral("0 Minutes");
    QString workTime = QStringLiteral("0 Minutes");
    qint64 id = 0;              ///< key of its row; 0: it has none yet
    QString storedProject = {}; ///< of that row, when it was read

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
/// failed step and left out. Raises DatabaseOpen, DatabaseLocked, Sql; DatabaseLocked also for a
/// date that a roll-up still owes rows to.
QList<DayGroup> ReadDayGroups(HistoryFile& history, const QString& date, SkipErrors& step);

/// Writes break and total (work and break) of groups that were edited, in one transaction.
///
/// On a day that has rows a group changes its own row, also where another row has the same project,
/// or where the row's project was renamed since; one without a row, or with another project than
/// its row, is passed over: filed histories rely on it. On a day that has none each group becomes a
/// row that carries its project's customer, if the project is still there; a group without project
/// and times is none. A group that can't be looked up, such as one whose row is gone, is a failed
/// step; the others are written. Raises what ReadDayGroups raises when the day as a whole can't be
/// written; nothing is written then.
void WriteDayGroups(HistoryFile& history, const QString& date, QList<DayGroup> groups,
                    SkipErrors& step);

/// The projects that several groups have, in their order.
QStringList RepeatedProjects(const QList<DayGroup>& groups);

/// Makes one row of all rows that a date has of a project, for each of the projects: the first one
/// keeps its key and number and gets the sum of break and total. All or nothing. Raises Overflow
/// for a sum that is too large, and what WriteDayGroups raises.
void JoinRows(HistoryFile& history, const QString& date, const QStringList& projects);

} // namespace kelvrane
