#include "charts/chart_fixture.h"
#include "charts/frmChart.h"
#include "widgets/chart_view.h"
#include "widgets/month_popup.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <memory>

namespace kelvrane::testing {
namespace {

class frmChartTest : public ChartTest {
  protected:
    frmChartTest() { addDays(); }
    void open() {
        screens.loaded.insert(Screen::frmChart);
        screen = std::make_unique<frmChart>();
        screen->show();
        QCoreApplication::processEvents();
    }
    template <typename Control>
    Control* find(const char* name) {
        auto* control = screen->findChild<Control*>(QString::fromLatin1(name));
        EXPECT_TRUE(control) << name;
        return control;
    }
    void clickOn(const char* button) {
        QTest::mouseClick(find<QToolButton>(button), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    ChartView* chart() { return find<ChartView>("ChartSpace1"); }
    QTreeView* tree() { return find<QTreeView>("TreeView1"); }

    std::unique_ptr<frmChart> screen;
};

TEST_F(frmChartTest, ShowsChartTreeOrLabel) {
    open();
    EXPECT_TRUE(chart()->isVisible());
    EXPECT_EQ(chart()->chart(), Charts().chart());
    EXPECT_FALSE(tree()->isVisible());
    EXPECT_FALSE(find<QLineEdit>("ENDDATE")->isVisible());
    clickOn("ADDREMOVELIST");
    EXPECT_TRUE(tree()->isVisible());
    tree()->expand(tree()->model()->index(0, 0));
    EXPECT_EQ(tree()->model()->rowCount(tree()->model()->index(0, 0)), 1) << "read on opening";

    QTest::keyClicks(find<QLineEdit>("STARTDATE"), "+");
    EXPECT_EQ(find<QLineEdit>("STARTDATE")->text(), "3/3/2026");
    EXPECT_TRUE(find<QLabel>("lblNoData")->isVisible());
    EXPECT_EQ(find<QLabel>("lblNoData")->text(), "No Data to Display");
    EXPECT_FALSE(chart()->isVisible());
    EXPECT_FALSE(tree()->isVisible());
    QTest::keyClicks(find<QLineEdit>("STARTDATE"), "-");
    EXPECT_TRUE(tree()->isVisible());
}

TEST_F(frmChartTest, DatesAreTypedAndWhatIsNoneGoes) {
    open();
    clickOn("DAYRANGE");
    auto* start = find<QLineEdit>("STARTDATE");
    auto* end = find<QLineEdit>("ENDDATE");
    EXPECT_TRUE(end->isVisible());
    start->selectAll();
    QTest::keyClicks(start, "2/27/2026\r");
    EXPECT_EQ(Charts().StartDate, QDate(2026, 2, 27));
    EXPECT_EQ(chart()->chart().categories, (QStringList{"Alpha", "Beta"}));
    end->selectAll();
    QTest::keyClicks(end, "soon\r");
    EXPECT_EQ(end->text(), "3/2/2026");
    end->selectAll();
    QTest::keyClicks(end, "3/1/2026");
    clickOn("ADDREMOVELIST"); // takes what is typed along
    EXPECT_EQ(Charts().EndDate, QDate(2026, 3, 1));
    QTest::keyClicks(end, "+");
    dialogs.expect("Ending date can't be before starting date");
    end->selectAll();
    QTest::keyClicks(end, "2/1/2026\r");
    EXPECT_EQ(end->text(), "3/2/2026");
}

TEST_F(frmChartTest, TheMonthPicksADay) {
    open();
    clickOn("SELSTARTDATE");
    auto* month = find<MonthPopup>("MonthView1");
    ASSERT_TRUE(month->isVisible());
    QTest::mouseClick(month->findChild<QToolButton*>("MonthDn"), Qt::LeftButton);
    QTest::mouseClick(month->findChild<QToolButton*>("YearDn"), Qt::LeftButton);
    QTest::mouseClick(month->findChild<QToolButton*>("YearUp"), Qt::LeftButton);
    QTest::mouseClick(month->findChild<QLabel*>("MonthView1_26"), Qt::LeftButton); // February 27
    EXPECT_FALSE(month->isVisible());
    EXPECT_EQ(find<QLineEdit>("STARTDATE")->text(), "2/27/2026");
    EXPECT_EQ(chart()->chart().categories, QStringList{"Beta"});
    clickOn("SELSTARTDATE");
    QTest::keyClick(month->focusWidget(), Qt::Key_Right);
    QTest::keyClick(month->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(find<QLineEdit>("STARTDATE")->text(), "2/28/2026");
    clickOn("SELSTARTDATE");
    QTest::keyClick(month, Qt::Key_Escape);
    EXPECT_FALSE(month->isVisible());
    EXPECT_EQ(find<QLineEdit>("STARTDATE")->text(), "2/28/2026");
}

TEST_F(frmChartTest, MenusReachTheirCommands) {
    open();
    clickOn("ADDREMOVELIST");
    find<QMenu>("mnuListDisplayType")->actions().last()->trigger();
    EXPECT_EQ(tree()->model()->index(0, 0).data().toString(), "Alpha");
    auto* types = find<QMenu>("mnuChartType");
    types->findChild<QAction*>("mnuChartType18")->trigger();
    EXPECT_EQ(chart()->chart().type, chartspace::ChartType::PieExploded3D);
    EXPECT_TRUE(types->findChild<QAction*>("mnuChartType18")->isChecked());
    for (QWidget* owner : {static_cast<QWidget*>(chart()), static_cast<QWidget*>(tree())}) {
        emit owner->customContextMenuRequested(QPoint(5, 5));
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        menu->close();
    }
    clickOn("CHARTSETUP");
    EXPECT_EQ(screens.shown, QList<Screen>{Screen::frmGraphControl});
}

TEST_F(frmChartTest, ThePictureIsTheWholeClientArea) {
    open();
    clickOn("ADDREMOVELIST");
    screen->resize(700, 430);
    QCoreApplication::processEvents();
    dialogs.expectFile(path("chart.bmp"));
    QTest::keySequence(screen.get(), QKeySequence::Save);
    const QImage saved(path("chart.bmp"));
    EXPECT_EQ(saved.size(), screen->size() * screen->devicePixelRatioF());
    const QImage seen = screen->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(saved.convertToFormat(QImage::Format_RGB32).copy(), seen.copy());
    QTest::keySequence(screen.get(), QKeySequence::Print);
    EXPECT_EQ(printer.documents.size(), 1);
}

TEST_F(frmChartTest, ItsSizeIsKeptAndClosingUnloads) {
    open();
    EXPECT_EQ(screen->size(), QSize(625, 513));
    screen->resize(640, 480);
    QCoreApplication::processEvents();
    EXPECT_FALSE(screen->close());
    EXPECT_EQ(screens.unloaded.first(), Screen::frmChart);
    EXPECT_EQ(settings->section("Chart", "Width", {}), "9600");
    EXPECT_EQ(settings->section("Chart", "Height", {}), "7200");
}

TEST_F(frmChartTest, TipsFollowTheControlScreensChartType) {
    open();
    const auto tip = [this] {
        for (int y = chart()->height(); y > 0; y -= 5)
            for (int x = 0; x < chart()->width(); x += 5)
                if (const QString text = chart()->tipAt({x, y}); !text.isEmpty())
                    return text;
        return QString();
    };
    EXPECT_EQ(tip(), "Work, Alpha  Value: 1 Hours 0 Minutes");
    ChartIndex = 2;
    EXPECT_EQ(tip(), "") << "the types of 100 percent have none";
    ChartIndex = 14;
    EXPECT_EQ(tip(), "") << "this one is no pie";
}

} // namespace
} // namespace kelvrane::testing
