#include "timekeeping/shut_down.h"

#include "platform/ports.h"
#include "platform/skip_errors.h"
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

void ShutDownProgram() {
    SkipErrors step(QStringLiteral("ShutDownProgram"));
    step([] { SaveDayFile(); });
    EndProgram();
}

void EndProgram() {
    SkipErrors step(QStringLiteral("ShutDownProgram"));
    step([] { UnloadAllForms(); });
    step([] { ports.tray->removeIcon(); });
    step([] { ports.process->end(); });
}

} // namespace kelvrane
