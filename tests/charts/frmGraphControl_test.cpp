#include "charts/chart_fixture.h"
#include "charts/chart_types.h"
#include "charts/frmChart.h"
#include "charts/frmGraphControl.h"
#include "charts/view_sliders.h"
#include "chartspace/palette.h"
#include "widgets/chart_thumbnail.h"
#include "widgets/chart_type_list.h"
#include "widgets/tab_strip.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace kelvrane::testing {
namespace {

class frmGraphControlTest : public ChartTest {
  protected:
    frmGraphControlTest() {
        addDays();
        chart = std::make_unique<frmChart>();
        chart->show();
        screen = new frmGraphControl;
        screen->show();
        QCoreApplication::processEvents();
    }
    template <typename Control>
    Control* find(const QString& name) {
        auto* control = screen->findChild<Control*>(name);
        EXPECT_TRUE(control) << name.toStdString();
        return control;
    }
    void choose(const QString& description) {
        auto* list = find<ChartTypeList>("smuiAvailCharts");
        for (int row = 0; row < list->model()->rowCount(); ++row)
            if (const QModelIndex index = list->model()->index(row, 0);
                index.data().toString() == description) {
                list->scrollTo(index);
                QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                                  list->visualRect(index).center());
                return;
            }
        ADD_FAILURE() << "no type " << description.toStdString();
    }

    std::unique_ptr<frmChart> chart;
    frmGraphControl* screen; ///< goes with the chart's window
};

TEST_F(frmGraphControlTest, IsAToolWindowOfTheChart) {
    EXPECT_EQ(screen->parentWidget(), chart.get());
    EXPECT_EQ(screen->windowType(), Qt::Tool);
    screen->close();
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmGraphControl});
}

TEST_F(frmGraphControlTest, ATypeIsChosenByMouseAndKeyboard) {
    EXPECT_EQ(find<TabStrip>("SSTab1")->current(), setup_tabs::Type);
    find<QRadioButton>("Bar")->click();
    choose("3D Stacked Bar");
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::BarStacked3D);
    auto* list = find<ChartTypeList>("smuiAvailCharts");
    EXPECT_EQ(list->currentIndex().data().toString(), "3D Stacked Bar");
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(Charts().chart().type, chartspace::ChartType::BarStacked);
}

TEST_F(frmGraphControlTest, SlidersAndTheChartFollowEachOther) {
    choose("3D Column");
    auto* tabs = find<TabStrip>("SSTab1");
    tabs->setCurrent(setup_tabs::View3D);
    for (const ViewSlider& row : viewSliders) {
        auto* slider = find<QSlider>(QString::fromLatin1(row.name));
        EXPECT_TRUE(slider->isVisible());
        EXPECT_EQ(slider->minimum(), row.lowest);
        EXPECT_EQ(slider->maximum(), row.highest);
        EXPECT_EQ(slider->tickInterval(), 20);
        slider->setValue(row.lowest);
        QTest::keyClick(slider, Qt::Key_Right);
        QTest::keyClick(slider, Qt::Key_PageUp);
        EXPECT_EQ(Charts().chart().view.*row.value, row.lowest + 6) << row.name;
    }
    find<QPushButton>("cmdRestoreDefaults")->click();
    EXPECT_EQ(find<QSlider>("SliderLightInclination")->value(), 45);
    Charts().mnuChartType.click("mnuChartType0");
    EXPECT_EQ(tabs->current(), setup_tabs::Type) << "its page is of no use any more";
}

TEST_F(frmGraphControlTest, LegendAndTitleFollowTheirControls) {
    auto* title = find<QLineEdit>("txtTitle");
    EXPECT_FALSE(title->isEnabled());
    find<QPushButton>("cmdAddLegend")->click();
    EXPECT_EQ(find<QPushButton>("cmdAddLegend")->text(), "Remove Legend");
    find<QPushButton>("cmdAddTitle")->click();
    EXPECT_TRUE(title->isEnabled());
    QTest::keyClicks(title, "Q&A");
    EXPECT_EQ(Charts().chart().title, "Q&A");
}

TEST_F(frmGraphControlTest, EveryTypeHasAPictureOfItsOwn) {
    chartspace::projectHues.reset();
    const QColor first = chartspace::projectHues.colorOf("Alpha");
    QList<QImage> pictures;
    for (const ChartTypeRecord& record : ChartTypes) {
        const auto type = static_cast<chartspace::ChartType>(record.ChartTypeValue);
        const QImage picture = ChartThumbnail(type, {76, 50}, 2, screen->palette()).toImage();
        EXPECT_EQ(picture.size(), QSize(152, 100));
        pictures.append(picture);
    }
    for (qsizetype i = 0; i < pictures.size(); ++i)
        for (qsizetype j = 0; j < i; ++j)
            EXPECT_EQ(pictures[i] == pictures[j], ChartTypes[i].Description == "Stacked Pie" &&
                                                      ChartTypes[j].Description == "Pie")
                << i << " and " << j;
    EXPECT_EQ(chartspace::projectHues.colorOf("Alpha"), first);
    EXPECT_EQ(chartspace::projectHues.colorOf("Beta"), chartspace::HueAt(1));
}

} // namespace
} // namespace kelvrane::testing
