#include "example_tour.h"

#include "app/program.h"
#include "charts/chart_screen.h"
#include "collections/collection_location.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/texts.h"
#include "records/manager_model.h"
#include "timekeeping/control_model.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/spreadsheet_screen.h"
#include "timesheets/template_files.h"
#include "tour.h"

#include <QDir>
#include <QWidget>

#include <utility>

namespace kelvrane::tour {

namespace {

QString T(const char* text) {
    return QString::fromLatin1(text);
}

void command(const char* key) {
    Control().smuiTimeCtrl.click(T(key));
}

void option(const char* key, const char* value) {
    Sheets().SmartToolbox.edit(T(key), T(value));
}

} // namespace

ExampleTour::ExampleTour(Album& album, TourClock& clock, TourTimers& timers, QString folder)
    : m_album(album), m_clock(clock), m_timers(timers), m_folder(std::move(folder)) {}

ExampleTour::~ExampleTour() = default;

QWidget* ExampleTour::screen(Screen name) const {
    return m_program->screens().widget(name);
}

/// Small enough for a page of the help.
void ExampleTour::picture(const char* name, Screen which, QSize size) {
    screen(which)->resize(size);
    m_album.picture(T(name), screen(which));
}

void ExampleTour::run() {
    const QString before = AppPath();
    const QDateTime began = m_clock.now();
    SetAppPath(m_folder);
    m_program = std::make_unique<Program>(PortChoices{.clock = &m_clock, .timers = &m_timers});
    firstStart();
    morning();
    timesheet();
    invoices();
    chart();
    m_program.reset();
    globals = {};
    m_clock.set(began);
    SetAppPath(before);
}

void ExampleTour::firstStart() {
    m_album.withBoxes({{T("example-question"), T("Yes")}, {T("example-generated"), T("No")}},
                      [this] { m_program->start({}); });
}

/// As "More ... " does: the Database Manager, on to a record, Select.
void ExampleTour::startFromManager(int stepsOn) {
    ports.screens->show(Screen::frmDataBase);
    if (stepsOn == 0) {
        picture("example-projects", Screen::frmDataBase, {660, 520});
        Manager().smuiPanel0.toggle(T("FIND"));
        Manager().smuiFind.edit(T("FIND"), T("catalog"));
        picture("example-find", Screen::frmDataBase, {660, 520});
        Manager().smuiPanel0.toggle(T("FIND"));
    }
    for (int step = 0; step < stepsOn; ++step)
        Manager().buttons.click(T("CmdUp"));
    Manager().smuiPanel0.click(T("SELECT"));
}

void ExampleTour::morning() {
    startFromManager(0);
    m_timers.pass(40);
    command("BREAK");
    m_timers.pass(10);
    command("BREAK");
    m_timers.pass(25);
    startFromManager(1);
    m_timers.pass(30);
    command("STOP");
    constexpr QSize size(680, 600);
    screen(Screen::frmSTM)->resize(size);
    Control().smuiPanelLayout.toggle(T("WEEKVIEW"));
    picture("example-week", Screen::frmSTM, {size.width(), 720});
}

void ExampleTour::timesheet() {
    ports.screens->show(Screen::frmSpreadsheet);
    SheetDateClick(m_clock.today().addDays(-7));
    picture("example-timesheet", Screen::frmSpreadsheet, {760, 570});
}

void ExampleTour::invoices() {
    Sheets().SmartToolBar.click(T("VIEW_TEMPLATE_SETUP"));
    option("CALCNUMDAYS", "4");
    Sheets().SmartToolBar.click(T("SEL_COL_LOC"));
    CollectionPlace().smuiCollLoc.edit(T("DIRLOC"), AppPath());
    CollectionPlace().smuiCollLoc.edit(T("FILENAME"), T("Example"));
    CollectionPlace().smuiToolBar.click(T("SELECT"));
    SetDefaultTemplate(InAppPath(T(files::DataFolder)) + T("/Invoice.htm"));
    option("SORTORDER", "By Customer");
    ports.screens->unload(Screen::frmSpreadsheet);
    ports.screens->show(Screen::frmCollectionViewer);
    picture("example-invoice", Screen::frmCollectionViewer, {1000, 520});
    ports.screens->unload(Screen::frmCollectionViewer);
}

void ExampleTour::chart() {
    ports.screens->show(Screen::frmChart);
    Charts().smuiToolBar.click(T("DAYRANGE"));
    TypeChartDate(ChartDate::Start, DateText(m_clock.today().addDays(-7)));
    TypeChartDate(ChartDate::End, DateText(m_clock.today().addDays(-1)));
    picture("example-chart", Screen::frmChart, {700, 440});
    ports.screens->unload(Screen::frmChart);
}

} // namespace kelvrane::tour
