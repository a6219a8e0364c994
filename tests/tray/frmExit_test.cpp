#include "frame/globals.h"
#include "support/fakes.h"
#include "tray/frmExit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <optional>

using namespace kelvrane;
using namespace kelvrane::testing;

namespace {
class frmExitTest : public ProgramTest {
  protected:
    frmExitTest() {
        clock.set("2026-03-02 17:00");
        form.emplace();
        form->show();
    }

    template <typename Control>
    Control* find(const QString& name) {
        auto* control = form->findChild<Control*>(name);
        EXPECT_TRUE(control) << name.toStdString();
        return control;
    }
    void click(const QString& button) {
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }
    void choose(const QString& list, const QString& text) {
        auto* box = find<QComboBox>(list);
        box->setCurrentIndex(box->findText(text));
        emit box->activated(box->currentIndex());
    }

    std::optional<frmExit> form;
};
} // namespace

TEST_F(frmExitTest, EveryControlOfThePromptIsThere) {
    EXPECT_EQ(form->windowTitle(), "Save Day Information");
    EXPECT_EQ(find<QLabel>("Label1")->text(), "The current time is 5:00 PM.");
    EXPECT_EQ(find<QLabel>("Label2")->text(),
              "Press cancel within 15 minutes, to cancel automatic save & quit.");
    for (const KeyedItem& item : form->prompt().controls.items())
        EXPECT_EQ(find<QWidget>(item.key)->isVisible(), item.visible) << item.key.toStdString();
    EXPECT_EQ(find<QPushButton>("cmdSave")->text(), "Save && Quit"); // shows one ampersand
    EXPECT_EQ(find<QPushButton>("cmdSave")->accessibleName(), "Save & Quit");
    EXPECT_TRUE(find<QPushButton>("cmdCancel")->isDefault()) << "the safe answer";
}

TEST_F(frmExitTest, EachClickReachesThePrompt) {
    QTest::mouseClick(find<QCheckBox>("chkAsk"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(EndDayReminder, "Off");
    EXPECT_TRUE(find<QCheckBox>("chkAsk")->isChecked());

    click("cmdUpdate");
    EXPECT_EQ(form->windowTitle(), "Please enter a new Value");
    EXPECT_EQ(find<QPushButton>("cmdCancel")->text(), "Ok");
    for (const KeyedItem& item : form->prompt().controls.items())
        if (item.key != "Label2") // empty
            EXPECT_EQ(find<QWidget>(item.key)->isVisible(), item.visible) << item.key.toStdString();
    EXPECT_EQ(find<QComboBox>("cboTime1")->currentText(), "00") << "between the offered steps";

    choose("cboTime0", "6");
    EXPECT_EQ(StopWorkTime, "6:00 PM");
    choose("cboTime1", "30");
    choose("cboTime2", "AM");
    EXPECT_EQ(StopWorkTime, "6:30 AM");

    click("cmdCancel");
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmExit});
}

TEST_F(frmExitTest, SaveStopsTheDay) {
    click("cmdSave");
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(screens.unloaded.last(), Screen::frmExit);
}

TEST_F(frmExitTest, EscAndTheCloseBoxAreCancel) {
    QTest::keyClick(&*form, Qt::Key_Escape);
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmExit});
    EXPECT_FALSE(DayStopped);
    form.emplace();
    form->show();
    form->close();
    EXPECT_EQ(screens.unloaded.size(), 2);
    EXPECT_FALSE(timers.created.last()->enabled);
}
