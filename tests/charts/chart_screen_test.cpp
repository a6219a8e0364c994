#include "charts/chart_fixture.h"
#include "charts/chart_screen.h"

#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class ChartScreenTest : public ChartTest {
  protected:
    void stored(const char* key, const QString& text) {
        settings->setSection("Chart", QString::fromLatin1(key), text);
    }
    QString stored(const char* key) {
        return settings->section("Chart", QString::fromLatin1(key), "none");
    }
};

TEST_F(ChartScreenTest, OpensOnTodayWithTheRunningDayInIt) {
    addDays();
    start("Gamma");
    clock.advanceMinutes(45);
    LoadChart();
    EXPECT_EQ(charted(), (QStringList{"Alpha 1/0", "Gamma 0.75/0"}));
    EXPECT_EQ(Charts().pane(), ChartPane::Chart);
    EXPECT_FALSE(Charts().isTreeShown());
    EXPECT_FALSE(Charts().chart().legend);
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::ColumnStacked);

    QStringList keys;
    for (const KeyedItem& item : Charts().smuiToolBar.items())
        if (item.parent.isEmpty())
            keys.append(item.key);
    EXPECT_EQ(keys, (QStringList{"FILE", "CHARTSETUP", "ADDREMOVELIST", "DAYRANGE", "SELSTARTDATE",
                                 "STARTDATE", "SELENDDATE", "ENDDATE", "", "HELP"}));
    EXPECT_EQ(field("STARTDATE"), "3/2/2026");
    EXPECT_FALSE(isVisible("ENDDATE"));
    EXPECT_FALSE(isVisible("SELENDDATE"));
    press("HELP");
    EXPECT_EQ(help.pages, QStringList{"Graph_Screen/Chart_Form.htm"});
}

TEST_F(ChartScreenTest, ADayOrARangeWithoutRowsShowsNoData) {
    LoadChart();
    EXPECT_EQ(Charts().pane(), ChartPane::NoData) << "a table without rows";
    addDays();
    StepChartDate(ChartDate::Start, 1);
    press("ADDREMOVELIST");
    EXPECT_EQ(Charts().pane(), ChartPane::NoData);
    EXPECT_FALSE(Charts().isTreeShown());
    StepChartDate(ChartDate::Start, -1);
    EXPECT_EQ(Charts().pane(), ChartPane::Chart);
    EXPECT_TRUE(Charts().isTreeShown());
    EXPECT_EQ(Charts().tree.rowCount(), 1);
}

TEST_F(ChartScreenTest, ASignMovesTheOneDay) {
    addDays();
    LoadChart();
    StepChartDate(ChartDate::Start, -1);
    EXPECT_EQ(field("STARTDATE"), "3/1/2026");
    EXPECT_EQ(Charts().EndDate, QDate(2026, 3, 1));
    EXPECT_EQ(charted(), (QStringList{"Alpha 1/0.5", "Beta 1.75/0.25"}));
    TypeChartDate(ChartDate::Start, " 2/27/2026 ");
    EXPECT_EQ(charted(), QStringList{"Beta 0.5/0"});
    for (const char* typed : {"", "tomorrow", "2/30/2026", "1/1/1898", "1/1/2102"})
        TypeChartDate(ChartDate::Start, QString::fromLatin1(typed));
    EXPECT_EQ(field("STARTDATE"), "2/27/2026");
    TypeChartDate(ChartDate::Start, "12/31/2101");
    StepChartDate(ChartDate::Start, 1);
    EXPECT_EQ(field("STARTDATE"), "12/31/2101");
}

TEST_F(ChartScreenTest, ARangeSumsItsDaysAndEndsWithItsMode) {
    addDays();
    LoadChart();
    press("DAYRANGE");
    EXPECT_TRUE(isVisible("SELENDDATE"));
    StepChartDate(ChartDate::Start, -1);
    EXPECT_EQ(field("ENDDATE"), "3/2/2026");
    EXPECT_EQ(charted(), (QStringList{"Alpha 2/0.5", "Beta 1.75/0.25"}));
    press("DAYRANGE");
    EXPECT_EQ(field("ENDDATE"), "3/1/2026");
    EXPECT_EQ(charted(), (QStringList{"Alpha 1/0.5", "Beta 1.75/0.25"})) << "the day alone";
}

TEST_F(ChartScreenTest, AnEndBeforeTheStartIsRefusedOnEveryRoad) {
    addDays();
    LoadChart();
    press("DAYRANGE");
    QSignalSpy month(&Charts(), &ChartModel::MonthViewWanted);
    press("SELENDDATE");
    EXPECT_EQ(month.takeFirst().first(), "SELENDDATE");
    const auto refused = [this](const std::function<void()>& road) {
        dialogs.expect("Ending date can't be before starting date");
        road();
        EXPECT_EQ(lastBox().title, "Date Error");
        EXPECT_EQ(field("STARTDATE"), "3/2/2026");
        EXPECT_EQ(field("ENDDATE"), "3/2/2026");
    };
    refused([] { MonthView1_DateClick(QDate(2026, 3, 1)); });
    refused([] { StepChartDate(ChartDate::End, -1); });
    refused([] { TypeChartDate(ChartDate::End, "2/27/2026"); });
    refused([] { StepChartDate(ChartDate::Start, 1); });
    press("SELSTARTDATE");
    MonthView1_DateClick(QDate(2026, 2, 27));
    EXPECT_EQ(field("STARTDATE"), "2/27/2026");
    EXPECT_EQ(charted(), (QStringList{"Alpha 2/0.5", "Beta 2.25/0.25"}));
}

