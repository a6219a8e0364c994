#include "timekeeping/rename_today.h"

#include "frame/globals.h"
#include "frame/status_text.h"
#include "platform/error.h"
#include "timekeeping/break_down.h"
#include "timekeeping/control_model.h"
#include "timekeeping/modify_model.h"
#include "timekeeping/tray_state.h"
#include "timevalues/day_file.h"

#include <utility>

namespace kelvrane {

namespace {

bool renameEntry(DayEntry& entry, const RenamedProject& renamed) {
    if (entry.ProjectName != renamed.from ||
        (!renamed.number.isEmpty() && entry.ProjectNumber != renamed.number))
        return false;
    entry.ProjectName = renamed.to;
    return true;
}

/// The headings of the list, each in front of its entry's rows.
void showNames() {
    KeyedItems& list = Control().smuiBreakDown;
    QList<KeyedItem> items = list.items();
    for (qsizetype i = 0; i + 1 < items.size(); ++i) {
        const int index = BreakDownIndex(items[i + 1].key);
        if (items[i].kind == ItemKind::Heading && index >= 0 && index < DayEntries.size())
            items[i].caption = DayEntries[index].ProjectName;
    }
    list.refill(items);
}

void showRunningName(const RenamedProject& renamed) {
    if (!EntryRunning() || DayEntries[CurrentEntryIndex].ProjectName != renamed.to ||
        !StatusHeading.startsWith(renamed.from))
        return;
    StatusHeading = renamed.to + StatusHeading.mid(renamed.from.size());
    SetStatusText(StatusHeading);
    RefreshTrayState();
}

/// An open Modify screen works on copies of its entry.
void renameInModify(const RenamedProject& renamed) {
    if (!ModifyOpen)
        return;
    renameEntry(Modify().opened, renamed);
    if (!renameEntry(EditedEntry, renamed))
        return;
    KeyedItems& rows = Modify().SmuiModify;
    if (rows.contains(modify_rows::Project))
        rows.setValue(modify_rows::Project, EditedEntry.ProjectName);
}

} // namespace

void RenameTodaysEntries(const RenamedProject& renamed) {
    QList<DayEntry> day = DayEntries;
    bool any = false;
    for (DayEntry& entry : day)
        any = renameEntry(entry, renamed) || any;
    if (!any)
        return;
    const QList<DayEntry> before = std::exchange(DayEntries, day);
    SaveDayFile();
    if (DayUnsaved) {
        DayEntries = before;
        Raise(errors::PathAccess, QStringLiteral("The day could not be saved"));
    }
    showNames();
    showRunningName(renamed);
    renameInModify(renamed);
}

} // namespace kelvrane
