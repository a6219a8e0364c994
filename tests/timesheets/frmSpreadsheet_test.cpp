#include "frame/settings.h"
#include "sheet_fixture.h"
#include "timesheets/frmSpreadsheet.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/spreadsheet_screen.h"
#include "widgets/keyed_panel.h"
#include "widgets/sheet_editor.h"

#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QLabel>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace kelvrane::testing {
namespace {

class frmSpreadsheetTest : public SheetTest {
  protected:
    frmSpreadsheetTest() {
        addDay("1/6/2003", "Alpha", 60);
        listDatabases({ownLine()});
        for (const auto& [name, value] : {std::pair("SS_Template", weekTemplate()),
                                          {"SortOrder", QString("By Project")},
                                          {"CalcNumDays", QString("7")},
                                          {"StartOfWeek", QString("1")}})
            settings->setValue(keys::SpreadSheetInfo, QString::fromLatin1(name), value);
        screens.loaded.insert(Screen::frmSpreadsheet);
        form = std::make_unique<frmSpreadsheet>();
        form->show();
    }
    ~frmSpreadsheetTest() override {
        form.reset();
        UnloadSpreadsheet();
    }

    template <typename Widget>
    Widget* find(const char* name) {
        auto* widget = form->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_TRUE(widget) << name;
        return widget;
    }
    void choose(const char* menuItem) { find<QAction>(menuItem)->trigger(); }

    std::unique_ptr<frmSpreadsheet> form;
};

TEST_F(frmSpreadsheetTest, EveryItemHasItsPlaceAndMnemonicsAreSet) {
    EXPECT_EQ(form->windowTitle(), "SpreadSheet View");
    auto* menus = form->findChild<QMenuBar*>();
    QStringList titles;
    for (const QAction* action : menus->actions())
        if (action->isVisible())
            titles.append(action->text());
    EXPECT_EQ(titles, (QStringList{"&File", "&Template", "Co&llection"}));
    for (const KeyedItem& item : Sheets().SmartToolBar.items())
        if (!item.parent.isEmpty())
            EXPECT_EQ(find<QAction>(item.key.toLatin1())->text(), item.caption);
    EXPECT_TRUE(find<QLabel>("lblEmpty")->isVisible());
    EXPECT_FALSE(find<KeyedPanel>("SmartToolbox")->isVisible());
    EXPECT_EQ(find<QLabel>("STARTDATE")->text(), "1/5/2003");
    EXPECT_TRUE(find<QLabel>("TEMPLATE_NAME")->toolTip().contains("Current spreadsheet template"));
}

TEST_F(frmSpreadsheetTest, MenuCalendarAndPanelAreUsedByMouseAndKeys) {
    choose("TIMESHEET_CALCULATE");
    EXPECT_TRUE(find<SheetEditor>("ss1")->isVisible());
    choose("VIEW_TEMPLATE_SETUP");
    EXPECT_TRUE(find<KeyedPanel>("SmartToolbox")->isVisible());
    QTest::mouseClick(find<QToolButton>("ImgClose"), Qt::LeftButton);
    EXPECT_FALSE(find<KeyedPanel>("SmartToolbox")->isVisible());

    choose("VIEW_TEMPLATE_SETUP");
    auto* mark = find<QToolButton>("ImgClose");
    QTest::mousePress(mark, Qt::LeftButton, {}, QPoint(4, 4));
    // Drawn off with the button down.
    QMouseEvent move(QEvent::MouseMove, QPointF(-20, 40), mark->mapToGlobal(QPointF(-20, 40)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(mark, &move);
    EXPECT_FALSE(find<KeyedPanel>("SmartToolbox")->isVisible());

    auto* calendar = find<QCalendarWidget>("MonthView1");
    QTest::mouseClick(find<QToolButton>("STARTINGDATE"), Qt::LeftButton);
    ASSERT_TRUE(calendar->isVisible());
    EXPECT_EQ(calendar->firstDayOfWeek(), Qt::Sunday);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(calendar->isVisible());
    QTest::mouseClick(find<QToolButton>("STARTINGDATE"), Qt::LeftButton);
    emit calendar->clicked(QDate(2003, 1, 6));
    EXPECT_FALSE(calendar->isVisible());
    EXPECT_EQ(find<QLabel>("STARTDATE")->text(), "1/6/2003");

    form->close();
    EXPECT_EQ(screens.unloaded.last(), Screen::frmSpreadsheet);
}

TEST_F(frmSpreadsheetTest, NoDataTakesTheSheetsPlace) {
    Sheets().state.noData = true;
    Sheets().layOut();
    EXPECT_TRUE(find<QLabel>("lblNoData")->isVisible());
    EXPECT_EQ(find<QLabel>("lblNoData")->text(), "No Data to Display");
    EXPECT_FALSE(find<SheetEditor>("ss1")->isVisible());
}

} // namespace
} // namespace kelvrane::testing
