#include "frame/unload_forms.h"

#include "platform/ports.h"
#include "platform/skip_errors.h"

namespace kelvrane {

namespace {
constexpr Screen order[] = {
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
    Screen::frmAbout, // a second time; nothing when it stayed away
    Screen::frmDebugWindow,
};
} // namespace

void UnloadAllForms() {
    SkipErrors step(QStringLiteral("UnloadAllForms"));
    for (const Screen screen : order)
        step([screen] { ports.screens->unload(screen); });
}

} // namespace kelvrane