TEST_F(ChartScreenTest, TheTreeFollowsItsMenuAndTheDates) {
    addDays();
    LoadChart();
    press("DAYRANGE");
    TypeChartDate(ChartDate::Start, "2/27/2026");
    EXPECT_EQ(Charts().tree.rowCount(), 0) << "nobody looks at it";
    press("ADDREMOVELIST");
    EXPECT_EQ(Charts().tree.rowCount(), 3);
    Charts().mnuListDisplayType.click("mnuListDisplayTypeByProject");
    EXPECT_EQ(Charts().tree.rowCount(), 2);
    EXPECT_TRUE(Charts().mnuListDisplayType.item("mnuListDisplayTypeByProject").ticked);
    TypeChartDate(ChartDate::Start, "3/2/2026");
    EXPECT_EQ(Opened(Charts().tree).first(), "Alpha");
    EXPECT_EQ(Charts().tree.rowCount(), 1);
    Charts().mnuListDisplayType.click("mnuListDisplayTypeByDate");
    EXPECT_EQ(Opened(Charts().tree).first(), "Monday, Mar 2 2026");
}

TEST_F(ChartScreenTest, AHistoryThatIsGoneIsToldAndTheLabelsStay) {
    addDays();
    LoadChart();
    QFile::rename(path("DayInfo.mdb"), path("away"));
    dialogs.expect("The Day Information database (DayInfo.mdb) is missing.");
    StepChartDate(ChartDate::Start, -1);
    EXPECT_EQ(lastBox().title, "Database Error");
    EXPECT_TRUE(lastBox().text.contains(folder.path()));
    EXPECT_EQ(Charts().pane(), ChartPane::Recalculating);

    writeFile("DayInfo.mdb", "no database at all, but long enough to be looked at");
    dialogs.expect("FillSetSpreadSheetValuesArray");
    StepChartDate(ChartDate::Start, 1);
    QFile::remove(path("DayInfo.mdb"));
    QFile::rename(path("away"), path("DayInfo.mdb"));
    StepChartDate(ChartDate::Start, -1);
    EXPECT_EQ(Charts().pane(), ChartPane::Chart);
}

TEST_F(ChartScreenTest, WhatWasChosenIsThereNextTime) {
    addDays();
    LoadChart();
    EXPECT_EQ(Charts().settings, ChartSettings());
    press("ADDREMOVELIST");
    Charts().mnuListDisplayType.click("mnuListDisplayTypeByProject");
    Charts().mnuChartType.click("mnuChartType4");
    Charts().settings.Width = 12'000;
    const ChartSettings chosen = Charts().settings;
    screens.loaded.insert(Screen::frmChart);
    ports.screens->unload(Screen::frmChart);
    EXPECT_TRUE(screens.unloaded.contains(Screen::frmGraphControl));
    EXPECT_EQ(Charts().totals.size(), 0) << "the data go with the screen";

    EXPECT_EQ(stored("ChartType"), "48");
    EXPECT_EQ(stored("ChartTypeDesc"), "3D Stacked Column");
    EXPECT_EQ(stored("ViewList"), "True");
    EXPECT_EQ(stored("ListViewType"), "1");
    EXPECT_EQ(stored("LastLightIncl"), "15");
    EXPECT_EQ(stored("LastLightRot"), "315");
    EXPECT_EQ(stored("LastPers"), "20");
    EXPECT_EQ(stored("LastIncl"), "15");
    EXPECT_EQ(stored("LastRot"), "20");
    EXPECT_EQ(stored("Height"), "7695");
    LoadChart();
    EXPECT_EQ(Charts().settings, chosen);
    EXPECT_TRUE(Charts().isTreeShown());
    EXPECT_TRUE(Charts().mnuChartType.item("mnuChartType4").ticked);
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::ColumnStacked3D);
}

TEST_F(ChartScreenTest, SettingsOutOfPlaceAreTheDefaults) {
    for (const char* text : {"", "much", "1e300", "-32000"}) {
        for (const char* key : {"Width", "Height", "ChartType", "LastLightIncl", "LastLightRot",
                                "LastPers", "LastIncl", "LastRot", "ListViewType", "ViewList"})
            stored(key, QString::fromLatin1(text));
        stored("ChartTypeDesc", "Cake");
        EXPECT_EQ(ReadChartSettings(), ChartSettings()) << text;
    }
    stored("ChartType", "58"); // the description is another type's
    stored("LastIncl", "-90");
    EXPECT_EQ(ReadChartSettings().ChartTypeDesc, "3D Pie");
    EXPECT_EQ(ReadChartSettings().view.inclination, -90);
}

TEST_F(ChartScreenTest, LegendAndTitleAreGoneWhenTheChartIsRebuilt) {
    addDays();
    stored("LastRot", "77");
    LoadChart();
    Charts().mnuChartType.click("mnuChartType17");
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::Pie3D);
    EXPECT_EQ(Charts().chart().view.rotation, 77);
    ChartSetup().controls.click("cmdAddLegend");
    ChartSetup().controls.click("cmdAddTitle");
    ChartSetup().controls.edit("txtTitle", "Monday");
    EXPECT_TRUE(Charts().chart().legend);
    EXPECT_EQ(Charts().chart().title, "Monday");
    StepChartDate(ChartDate::Start, -1);
    EXPECT_FALSE(Charts().chart().legend);
    EXPECT_EQ(Charts().chart().title, "");
    EXPECT_EQ(ChartSetup().controls.item("cmdAddLegend").caption, "Add Legend");
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::Pie3D);
    EXPECT_EQ(Charts().chart().view.rotation, 77);
}

} // namespace
} // namespace kelvrane::testing
