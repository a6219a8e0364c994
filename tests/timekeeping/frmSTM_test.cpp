#include "frame/globals.h"
#include "frame/status_text.h"
#include "support/fakes.h"
#include "timekeeping/control_layout.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/frmSTM.h"
#include "widgets/bar_splitter.h"
#include "widgets/keyed_panel.h"
#include "widgets/running_header.h"
#include "widgets/tab_strip.h"
#include "widgets/theme.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QTableView>
#include <QTest>

using namespace kelvrane;
using namespace kelvrane::testing;

namespace {

void WireOnce() {
    static const bool wired = (WireControlScreen(), true);
    (void)wired;
}

class frmSTMTest : public ProgramTest {
  protected:
    frmSTMTest() {
        WireOnce();
        dialogs.strict = false;
        clock.set("2026-03-04 14:35");
    }

    /// A day with a running entry in memory; the load is done.
    void loadDay() {
        Control().loaded = true;
        ControlScreenLoaded = true;
        DayEntries = {{"Alpha", "1001", "9:00 AM", "10:00 AM", "0 Minutes", "1 Hours 0 Minutes"},
                      {"Beta & Co", "1002", "10:00 AM", "", "0 Minutes", "4 Hours 35 Minutes"}};
        CurrentEntryIndex = 1;
        KeyedItems& fields = Control().smuiProjectStatus;
        fields.setValue("PROJECT_NAME", "Beta & Co");
        fields.setValue("START TIME", "10:00 AM");
        fields.setValue("TOTAL TIME", "4 Hours 35 Minutes");
        for (int entry = 0; entry < 2; ++entry)
            Control().smuiBreakDown.append({.key = "ProjNum" + QString::number(entry),
                                            .caption = "Project Number",
                                            .value = DayEntries[entry].ProjectNumber});
    }

    frmSTM& screen() {
        if (!m_screen) {
            m_screen = std::make_unique<frmSTM>();
            m_screen->show();
            QCoreApplication::processEvents();
        }
        return *m_screen;
    }
    template <typename Control = QWidget>
    Control* find(const QString& name) {
        auto* control = screen().findChild<Control*>(name);
        EXPECT_TRUE(control) << name.toStdString();
        return control;
    }
    bool shows(const QString& name) { return find(name)->isVisibleTo(&screen()); }
    void click(const QString& name, const QString& within = {}) {
        QWidget* place = within.isEmpty() ? &screen() : find(within);
        auto* button = place->findChild<QAbstractButton*>(name);
        ASSERT_TRUE(button) << name.toStdString();
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
        QCoreApplication::processEvents();
    }

    std::unique_ptr<frmSTM> m_screen;
};

} // namespace

TEST_F(frmSTMTest, TheFirstTouchLoadsTheDayAndItsLayout) {
    settings->setSection("SingleTimerView", "bControlPanelShowing", "False");
    settings->setSection("SingleTimerView", "iLastMeWidth", "10500");
    EXPECT_FALSE(Control().loaded);
    EXPECT_EQ(screen().windowTitle(), "Kelvrane - Current Day Information");
    EXPECT_TRUE(Control().loaded);
    EXPECT_EQ(screen().size(), QSize(700, 393));
    EXPECT_FALSE(shows("smuiOptions"));
}

TEST_F(frmSTMTest, EveryItemOfTheTablesHasItsControl) {
    loadDay();
    for (const char* name :
         {"smuiTimeCtrl", "smuiProjectStatus", "smuiBreakDown", "smuiQuickView", "smuiOptions",
          "smuiPanel0", "smuiPanel1", "ChartSpace1", "Picture1_0", "Picture1_1", "lvwWeekView",
          "Splitter1", "Splitter2", "splitter", "StatusBar", "mnuSetData"})
        find(name);
    const QList<QPair<KeyedItems*, QString>> tables = {{&Control().smuiTimeCtrl, "smuiTimeCtrl"},
                                                       {&Control().smuiPanelLayout, "smuiPanel0"},
                                                       {&Control().smuiPanelLaunch, "smuiPanel1"}};
    for (const auto& [items, place] : tables)
        for (const KeyedItem& item : items->items())
            if (!item.key.isEmpty())
                EXPECT_TRUE(find(place)->findChild<QAbstractButton*>(item.key))
                    << item.key.toStdString();
    EXPECT_EQ(find("Picture1_0")->toolTip(), "Previous Graph Type");
    EXPECT_EQ(find("Picture1_1")->toolTip(), "Next Graph Type");
    EXPECT_EQ(find<QTableView>("lvwWeekView")->model()->columnCount(), 9);
}

