// The small picker of hours and minutes for a span of time, and who gets what was picked.
//
//     PickNewTime({1, 30}, [](const QString& span) { panel.setValue("WORK1", span); });
#pragma once

#include "platform/int16.h"
#include "platform/keyed_items.h"

#include <QString>

#include <array>
#include <functional>

namespace kelvrane {

/// cboHours with 0 to 12, cboMinutes with 0 to 59, cmdOK, cmdCancel; they live with the process.
KeyedItems& NewTimeControls();

/// Opens frmSelNewTime, modal, on the hours and minutes, and returns at once. OK hands the span
/// text ("1 Hours 30 Minutes") to take; Cancel hands over nothing. Hours above 12 stand in the list
/// as they are until others are chosen.
void PickNewTime(const std::array<Int16, 2>& hoursAndMinutes,
                 std::function<void(const QString&)> take);

} // namespace kelvrane
