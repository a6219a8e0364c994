#include "timekeeping/shut_down.h"

#include "frame/error_report.h"
#include "history/roll_up.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "timekeeping/day_change.h"
#include "timevalues/day_file.h"

namespace kelvrane {

namespace {
// frmAbout stands twice; the order is part of the contract.
constexpr Screen unloadOrder[] = {
    Screen::frmAbout,
    Screen::frmBrowseForCust,
    Screen::frmChart,
    Screen::frmCollectionLoc,
    Screen::frmCollectionViewer,
    Screen::frmDataBase,
    Screen::frmDayInfo,
    Screen::frmFileExists,
    Screen::frmGraphControl,
    Screen::frmModify,
    Screen::frmOptions,
    Screen::frmProgress,
    Screen::frmSelFilename,
    Screen::frmSelNewTime,
    Screen::frmSpreadsheet,
    Screen::frmSSHelper,
    Screen::frmSTM,
    Screen::frmTip,
    Screen::frmAbout,
    Screen::frmDebugWindow,
};
} // namespace

void UnloadAllForms() {
    SkipErrors step(QStringLiteral("UnloadAllForms"));
    for (const Screen screen : unloadOrder)
        step([screen] { ports.screens->unload(screen); });
}

void SaveForEnd() {
    // A process that never loaded the day, such as a collection's viewer, has none to save, and the
    // files are perhaps being written by the one that has.
    if (!DayIsKnown())
        return;
    const QuietReports quiet; // a box that nobody closes would keep the session from ending
    SkipErrors step(QStringLiteral("ShutDownProgram"));
    FollowClock();
    step([] { SaveDayFile(); });
    step([] { AddDataToDayInfoDataBase(); });
    step([] { FinishRollUp(); });
}

void ShutDownProgram() {
    SaveForEnd();
    EndProgram();
}

void EndProgram() {
    SkipErrors step(QStringLiteral("ShutDownProgram"));
    step([] { UnloadAllForms(); });
    step([] { ports.tray->removeIcon(); });
    step([] { ports.process->end(); });
}

} // namespace kelvrane
