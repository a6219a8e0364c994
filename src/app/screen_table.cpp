#include "app/screen_host.h"
#include "calendar/day_calendar.h"
#include "calendar/frmDayInfo.h"
#include "charts/chart_screen.h"
#include "charts/frmChart.h"
#include "charts/frmGraphControl.h"
#include "collections/collection_viewer.h"
#include "collections/file_clash.h"
#include "collections/frmCollectionLoc.h"
#include "collections/frmCollectionViewer.h"
#include "collections/frmFileExists.h"
#include "collections/frmSelFilename.h"
#include "frame/frmDebugWindow.h"
#include "frame/trace.h"
#include "options/frmAbout.h"
#include "options/frmOptions.h"
#include "options/frmTip.h"
#include "options/program_options.h"
#include "records/database_manager.h"
#include "records/frmBrowseForCust.h"
#include "records/frmDataBase.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/frmModify.h"
#include "timekeeping/frmSTM.h"
#include "timekeeping/frmSelNewTime.h"
#include "timekeeping/modify_entry.h"
#include "timesheets/frmSSHelper.h"
#include "timesheets/frmSpreadsheet.h"
#include "timesheets/spreadsheet_screen.h"
#include "tray/frmExit.h"

namespace kelvrane {

namespace {

template <typename Window>
QWidget* Create() {
    return new Window;
}

constexpr ScreenRow table[] = {
    {Screen::frmAbout, Create<frmAbout>},
    {Screen::frmBrowseForCust, Create<frmBrowseForCust>},
    {Screen::frmChart, Create<frmChart>, UnloadChart},
    {Screen::frmCollectionLoc, Create<frmCollectionLoc>},
    {Screen::frmCollectionViewer, Create<frmCollectionViewer>, UnloadCollectionViewer},
    {Screen::frmDataBase, Create<frmDataBase>, UnloadDataBase},
    {Screen::frmDayInfo, Create<frmDayInfo>, UnloadDayInfo},
    {Screen::frmDebugWindow, Create<frmDebugWindow>, [] { Trace().clear(); }},
    {Screen::frmExit, Create<frmExit>},
    {Screen::frmFileExists, Create<frmFileExists>, UnloadFileExists},
    {Screen::frmGraphControl, Create<frmGraphControl>},
    {Screen::frmOptions, Create<frmOptions>, UnloadOptions},
    {Screen::frmSelFilename, Create<frmSelFilename>},
    {Screen::frmSelNewTime, Create<frmSelNewTime>},
    {Screen::frmModify, Create<frmModify>, FrmModify_Unload},
    {Screen::frmSSHelper, Create<frmSSHelper>},
    {Screen::frmSpreadsheet, Create<frmSpreadsheet>, UnloadSpreadsheet},
    {Screen::frmSTM, Create<frmSTM>, UnloadControlScreen},
    {Screen::frmTip, Create<frmTip>},
};

} // namespace

std::span<const ScreenRow> ScreenTable() {
    return table;
}

} // namespace kelvrane
