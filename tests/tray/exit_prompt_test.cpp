#include "frame/globals.h"
#include "frame/settings.h"
#include "support/working_day_fixture.h"
#include "tray/exit_prompt.h"

#include <optional>

using namespace kelvrane;
using namespace kelvrane::testing;

namespace {
class ExitPromptTest : public WorkingDayTest {
  protected:
    ExitPromptTest() {
        start("Alpha"); // at 9:00 AM
        clock.set("2026-03-02 17:00");
        prompt.emplace();
    }

    QString caption(const QString& key) const { return prompt->controls.item(key).caption; }
    bool shown(const QString& key) const { return prompt->controls.item(key).visible; }
    FakeTimer& exitTimer() { return *timers.created.last(); } // the prompt's own

    void countDown(int minutes) {
        for (int minute = 0; minute < minutes; ++minute) {
            clock.advanceMinutes(1);
            exitTimer().fire();
        }
    }

    std::optional<ExitPrompt> prompt;
};
} // namespace

TEST_F(ExitPromptTest, ComesUpCountingAndTellsTheTray) {
    EXPECT_EQ(prompt->caption(), "Save Day Information");
    EXPECT_EQ(caption("Label1"), "The current time is 5:00 PM.");
    EXPECT_EQ(caption("Label2"),
              "Press cancel within 15 minutes, to cancel automatic save && quit.");
    EXPECT_EQ(exitTimer().interval(), 60000);
    EXPECT_TRUE(exitTimer().enabled);
    for (const char* key : {"cboTime0", "cboTime1", "cboTime2"})
        EXPECT_FALSE(shown(key)) << key;
    ASSERT_EQ(tray.notices.size(), 1);
    EXPECT_TRUE(tray.notices[0].contains("automatic save & quit."));
}

TEST_F(ExitPromptTest, CountsDownAndSavesTheDayWhenNobodyAnswers) {
    countDown(14);
    EXPECT_EQ(caption("Label1"), "The current time is 5:14 PM.");
    EXPECT_EQ(caption("Label2"),
              "Press cancel within 1 minutes, to cancel automatic save && quit.");
    EXPECT_TRUE(screens.unloaded.isEmpty());

    countDown(1);
    EXPECT_EQ(DayEntries[0].StopTime, "5:15 PM");
    EXPECT_FALSE(ControlScreenLoaded);
    EXPECT_TRUE(DayStopped);
    EXPECT_EQ(history().size(), 1) << "the day is in the history";
    EXPECT_TRUE(screens.unloaded.contains(Screen::frmSTM));
    EXPECT_EQ(screens.unloaded.last(), Screen::frmExit);

    const auto unloads = screens.unloaded.size();
    countDown(1);
    EXPECT_EQ(screens.unloaded.size(), unloads) << "the countdown is over";
}

TEST_F(ExitPromptTest, SaveStopsTheEntryAnewAndLeavesTheControlScreenLoaded) {
    DayEntries[0].StopTime = "4:00 PM"; // stopped by hand before
    prompt->controls.click("cmdSave");
    EXPECT_EQ(DayEntries[0].StopTime, "5:00 PM");
    EXPECT_TRUE(DayStopped);
    EXPECT_TRUE(ControlScreenLoaded);
    EXPECT_EQ(screens.unloaded.last(), Screen::frmExit);
    EXPECT_FALSE(exitTimer().enabled);
}

TEST_F(ExitPromptTest, CancelStopsTheCountdownAndLeavesTheDay) {
    countDown(3);
    prompt->controls.click("cmdCancel");
    countDown(20);
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmExit});
    EXPECT_EQ(DayEntries[0].StopTime, "");
    EXPECT_FALSE(DayStopped);
}

TEST_F(ExitPromptTest, BecomesTheEditorOfTheStopTime) {
    StopWorkTime = "12:07 PM";
    prompt->controls.click("cmdUpdate");
    EXPECT_TRUE(prompt->isEditing());
    EXPECT_EQ(prompt->caption(), "Please enter a new Value");
    EXPECT_EQ(caption("Label1"), "New Value:");
    EXPECT_EQ(caption("Label2"), "");
    EXPECT_EQ(caption("cmdCancel"), "Ok");
    for (const char* key : {"chkAsk", "cmdSave", "cmdUpdate"})
        EXPECT_FALSE(shown(key)) << key;
    for (const char* key : {"cboTime0", "cboTime1", "cboTime2"})
        EXPECT_TRUE(shown(key)) << key;
    EXPECT_EQ(prompt->controls.value("cboTime0"), "12");
    EXPECT_EQ(prompt->controls.value("cboTime1"), "07");
    EXPECT_EQ(prompt->controls.value("cboTime2"), "PM");

    prompt->controls.choose("cboTime0", 5);
    EXPECT_EQ(StopWorkTime, "6:07 PM");
    prompt->controls.choose("cboTime1", 0);
    EXPECT_EQ(StopWorkTime, "6:0 PM") << "the text as it stands";
    prompt->controls.choose("cboTime2", 0);
    EXPECT_EQ(RegQueryValue(keys::Main, "StopWorkTime"), "6:0 AM");

    prompt->controls.click("cmdCancel"); // it reads "Ok" now
    EXPECT_EQ(screens.unloaded, QList<Screen>{Screen::frmExit});
    EXPECT_FALSE(exitTimer().enabled);
}

TEST_F(ExitPromptTest, TheCountdownGoesOnBehindTheEditor) {
    prompt->controls.click("cmdUpdate");
    countDown(1);
    EXPECT_EQ(caption("Label1"), "The current time is 5:01 PM.");
    EXPECT_EQ(caption("Label2"),
              "Press cancel within 14 minutes, to cancel automatic save && quit.");
    countDown(14);
    EXPECT_EQ(DayEntries[0].StopTime, "5:15 PM");
    EXPECT_TRUE(DayStopped);
}

TEST_F(ExitPromptTest, AnUnreadableStopTimeOpensAnEmptyEditor) {
    for (const QString text : {"", "PM", "noon today"}) {
        StopWorkTime = text;
        prompt.emplace();
        prompt->controls.click("cmdUpdate");
        EXPECT_TRUE(prompt->isEditing()) << text.toStdString();
        EXPECT_EQ(prompt->controls.value("cboTime1"), "") << text.toStdString();
    }
}

TEST_F(ExitPromptTest, TheCheckSwitchesTheStoredReminder) {
    prompt->controls.toggle("chkAsk");
    EXPECT_EQ(EndDayReminder, "Off");
    EXPECT_TRUE(prompt->controls.item("chkAsk").ticked);
    prompt->controls.toggle("chkAsk");
    EXPECT_EQ(EndDayReminder, "On");
    EXPECT_EQ(RegQueryValue(keys::Main, "EndDayReminder"), "On");
}
