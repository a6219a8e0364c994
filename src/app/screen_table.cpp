#include "app/screen_host.h"
#include "calendar/day_calendar.h"
#include "calendar/frmDayInfo.h"
#include "charts/chart_screen.h"
#include "charts/chart_setup.h"
#include "charts/frmChart.h"
#include "charts/frmGraphControl.h"
#include "collections/collection_viewer.h"
#include "collections/file_clash.h"
#include "collections/frmCollectionLoc.h"
#include "collections/frmCollectionViewer.h"
#include "collections/frmFileExists.h"
#include "collections/frmSelFilename.h"
#include "frame/frmDebugWindow.h"
#include "frame/help_topics.h"
#include "frame/trace.h"
#include "options/frmAbout.h"
#include "options/frmOptions.h"
#include "options/frmTip.h"
#include "options/program_options.h"
#include "records/database_manager.h"
#include "records/frmBrowseForCust.h"
#include "records/frmDataBase.h"
#include "records/manager_model.h"
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

template <int topic>
int Topic() {
    return topic;
}

int DataBaseTopic() {
    return Manager().state.HelpTopic;
}

constexpr ScreenRow table[] = {
    {Screen::frmAbout, Create<frmAbout>},
    {Screen::frmBrowseForCust, Create<frmBrowseForCust>, nullptr, DataBaseTopic},
    {Screen::frmChart, Create<frmChart>, UnloadChart, Topic<topics::Chart>},
    {Screen::frmCollectionLoc, Create<frmCollectionLoc>, nullptr,
     Topic<topics::CollectionLocation>},
    {Screen::frmCollectionViewer, Create<frmCollectionViewer>, UnloadCollectionViewer,
     Topic<topics::CollectionViewer>},
    {Screen::frmDataBase, Create<frmDataBase>, UnloadDataBase, DataBaseTopic},
    {Screen::frmDayInfo, Create<frmDayInfo>, UnloadDayInfo},
    {Screen::frmDebugWindow, Create<frmDebugWindow>, [] { Trace().clear(); }},
    {Screen::frmExit, Create<frmExit>, nullptr, Topic<topics::Exiting>},
    {Screen::frmFileExists, Create<frmFileExists>, UnloadFileExists, Topic<topics::Collections>},
    {Screen::frmGraphControl, Create<frmGraphControl>, nullptr, ChartSetupHelpTopic},
    {Screen::frmOptions, Create<frmOptions>, UnloadOptions, OptionsHelpTopic},
    {Screen::frmSelFilename, Create<frmSelFilename>, nullptr, Topic<topics::AddingToCollection>},
    {Screen::frmSelNewTime, Create<frmSelNewTime>, nullptr, Topic<topics::ModifyEntry>},
    {Screen::frmModify, Create<frmModify>, FrmModify_Unload, Topic<topics::ModifyEntry>},
    {Screen::frmSSHelper, Create<frmSSHelper>, nullptr, Topic<topics::SheetSetup>},
    {Screen::frmSpreadsheet, Create<frmSpreadsheet>, UnloadSpreadsheet, SpreadsheetHelpTopic},
    {Screen::frmSTM, Create<frmSTM>, UnloadControlScreen, Topic<topics::ControlScreen>},
    {Screen::frmTip, Create<frmTip>},
};

} // namespace

std::span<const ScreenRow> ScreenTable() {
    return table;
}

} // namespace kelvrane
