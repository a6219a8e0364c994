// The hint about the program that comes up with its start, and the switch that keeps it away.
#pragma once

#include "platform/keyed_items.h"

#include <QRandomGenerator>
#include <QString>

namespace kelvrane {

struct TipState {
    TipState();
    int TipCount;
    int CurrentTip = 0; ///< 1 to TipCount; 0: none was chosen yet
    QRandomGenerator random;
    /// lblTipText, chkLoadTipsAtStartup, cmdNextTip, cmdOK
    KeyedItems controls;
};
TipState& Tip();

/// The screen's load: False, and nothing changes, where the setting is "No"; any other value, a
/// missing one included, chooses a tip. Draws are seeded from the clock.
bool LoadTip();

/// The tip at a 1-based place. Raises Subscript outside.
QString TipAt(int place);
/// Puts the current tip into lblTipText.
void DisplayCurrentTip();
/// A fresh draw: the same tip may come twice running.
void DoNextTip();

} // namespace kelvrane
