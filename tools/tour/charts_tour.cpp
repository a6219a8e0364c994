#include "charts_tour.h"

#include "app/program.h"
#include "charts/chart_screen.h"
#include "charts/chart_setup.h"
#include "charts/setup_model.h"
#include "platform/texts.h"
#include "widgets/tab_strip.h"

#include <QTreeView>

namespace kelvrane::tour {

namespace {

QString T(const char* text) {
    return QString::fromLatin1(text);
}

void press(const char* key) {
    Charts().smuiToolBar.click(T(key));
}

} // namespace

QWidget* ChartsTour::screen(Screen name) const {
    return m_program.screens().widget(name);
}

void ChartsTour::picture(const char* name, Screen which) {
    m_album.picture(T(name), screen(which));
}

void ChartsTour::openBranch(int top) {
    auto* tree = screen(Screen::frmChart)->findChild<QTreeView*>(T("TreeView1"));
    const QModelIndex branch = tree->model()->index(top, 0);
    tree->expand(branch);
    tree->expand(tree->model()->index(0, 0, branch));
    tree->setCurrentIndex(branch);
}

void ChartsTour::run() {
    ports.screens->show(Screen::frmChart);
    oneDay();
    range();
    setup();
    nothing();
    ports.screens->unload(Screen::frmChart);
}

void ChartsTour::oneDay() {
    picture("chart-first-size");
    screen(Screen::frmChart)->resize(880, 540);
    StepChartDate(ChartDate::Start, -1);
    picture("chart-day");
    press("SELSTARTDATE");
    auto* month = screen(Screen::frmChart)->findChild<QWidget*>(T("MonthView1"));
    m_album.picture(T("chart-month"), month);
    month->close();
}

void ChartsTour::range() {
    press("DAYRANGE");
    const QDate today = ports.clock->today();
    TypeChartDate(ChartDate::Start, DateText(today.addDays(-60)));
    picture("chart-range");
    press("ADDREMOVELIST");
    openBranch(1);
    picture("chart-tree-by-date");
    Charts().mnuListDisplayType.click(T("mnuListDisplayTypeByProject"));
    openBranch(1);
    picture("chart-tree-by-project");
    m_album.withBoxes({{T("chart-date-error"), T("OK")}},
                      [today] { TypeChartDate(ChartDate::End, DateText(today.addDays(-90))); });
    press("ADDREMOVELIST");
}

void ChartsTour::setup() {
    press("CHARTSETUP");
    QWidget* window = screen(Screen::frmGraphControl);
    picture("chart-setup", Screen::frmGraphControl);
    for (const char* family : {"Bar", "Pie"}) {
        ChartSetup().smuiChartType.click(T(family));
        m_album.picture(T("chart-setup-") + T(family).toLower(), window);
    }
    ChartSetup().smuiChartType.click(T("Column"));
    ChartSetup().smuiAvailCharts.click(T("3D Stacked Column"));
    ChartSetup().controls.click(T("cmdAddLegend"));
    ChartSetup().controls.click(T("cmdAddTitle"));
    ChartSetup().controls.edit(T("txtTitle"), T("Two months of work"));
    picture("chart-setup-legend-and-title", Screen::frmGraphControl);
    auto* tabs = window->findChild<TabStrip*>(T("SSTab1"));
    tabs->setCurrent(setup_tabs::View3D);
    SliderChange(T("sliderViewRotation"), 38);
    SliderChange(T("SliderViewInclination"), 24);
    picture("chart-setup-3d", Screen::frmGraphControl);
    picture("chart-solid-turned");
    tabs->setCurrent(setup_tabs::BorderFill);
    picture("chart-setup-border", Screen::frmGraphControl);
    ChartSetup().smuiAvailCharts.click(T("Stacked Column"));
    ports.screens->unload(Screen::frmGraphControl);
}

void ChartsTour::nothing() {
    press("DAYRANGE");
    TypeChartDate(ChartDate::Start, T("1/1/2000"));
    picture("chart-no-data");
}

} // namespace kelvrane::tour
