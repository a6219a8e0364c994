// What the modify screen holds: its rows, which entry it edits, and how far the edits got. It lives
// with the process; the edits themselves are in EditedEntry.
#pragma once

#include "frame/globals.h"
#include "platform/keyed_items.h"

#include <QString>

namespace kelvrane {

namespace modify_rows {
inline const QString Project = QStringLiteral("PROJECT NAME");
inline const QString Number = QStringLiteral("PROJECT NUMBER");
inline const QString Start = QStringLiteral("START TIME");
inline const QString Stop = QStringLiteral("STOP TIME");
inline const QString Break = QStringLiteral("BREAK TIME");
} // namespace modify_rows

struct ModifyModel {
    KeyedItems SmuiModify;
    KeyedItems buttons;    ///< cmdUpdate, cmdCancel
    QString heading;       ///< caption of the list: the project's name at opening
    Int16 EntryIndex = -1; ///< into DayEntries
    DayEntry opened;       ///< the entry as it was at opening or at the last Update
    bool dirty = false;    ///< a field was changed
    bool saved = false;    ///< the last Update went through

    /// Rows and state as a newly opened screen has them: no entry yet.
    void reset();
};

/// The one model.
ModifyModel& Modify();

} // namespace kelvrane