TEST_F(frmSTMTest, ClicksReachTheProcedures) {
    loadDay();
    click("STOP", "smuiTimeCtrl");
    EXPECT_EQ(DayEntries[1].StopTime, "2:35 PM");
    EXPECT_TRUE(DayStopped);
    click("HELP", "smuiTimeCtrl");
    EXPECT_EQ(help.pages.size(), 1);

    find<TabStrip>("smuiOptions")->setCurrent("VIEWS");
    QCoreApplication::processEvents();
    click("DATABASE", "smuiPanel1");
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmDataBase});

    click("Picture1_0");
    EXPECT_EQ(ChartIndex, 18) << "wraps to the last type";
    click("Picture1_1");
    EXPECT_EQ(ChartIndex, 0);
}

TEST_F(frmSTMTest, TheViewsComeAndGo) {
    loadDay();
    screen();
    EXPECT_TRUE(shows("smuiBreakDown"));
    click("QUICKVIEW", "smuiPanel0");
    EXPECT_TRUE(shows("smuiQuickView"));
    EXPECT_FALSE(shows("smuiBreakDown")) << "they exclude each other";
    click("QUICKVIEW", "smuiPanel0");
    EXPECT_FALSE(shows("smuiQuickView"));
    EXPECT_EQ(find("smuiProjectStatus")->height(), find("Splitter1")->height())
        << "alone, it takes the column";
    const bool graph = shows("ChartSpace1");
    click("GRAPH", "smuiPanel0");
    EXPECT_NE(shows("ChartSpace1"), graph);
    click("CONTROLPANEL", "smuiTimeCtrl");
    EXPECT_FALSE(shows("smuiOptions"));
}

TEST_F(frmSTMTest, TheWindowGrowsForTheWeekViewAndGivesItBack) {
    loadDay();
    const int height = screen().height();
    click("WEEKVIEW", "smuiPanel0");
    EXPECT_TRUE(shows("lvwWeekView"));
    EXPECT_EQ(screen().height(), height + theme::FromTwips(WeekViewGrowth));
    click("WEEKVIEW", "smuiPanel0");
    EXPECT_FALSE(shows("lvwWeekView"));
    EXPECT_EQ(screen().height(), height);
}

TEST_F(frmSTMTest, TheLayoutFollowsTheUserAndIsKeptWhenTheCloseBoxHidesTheScreen) {
    loadDay();
    screen().resize(900, 600);
    QCoreApplication::processEvents();
    EXPECT_EQ(Control().layout.Width, 900 * 15);
    EXPECT_EQ(Control().layout.Height, 600 * 15);
    auto* bar = find<BarSplitter>("Splitter2");
    if (!shows("ChartSpace1"))
        click("GRAPH", "smuiPanel0");
    QWidget* handle = bar->handle(1);
    const int before = bar->sizes().first();
    QTest::keyClick(handle, Qt::Key_Right);
    EXPECT_EQ(bar->sizes().first(), before + 12);
    EXPECT_GT(Control().layout.Splitter2Percent, 50);

    screen().close();
    EXPECT_FALSE(screen().isVisible());
    EXPECT_EQ(settings->section("SingleTimerView", "iLastMeWidth", {}), "13500");
    EXPECT_TRUE(screens.unloaded.isEmpty()) << "closing only hides";
}

TEST_F(frmSTMTest, TheRightButtonOnARowOpensItsMenu) {
    loadDay();
    auto* panel = find<KeyedPanel>("smuiBreakDown");
    const QPoint place = panel->viewport()->mapFrom(panel, panel->rowRect("ProjNum1").center());
    QTest::mouseClick(panel->viewport(), Qt::RightButton, {}, place);
    auto* menu = find<QMenu>("mnuSetData");
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(SelectedEntryKey, "ProjNum1");
    EXPECT_EQ(Control().mnuSetData.item("mnuSetDataModifyTime").caption, "Modify Beta & Co");
    menu->close();
}

TEST_F(frmSTMTest, TheHeaderAndTheStatusBarFollowTheDay) {
    loadDay();
    const auto* header = find<RunningHeader>("runningHeader");
    EXPECT_EQ(header->summary().project, "Beta & Co");
    EXPECT_EQ(header->summary().total, "4 h 35 min");
    EXPECT_EQ(find<QLabel>("Panel2")->text(), "3/4/2026");
    EXPECT_EQ(find<QLabel>("Panel3")->text(), "2:35 PM");
    OnBreak = 1;
    SetStatusText("Beta & Co - On Break");
    QCoreApplication::processEvents();
    EXPECT_EQ(find<QLabel>("Panel1")->text(), "Beta & Co - On Break");
    EXPECT_EQ(header->summary().state, DayState::OnBreak);
}
