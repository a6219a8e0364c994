#include "timekeeping/running_summary.h"

#include "timekeeping/control_model.h"
#include "timekeeping/tray_state.h"
#include "timevalues/time_values.h"

#include <cstdlib>

namespace kelvrane {

namespace {
QString ValueOf(const KeyedItems& items, const QString& key) {
    return items.contains(key) ? items.value(key) : QString();
}

QString StateWord(DayState state) {
    switch (state) {
    case DayState::Running:
        return QStringLiteral("Running");
    case DayState::OnBreak:
        return QStringLiteral("On Break");
    case DayState::Stopped:
        break;
    }
    return QStringLiteral("Stopped");
}
} // namespace

QString ShortSpanText(const QString& span) {
    try {
        const int minutes = ToMinutes(span);
        const QString sign = minutes < 0 ? QStringLiteral("-") : QString();
        const int size = std::abs(minutes);
        if (size < 60)
            return sign + QString::number(size) + QStringLiteral(" min");
        return sign +
               QStringLiteral("%1 h %2 min").arg(size / 60).arg(size % 60, 2, 10, QLatin1Char('0'));
    } catch (const RuntimeError&) {
        return span;
    }
}

RunningSummary CurrentSummary() {
    RunningSummary summary;
    const ControlModel& control = Control();
    summary.state = CurrentDayState();
    if (summary.state != DayState::Stopped) {
        summary.project = ValueOf(control.smuiProjectStatus, QStringLiteral("PROJECT_NAME"));
        summary.total =
            ShortSpanText(ValueOf(control.smuiProjectStatus, QStringLiteral("TOTAL TIME")));
        summary.since = ValueOf(control.smuiProjectStatus, QStringLiteral("START TIME"));
    }
    summary.word = StateWord(summary.state);
    summary.today = ShortSpanText(WorkedToday());
    return summary;
}

} // namespace kelvrane
