// What else a saved or deleted project concerns: the recent list, and the time that is booked on it
// under its name. The current record of the project table is the project in question.
#pragma once

#include "frame/recent_projects.h"

#include <QString>

#include <functional>
#include <optional>

namespace kelvrane {

struct RenamedProject {
    QString from;
    QString to;
    QString number = {}; ///< only time booked with it; "": all, no other project has the old name
};

/// Who takes part in a change of projects; the modules register here.
struct ProjectSinks {
    /// Today's entries get the new name, in memory and in the day file, or nothing is changed and
    /// the error is raised.
    std::function<void(const RenamedProject&)> renameToday;
    /// The recent list or the names of booked time may be other ones.
    std::function<void()> changed;
};
inline ProjectSinks projectSinks;

/// Name and number of the current record as the database has them; empty for a new one.
RecentProject StoredProject();

/// Asks when another project has that name. Beside the process that keeps the day nothing is
/// renamed: the time booked on it couldn't go along. False: don't save it.
bool MaySaveName(const RecentProject& before, const RecentProject& after);

/// Asks whether the time booked under the old name goes along, also where it can't be told whether
/// there is any; std::nullopt: no, or there is none.
std::optional<RenamedProject> AskBookedTime(const RecentProject& before,
                                            const RecentProject& after);
/// Renames today's entries, then the history's rows, and rolls today up; what can't be written to
/// the history now is written later. Errors are reported.
void RenameBookedTime(const RenamedProject& renamed);

/// Brings the recent list along after a save (before: what was stored, empty for a new project) or
/// a delete (after: empty): names, and numbers where several projects have the name.
void FollowInRecentList(const RecentProject& before, const RecentProject& after);

/// "12.25 hours ... are booked", for the question before a delete; "" when the history can't be
/// read.
QString BookedTimeSentence();
/// "2 projects refer to this customer."
QString CustomerUseSentence();

} // namespace kelvrane
