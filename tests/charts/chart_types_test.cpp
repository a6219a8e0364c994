#include "charts/chart_types.h"
#include "chartspace/form.h"

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

TEST(ChartTypes, HaveTheirOrderAndConstants) {
    FillChartTypes();
    FillChartTypes();
    ASSERT_EQ(ChartTypes.size(), 19);
    EXPECT_EQ(ColumnCharts.size(), 7);
    EXPECT_EQ(BarCharts.size(), 7);
    EXPECT_EQ(PieCharts.size(), 5);
    QList<int> constants;
    for (const ChartTypeRecord& record : ChartTypes)
        constants.append(record.ChartTypeValue);
    EXPECT_EQ(constants,
              QList<int>({1, 0, 2, 46, 48, 47, 49, 4, 3, 5, 50, 51, 52, 53, 18, 19, 20, 58, 59}));
    EXPECT_EQ(ChartTypes.first().Description, QStringLiteral("Stacked Column"));
    EXPECT_EQ(ChartTypes.last().Description, QStringLiteral("3D Exploding Pie"));
}

TEST(ChartTypes, DescribeWhatIsDrawn) {
    for (int i = 0; i < chartTypeCount; ++i) {
        const ChartTypeRecord& record = ChartTypeAt(i);
        const chartspace::Form& form = chartspace::FormOf(DrawnTypeAt(i));
        EXPECT_EQ(static_cast<int>(form.type), record.ChartTypeValue);
        EXPECT_EQ(form.solid, record.Is3D);
        EXPECT_EQ(record.Description.contains(QStringLiteral("3D")), record.Is3D);
        EXPECT_EQ(record.Description.contains(QStringLiteral("Exploding")), form.exploded);
        EXPECT_EQ(record.Description.contains(QStringLiteral("100")),
                  form.arrangement == chartspace::Arrangement::Percent);
    }
}

TEST(ChartTypes, ClampAStoredIndex) {
    ChartTypes.clear();
    EXPECT_EQ(ChartTypeAt(-3).ChartTypeValue, 1);
    EXPECT_EQ(ChartTypeAt(19).ChartTypeValue, 59);
}

} // namespace
} // namespace kelvrane
