#include "calendar/calendar_fixture.h"
#include "calendar/frmDayInfo.h"
#include "timekeeping/frmSelNewTime.h"
#include "widgets/choice_popup.h"
#include "widgets/keyed_panel.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace kelvrane::testing {
namespace {

class frmDayInfoTest : public CalendarTest {
  protected:
    frmDayInfoTest() {
        screens.onUnload = [](Screen screen) {
            if (screen == Screen::frmDayInfo)
                UnloadDayInfo();
        };
        addRow("2/27/2026", "Alpha", 60, 5);
    }
    void open() {
        screens.loaded.insert(Screen::frmDayInfo);
        screen = std::make_unique<frmDayInfo>();
        screen->show();
        QCoreApplication::processEvents();
    }
    template <typename Control>
    Control* find(const QString& name) {
        auto* control = screen->findChild<Control*>(name);
        EXPECT_TRUE(control) << name.toStdString();
        return control;
    }
    /// The visible label of a day.
    QLabel* label(int day) {
        for (int index = 0; index < GridDayCount; ++index)
            if (auto* found = find<QLabel>("dateLabel" + QString::number(index));
                found->isVisible() && found->text() == DayCaption(day))
                return found;
        ADD_FAILURE() << "no label for " << day;
        return nullptr;
    }
    void clickOn(int day, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(label(day), button);
        QCoreApplication::processEvents();
    }
    void step(const QString& button) {
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }
    void chooseMenu(const QString& menu) {
        auto* popup = find<QMenu>(menu);
        ASSERT_TRUE(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    KeyedPanel* panel() { return find<KeyedPanel>("smuiDaysInfo"); }
    void clickRow(const QString& key, Qt::MouseButton button = Qt::LeftButton) {
        const QRect value = panel()->valueRect(key);
        const QPoint place(value.right() - 14, value.center().y()); // the button of a time row
        QTest::mouseClick(panel()->viewport(), button, {},
                          panel()->viewport()->mapFrom(panel(), place));
        QCoreApplication::processEvents();
    }
    bool focused(int day) { return screen->focusWidget() == label(day); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(screen->focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<frmDayInfo> screen;
};

TEST_F(frmDayInfoTest, ADayIsFoundChangedAndSavedByTheMouseAlone) {
    open();
    EXPECT_EQ(screen->windowTitle(), "Modify DayInfo Database");
    EXPECT_TRUE(find<QLabel>("lblDataStatus")->isVisible());
    EXPECT_EQ(find<QLabel>("lblDataStatus")->text(), "No data available");
    step("MonthDn");
    EXPECT_EQ(find<QLabel>("MonthYearLabel")->text(), "February 2026");
    EXPECT_EQ(find<QComboBox>("MonthList")->currentText(), "2");
    clickOn(27);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_FALSE(find<QLabel>("lblDataStatus")->isVisible());

    clickRow("WORK1");
    ASSERT_EQ(screens.shown, QList<Screen>{Screen::frmSelNewTime});
    frmSelNewTime picker;
    picker.show();
    QTest::keyClick(picker.findChild<QComboBox*>("cboHours"), Qt::Key_Down);
    QTest::mouseClick(picker.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    EXPECT_EQ(row("WORK1"), "1 Hours 55 Minutes");
    clickOn(26);
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_EQ(history(), QStringList{"Alpha|2/27/2026|120|5"});
}

TEST_F(frmDayInfoTest, ADayWithoutRowsGetsOneByTheContextMenu) {
    open();
    clickOn(2, Qt::RightButton);
    EXPECT_FALSE(find<QMenu>("mnuPopup")->isVisible()) << "today";
    clickOn(1, Qt::RightButton);
    chooseMenu("mnuPopup");
    EXPECT_EQ(Calendar().groupCount(), 1);

    clickRow("PROJECT1");
    auto* list = screen->findChild<ChoicePopup*>()->list();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_FALSE(row("PROJECT1").isEmpty());
    clickRow("PN1");
    auto* editor = screen->findChild<QLineEdit*>("PN1");
    ASSERT_TRUE(editor);
    editor->selectAll();
    QTest::keyClicks(editor, "typed");
    clickOn(3); // takes what is still being typed along
    ASSERT_EQ(history().size(), 2);
    Connection connection(path("DayInfo.mdb"));
    Recordset rows(connection, "DayInfo");
    rows.moveLast();
    EXPECT_EQ(rows.text("ProjectNumber"), "typed");
    EXPECT_EQ(rows.text("Date"), "3/1/2026");

    clickOn(1);
    clickRow("PN1", Qt::RightButton);
    chooseMenu("mnuPopup");
    EXPECT_EQ(Calendar().groupCount(), 2);
}

TEST_F(frmDayInfoTest, TheKeyboardReachesEveryDayAndCommand) {
    open();
    EXPECT_TRUE(focused(2)) << "today";
    key(Qt::Key_Left);
    EXPECT_TRUE(focused(1));
    key(Qt::Key_Up);
    key(Qt::Key_Left);
    EXPECT_TRUE(focused(1)) << "there is no day before it";
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_TRUE(focused(30));
    key(Qt::Key_PageUp);
    EXPECT_EQ(title(), "February 2026");
    EXPECT_TRUE(focused(28)) << "the month has no 30th";
    key(Qt::Key_Left);
    key(Qt::Key_Return);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(Calendar().DisplayedDate, "2/27/2026");
    EXPECT_TRUE(focused(27));
    key(Qt::Key_Left);
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(screen->focusWidget(), &menu);
    EXPECT_EQ(Calendar().DisplayedDate, "2/26/2026");
    chooseMenu("mnuPopup");
    EXPECT_EQ(Calendar().groupCount(), 1);
    key(Qt::Key_Escape);
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmDayInfo});
}

TEST_F(frmDayInfoTest, ClosingSavesTheDay) {
    open();
    step("MonthDn");
    clickOn(27);
    set("BREAK1", "10 Minutes");
    find<QMenu>("mnuFile")->actions().first()->trigger();
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmDayInfo});
    EXPECT_EQ(history(), QStringList{"Alpha|2/27/2026|65|10"});
    EXPECT_FALSE(DayCalendarOpen);
}

TEST_F(frmDayInfoTest, ADatabaseThatDisappearsLeavesTheDayAndTheScreen) {
    open();
    step("MonthDn");
    clickOn(27);
    set("BREAK1", "10 Minutes");
    QFile::rename(path("DayInfo.mdb"), path("away"));
    dialogs.expect("could not be opened");
    clickOn(26);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(row("BREAK1"), "10 Minutes");
    QFile::rename(path("away"), path("DayInfo.mdb"));
    screen->close();
    EXPECT_EQ(history(), QStringList{"Alpha|2/27/2026|65|10"});
}

} // namespace
} // namespace kelvrane::testing
