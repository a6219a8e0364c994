// The program's screens by name. Modules show, hide and unload them through this port and never
// hold a screen.
#pragma once

namespace kelvrane {

enum class Screen {
    frmAbout,
    frmBrowseForCust,
    frmChart,
    frmCollectionLoc,
    frmCollectionViewer,
    frmDataBase,
    frmDayInfo,
    frmDebugWindow,
    frmExit,
    frmFileExists,
    frmGraphControl,
    frmInfo,
    frmModify,
    frmOptions,
    frmProgress,
    frmSelFilename,
    frmSelNewTime,
    frmSpreadsheet,
    frmSSHelper,
    frmSTM,
    frmTip,
};

class Screens {
  public:
    virtual ~Screens() = default;
    /// Loads the screen when it isn't, and shows it without waiting.
    virtual void show(Screen screen) = 0;
    /// Raises a shown screen above the others and asks for the focus.
    virtual void bringForward(Screen screen) = 0;
    /// Runs the screen's unload and removes it. Nothing when it isn't loaded.
    virtual void unload(Screen screen) = 0;
    virtual bool isVisible(Screen screen) const = 0;
    virtual bool isLoaded(Screen screen) const = 0;
};

} // namespace kelvrane
