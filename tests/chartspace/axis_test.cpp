#include "chartspace/axis.h"

#include <gtest/gtest.h>

namespace kelvrane::chartspace {
namespace {

struct AxisCase {
    double highest;
    int maxSteps;
    double step;
    int steps;
};

TEST(ChartAxis, TakesTheSmallestRoundStep) {
    const AxisCase cases[] = {
        {7.3, 5, 2, 4},    {8, 4, 2, 4},         {8.01, 4, 5, 2},     {1, 4, 0.25, 4},
        {0.9, 2, 0.5, 2},  {0.3, 4, 0.1, 3},     {0.02, 4, 0.005, 4}, {0.06, 4, 0.02, 3},
        {12, 6, 2, 6},     {13, 6, 5, 3},        {99, 1, 100, 1},     {0, 5, 0.25, 4},
        {2500, 5, 500, 5}, {1e300, 5, 2e299, 5}, {1e-9, 3, 5e-10, 2},
    };
    for (const AxisCase& c : cases) {
        const ValueAxis axis = RoundAxis(c.highest, c.maxSteps);
        EXPECT_NEAR(axis.step, c.step, c.step * 1e-9) << c.highest;
        EXPECT_EQ(axis.steps, c.steps) << c.highest;
    }
}

TEST(ChartAxis, AlwaysHoldsTheHighestValueWithinTheSteps) {
    for (double highest = 1e-4; highest < 1e5; highest *= 1.037)
        for (int most = 1; most <= 6; ++most) {
            const ValueAxis axis = RoundAxis(highest, most);
            EXPECT_GE(axis.top() * (1 + 1e-9), highest);
            EXPECT_LE(axis.steps, most);
        }
}

TEST(ChartAxis, NamesItsLines) {
    EXPECT_EQ(RoundAxis(1, 4).texts(), QStringList({"0 h", "0.25 h", "0.5 h", "0.75 h", "1 h"}));
    EXPECT_EQ(PercentAxis(5).texts(), QStringList({"0%", "20%", "40%", "60%", "80%", "100%"}));
    EXPECT_EQ(PercentAxis(1).texts(), QStringList({"0%", "100%"}));
}

} // namespace
} // namespace kelvrane::chartspace
