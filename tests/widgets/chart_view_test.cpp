#include "chartspace/charts_for_tests.h"
#include "widgets/chart_view.h"

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

using namespace chartspace;

TEST(ChartView, LaysOutOnlyWhatChanged) {
    ChartView view;
    view.resize(400, 260);
    const Chart chart = SampleChart(ChartType::ColumnStacked, 5);
    view.setChart(chart);
    const QImage first = view.grab().toImage();
    EXPECT_EQ(view.layoutCount(), 1);
    view.setChart(SampleChart(ChartType::ColumnStacked, 5));
    view.grab();
    view.tipAt({10, 10});
    EXPECT_EQ(view.layoutCount(), 1);

    view.setType(ChartType::Pie);
    EXPECT_EQ(view.chart().categories, chart.categories);
    EXPECT_NE(view.grab().toImage(), first);
    view.resize(300, 200);
    view.grab();
    EXPECT_EQ(view.layoutCount(), 3);
}

TEST(ChartView, FollowsThePalette) {
    ChartView view;
    view.resize(300, 200);
    view.setChart(SampleChart(ChartType::ColumnStacked, 3));
    QPalette dark = view.palette();
    dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
    dark.setColor(QPalette::Text, Qt::white);
    view.grab();
    view.setPalette(dark);
    EXPECT_EQ(view.grab().toImage().pixelColor(0, 0), QColor(0x20, 0x20, 0x20));
}

TEST(ChartView, TipsGoThroughTheFormatter) {
    ChartView view;
    view.resize(400, 260);
    view.setChart(SampleChart(ChartType::ColumnStacked, 1));
    const Scene scene(view.chart(), view.size(), ThemeOf(view.palette()), view.font());
    const QPoint onBar = scene.marks().last().outline.boundingRect().center().toPoint();
    EXPECT_EQ(view.tipAt(onBar), QStringLiteral("Break, Project 0 Value: 0.25"));
    view.setTipFormatter([](const QString& text) { return text.left(5).append(QLatin1Char('!')); });
    EXPECT_EQ(view.tipAt(onBar), QStringLiteral("Break!"));
    EXPECT_EQ(view.tipAt({1, 1}), QString()) << "beside the bars";
    view.setTipFormatter([](const QString&) { return QString(); });
    EXPECT_EQ(view.tipAt(onBar), QString());
}

TEST(ChartView, TellsItsNumbersInWords) {
    ChartView view;
    view.setChart(SampleChart(ChartType::Pie, 1));
    EXPECT_EQ(view.accessibleDescription(), QStringLiteral("Project 0: Work 1.5, Break 0.25"));
    view.setChart(SampleChart(ChartType::Pie, 0));
    EXPECT_EQ(view.accessibleDescription(), QStringLiteral("No Data"));
}

} // namespace
} // namespace kelvrane
