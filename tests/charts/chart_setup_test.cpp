#include "charts/chart_fixture.h"
#include "charts/chart_setup.h"
#include "charts/view_sliders.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class ChartSetupTest : public ChartTest {
  protected:
    ChartSetupTest() {
        addDays();
        LoadChart();
    }
    static QStringList shownTypes() {
        QStringList names;
        for (const KeyedItem& item : ChartSetup().smuiAvailCharts.items())
            names.append(item.ticked ? item.key + "*" : item.key);
        return names;
    }
    static QString family() {
        for (const KeyedItem& item : ChartSetup().smuiChartType.items())
            if (item.ticked)
                return item.key;
        return {};
    }
    static bool has3DPage() { return ChartSetup().SSTab1.item(setup_tabs::View3D).enabled; }
    static QString caption(const char* key) {
        return ChartSetup().controls.item(QString::fromLatin1(key)).caption;
    }
};

TEST_F(ChartSetupTest, OpensOnTheFamilyOfTheType) {
    const struct {
        const char* item;
        const char* family;
        qsizetype types;
        bool has3DPage;
    } rows[] = {{"mnuChartType0", "Column", 7, false}, {"mnuChartType3", "Column", 7, true},
                {"mnuChartType7", "Bar", 7, false},    {"mnuChartType13", "Bar", 7, true},
                {"mnuChartType14", "Pie", 5, false},   {"mnuChartType17", "Pie", 5, true}};
    for (const auto& row : rows) {
        Charts().mnuChartType.click(QString::fromLatin1(row.item));
        LoadGraphControl();
        EXPECT_EQ(family(), QString::fromLatin1(row.family)) << row.item;
        EXPECT_EQ(shownTypes().size(), row.types);
        EXPECT_TRUE(shownTypes().contains(Charts().settings.ChartTypeDesc + "*"));
        EXPECT_EQ(has3DPage(), row.has3DPage) << row.item;
    }
}

TEST_F(ChartSetupTest, AFamilyIsLookedAtAndATypeChosen) {
    LoadGraphControl();
    ChartSetup().smuiChartType.click("Pie");
    EXPECT_EQ(shownTypes(),
              (QStringList{"Pie", "Exploding Pie", "Stacked Pie", "3D Pie", "3D Exploding Pie"}));
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::ColumnStacked);
    ChartSetup().smuiAvailCharts.click("3D Pie");
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::Pie3D);
    EXPECT_EQ(Charts().settings.ChartType, 58);
    EXPECT_TRUE(shownTypes().contains("3D Pie*"));
    EXPECT_TRUE(has3DPage());

    SSTab1_Click(setup_tabs::View3D);
    QSignalSpy turned(&ChartSetup(), &SetupModel::TypePageWanted);
    ChartSetup().smuiAvailCharts.click("Pie");
    EXPECT_FALSE(has3DPage());
    EXPECT_EQ(turned.count(), 1) << "its page can't stay on top";
    Charts().mnuChartType.click("mnuChartType7");
    EXPECT_EQ(family(), "Bar") << "the chart's own menu";
}

TEST_F(ChartSetupTest, SlidersActAtOnceAndRestoreTheirOddDefault) {
    Charts().mnuChartType.click("mnuChartType4");
    LoadGraphControl();
    for (const ViewSlider& slider : viewSliders) {
        SliderChange(QString::fromLatin1(slider.name), slider.highest);
        EXPECT_EQ(Charts().chart().view.*slider.value, slider.highest) << slider.name;
        SliderChange(QString::fromLatin1(slider.name), slider.lowest - 5);
        EXPECT_EQ(Charts().settings.view.*slider.value, slider.lowest) << slider.name;
    }
    QSignalSpy moved(&ChartSetup(), &SetupModel::SlidersMoved);
    ChartSetup().controls.click("cmdRestoreDefaults");
    EXPECT_EQ(moved.count(), 1);
    const chartspace::View3D wanted{.rotation = 20,
                                    .inclination = 15,
                                    .perspective = 20,
                                    .lightRotation = 315,
                                    .lightInclination = 45};
    EXPECT_EQ(Charts().chart().view, wanted);
    EXPECT_EQ(Charts().settings.view, wanted);
}

TEST_F(ChartSetupTest, LegendAndTitleComeAndGo) {
    LoadGraphControl();
    const auto title = [] { return Charts().chart().title; };
    EXPECT_FALSE(ChartSetup().controls.item("txtTitle").enabled);
    ChartSetup().controls.click("cmdAddLegend");
    EXPECT_EQ(caption("cmdAddLegend"), "Remove Legend");
    EXPECT_TRUE(Charts().chart().legend);
    ChartSetup().controls.click("cmdAddTitle");
    ChartSetup().controls.edit("txtTitle", "March");
    EXPECT_EQ(title(), "March");
    ChartSetup().controls.edit("txtTitle", "");
    EXPECT_EQ(title(), " ") << "a blank, not none";
    ChartSetup().controls.edit("txtTitle", "April");
    ChartSetup().controls.click("cmdAddTitle");
    EXPECT_EQ(title(), "");
    EXPECT_FALSE(ChartSetup().controls.item("txtTitle").enabled);
    ChartSetup().controls.click("cmdAddTitle");
    EXPECT_EQ(title(), "April");

    GraphControlToolBar_Click("CLOSE");
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmGraphControl});
    LoadGraphControl();
    EXPECT_EQ(caption("cmdAddLegend"), "Add Legend");
    EXPECT_TRUE(Charts().chart().legend) << "the chart keeps what was done";
    EXPECT_EQ(title(), "April");
    ChartSetup().controls.click("cmdAddLegend");
    ChartSetup().controls.click("cmdAddLegend");
    EXPECT_FALSE(Charts().chart().legend);
}

TEST_F(ChartSetupTest, HelpFollowsTheTab) {
    LoadGraphControl();
    for (const QString& tab : {setup_tabs::Type, setup_tabs::View3D, setup_tabs::BorderFill}) {
        SSTab1_Click(tab);
        ChartSetup().smuiToolBar.click("HELP");
    }
    const QString main = "Chart_Setup_Screen/Chart_Setup_Main.htm";
    EXPECT_EQ(help.pages, (QStringList{main, "Chart_Setup_Screen/Chart_Setup_3D_View.htm", main}));
}

} // namespace
} // namespace kelvrane::testing
