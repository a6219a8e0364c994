#include "timekeeping/tray_state.h"

#include "frame/globals.h"
#include "platform/skip_errors.h"
#include "timevalues/time_values.h"

namespace kelvrane {

bool EntryRunning() {
    return CurrentEntryIndex >= 0 && CurrentEntryIndex < DayEntries.size() &&
           DayEntries[CurrentEntryIndex].StopTime.isEmpty();
}

int RunningIndex() {
    const bool runs = !DayEntries.isEmpty() && DayEntries.last().StopTime.isEmpty();
    return runs ? int(DayEntries.size()) - 1 : -1;
}

DayState CurrentDayState() {
    if (!EntryRunning())
        return DayState::Stopped;
    return OnBreak == 1 ? DayState::OnBreak : DayState::Running;
}

QString WorkedToday() {
    int minutes = 0;
    QString today;
    SkipErrors each(QStringLiteral("WorkedToday"));
    for (const DayEntry& entry : DayEntries)
        each([&] { minutes += ToMinutes(entry.TotalTime) - ToMinutes(entry.BreakTime); });
    each([&] { today = MinutesToText(minutes); });
    return today;
}

QString TrayToolTip() {
    QString project = QStringLiteral("No project running");
    if (EntryRunning()) {
        const DayEntry& entry = DayEntries[CurrentEntryIndex];
        project = entry.ProjectName + QStringLiteral(" - ") + entry.TotalTime;
        if (OnBreak == 1)
            project += QStringLiteral(" - On Break");
    }
    return project + QStringLiteral(". Worked today: ") + WorkedToday();
}

void RefreshTrayState() {
    if (ports.tray)
        ports.tray->setState(CurrentDayState(), TrayToolTip());
}

} // namespace kelvrane
