#include "frame/globals.h"
#include "support/working_day_fixture.h"
#include "timekeeping/frmModify.h"
#include "timekeeping/frmSelNewTime.h"
#include "timekeeping/modify_entry.h"
#include "timekeeping/modify_model.h"
#include "timekeeping/new_time.h"
#include "widgets/keyed_panel.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <memory>
#include <optional>

using namespace kelvrane;
using namespace kelvrane::testing;

namespace {

class frmModifyTest : public WorkingDayTest {
  protected:
    frmModifyTest() {
        start("Alpha");
        passMinutes(60);
        start("Beta");
        passMinutes(60);
        SelectedEntryKey = "START TIME1";
        form = std::make_unique<frmModify>();
        form->show();
        panel = form->findChild<KeyedPanel*>("SmuiModify");
    }
    ~frmModifyTest() override {
        form.reset();
        FrmModify_Unload();
    }

    void type(const char* row, const char* text) {
        QTest::mouseClick(panel->viewport(), Qt::LeftButton, {},
                          panel->viewport()->mapFrom(panel, panel->valueRect(row).center()));
        auto* editor = panel->viewport()->findChild<QLineEdit*>(row);
        ASSERT_TRUE(editor);
        editor->selectAll();
        QTest::keyClicks(editor, QString::fromLatin1(text));
    }
    void click(const char* button) {
        QTest::mouseClick(form->findChild<QPushButton*>(button), Qt::LeftButton);
    }

    std::unique_ptr<frmModify> form;
    KeyedPanel* panel = nullptr;
};

TEST_F(frmModifyTest, TypingAndUpdateByRealClicks) {
    EXPECT_EQ(form->windowTitle(), "Modify Entry");
    EXPECT_EQ(panel->heading(), "Beta");
    type("START TIME", "9:45 am"); // the editor is still open when the button is pressed
    click("cmdUpdate");
    EXPECT_EQ(DayEntries[0].StopTime, "9:45 AM");
    EXPECT_EQ(DayEntries[1].StartTime, "9:45 AM");
    EXPECT_EQ(screens.unloaded.last(), Screen::frmModify);
}

TEST_F(frmModifyTest, EscAndTheCloseBoxAsk) {
    QTest::keyClick(&*form, Qt::Key_Escape); // nothing edited
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmModify});
    type("BREAK TIME", "5 Minutes");
    dialogs.expect("Save current changes?", BoxAnswer::Cancel);
    form->close();
    EXPECT_TRUE(form->isVisible());
    dialogs.expect("Save current changes?", BoxAnswer::No);
    click("cmdCancel");
    EXPECT_EQ(screens.unloaded.size(), 2);
    EXPECT_EQ(DayEntries[1].BreakTime, "0 Minutes");
}

class frmSelNewTimeTest : public ProgramTest {
  protected:
    void open(int hours, int minutes) {
        taken.reset();
        PickNewTime({Int16(hours), Int16(minutes)}, [this](const QString& span) { taken = span; });
        form.emplace();
        form->show();
    }
    void click(const char* button) {
        QTest::mouseClick(form->findChild<QPushButton*>(button), Qt::LeftButton);
    }
    std::optional<frmSelNewTime> form;
    std::optional<QString> taken;
};

TEST_F(frmSelNewTimeTest, OkHandsTheSpanOverAndCancelNothing) {
    open(1, 30);
    auto* hours = form->findChild<QComboBox*>("cboHours");
    auto* minutes = form->findChild<QComboBox*>("cboMinutes");
    EXPECT_EQ(hours->count(), 13);
    EXPECT_EQ(minutes->count(), 60);
    EXPECT_EQ(hours->currentText() + ":" + minutes->currentText(), "1:30");
    QTest::keyClick(hours, Qt::Key_Down);
    minutes->setCurrentIndex(5);
    click("cmdOK");
    EXPECT_EQ(taken, "2 Hours 5 Minutes");
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmSelNewTime});

    open(0, 45);
    QTest::keyClick(&*form, Qt::Key_Escape);
    EXPECT_FALSE(taken);
    open(20, 0); // longer than the list reaches
    click("cmdOK");
    EXPECT_EQ(taken, "20 Hours 0 Minutes");
}

} // namespace
