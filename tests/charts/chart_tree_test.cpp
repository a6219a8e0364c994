#include "charts/chart_fixture.h"
#include "charts/chart_tree.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class ChartTreeTest : public ChartTest {
  protected:
    ChartTreeTest() { addDays(); }
    void showProjects() { tree.setProjects(ReadProjectTotals(first, last), first, last); }
    const QDate first{2026, 2, 27};
    const QDate last{2026, 3, 2};
    ChartTree tree;
};

TEST_F(ChartTreeTest, ShowsProjectsDaysAndTimes) {
    showProjects();
    EXPECT_EQ(Opened(tree), (QStringList{
                                "Alpha",
                                "  Sunday, Mar 1 2026",
                                "    Work Time: 1 Hours 0 Minutes",
                                "    Break Time: 30 Minutes",
                                "  Monday, Mar 2 2026",
                                "    Work Time: 1 Hours 0 Minutes",
                                "    Break Time: 0 Minutes",
                                "Beta",
                                "  Friday, Feb 27 2026",
                                "    Work Time: 30 Minutes",
                                "    Break Time: 0 Minutes",
                                "  Sunday, Mar 1 2026",
                                "    Work Time: 1 Hours 45 Minutes",
                                "    Break Time: 15 Minutes",
                            }));
}

TEST_F(ChartTreeTest, ShowsDaysProjectsAndTimes) {
    tree.setDates(ReadDates(QDate(2026, 3, 1), last));
    EXPECT_EQ(Opened(tree), (QStringList{
                                "Sunday, Mar 1 2026",
                                "  Beta (N-Beta )",
                                "    Work Time: 1 Hours 45 Minutes",
                                "    Break Time: 15 Minutes",
                                "  Alpha (N-Alpha )",
                                "    Work Time: 1 Hours 0 Minutes",
                                "    Break Time: 30 Minutes",
                                "Monday, Mar 2 2026",
                                "  Alpha (N-Alpha )",
                                "    Work Time: 1 Hours 0 Minutes",
                                "    Break Time: 0 Minutes",
                            }));
}

TEST_F(ChartTreeTest, KeepsTheRulesOfAModelWhileItIsOpened) {
    const auto mode = QAbstractItemModelTester::FailureReportingMode::Fatal;
    showProjects();
    const QAbstractItemModelTester projects(&tree, mode); // opens all that it finds
    EXPECT_EQ(tree.rowCount(tree.index(0, 0, tree.index(1, 0))), 2);
    ChartTree days;
    days.setDates(ReadDates(first, last));
    const QAbstractItemModelTester dates(&days, mode);
    EXPECT_EQ(days.rowCount(days.index(0, 0, days.index(2, 0))), 2);
}

TEST_F(ChartTreeTest, ReadsABranchWhenItIsOpenedAndNotBefore) {
    showProjects();
    EXPECT_EQ(tree.rowCount(), 2);
    EXPECT_EQ(tree.rowCount(tree.index(0, 0)), 0);
    EXPECT_TRUE(tree.hasChildren(tree.index(0, 0)));
    addRow("2026-02-28", "Beta", 5, 0);
    tree.fetchMore(tree.index(1, 0));
    EXPECT_EQ(tree.rowCount(tree.index(1, 0)), 3);
    EXPECT_FALSE(tree.canFetchMore(tree.index(1, 0)));

    const auto key = [](const QModelIndex& index) {
        return index.data(ChartTree::KeyRole).toString();
    };
    EXPECT_EQ(key(tree.index(0, 0)), "A1");
    EXPECT_EQ(key(tree.index(1, 0)), "A2");
    EXPECT_EQ(key(tree.index(2, 0, tree.index(1, 0))), "A5");
}

TEST_F(ChartTreeTest, ABranchThatCantBeReadIsToldOnceTheViewIsThrough) {
    addRow("2026-03-02", "Gamma", 40'000, 0); // beyond a span text
    showProjects();
    QSignalSpy failed(&tree, &ChartTree::Failed);
    const QModelIndex gamma = tree.index(2, 0);
    tree.fetchMore(gamma);
    tree.fetchMore(tree.index(0, 0, gamma));
    QFile::rename(path("DayInfo.mdb"), path("away"));
    tree.fetchMore(tree.index(0, 0));
    EXPECT_EQ(failed.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(failed.count(), 2);
    EXPECT_FALSE(tree.hasChildren(tree.index(0, 0)));
}

TEST_F(ChartTreeTest, ADateThatIsNoneStandsAsItIs) {
    EXPECT_EQ(TreeDateText("2024-02-30"), "2024-02-30");
    addRow("2026-02-28T12", "Beta", 5, 0);
    tree.setDates(ReadDates(first, last));
    EXPECT_EQ(Opened(tree).mid(4, 2), (QStringList{"2026-02-28T12", "  Beta (N-Beta )"}));
}

} // namespace
} // namespace kelvrane::testing
