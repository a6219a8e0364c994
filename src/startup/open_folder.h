// The program's folder holds what somebody worked on, for whom and for how much.
#pragma once

namespace kelvrane {

/// When other users of the computer can enter the program's folder, a box says so, once for each
/// folder: the settings remember it.
void ShowOpenFolder();

} // namespace kelvrane
