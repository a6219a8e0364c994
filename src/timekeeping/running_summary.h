// The three answers that the control screen gives at a glance: what is running, since when, and how
// much today.
#pragma once

#include "platform/ports.h"

#include <QString>

namespace kelvrane {

struct RunningSummary {
    DayState state = DayState::Stopped;
    QString word;    ///< the state: "Running", "On Break", "Stopped"
    QString project; ///< "" when nothing runs
    QString total;   ///< of the running entry: "1 h 05 min"; "" when nothing runs
    QString since;   ///< start of the running entry: "9:05 AM"; "" when nothing runs
    QString today;   ///< work time of the day

    bool operator==(const RunningSummary&) const = default;
};

/// Read from the day and from Control()'s fields.
RunningSummary CurrentSummary();

/// A span text ("1 Hours 5 Minutes") in short: "1 h 05 min"; a text of another form as it stands.
QString ShortSpanText(const QString& span);

} // namespace kelvrane
