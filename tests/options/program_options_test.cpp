#include "frame/globals.h"
#include "frame/recent_projects.h"
#include "frame/settings.h"
#include "options/options_model.h"
#include "options/program_options.h"
#include "platform/texts.h"
#include "records/record_tables.h"
#include "support/working_day_fixture.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timevalues/time_values.h"

#include <functional>

namespace kelvrane {
namespace {

using M = OptionsModel;

class ProgramOptions : public testing::WorkingDayTest {
  protected:
    ProgramOptions() {
        WireOptions();
        for (const OptionSwitch& row : OptionSwitches())
            RegSetKeyValue(keys::Main, row.key, QString("On"));
        LoadOptions();
    }
    static void choose(KeyedItems& panel, const QString& key, const QString& choice) {
        ASSERT_TRUE(panel.item(key).choices.contains(choice)) << choice.toStdString();
        panel.choose(key, int(panel.item(key).choices.indexOf(choice)));
    }
    static QString stored(const QString& name, const QString& key = keys::Main) {
        return StripAtNull(RegQueryValue(key, name));
    }
};

TEST_F(ProgramOptions, EachControlWritesItsKeyAndItsGlobalAtOnce) {
    struct Row {
        OptionPanel panel;
        const char* row;
        const char* choice; ///< null: a click
        const QString& key;
        const char* name;
        SettingValue stored;
        std::function<QString()> global = {};
    };
    const auto text = [](QString Globals::*option) { return [=] { return globals.*option; }; };
    const auto number = [](Int16 Globals::*option) {
        return [=] { return QString::number(globals.*option); };
    };
    const auto start = text(&Globals::StartWorkTime);
    const auto stop = text(&Globals::StopWorkTime);
    const auto endDay = number(&Globals::EndOfDayTimeInterval);
    const auto intraDay = number(&Globals::AutoDayReminderValue);
    const QString& main = keys::Main;
    const QString& sheet = keys::SpreadSheetInfo;
    const Row rows[] = {
        // From no time at all, as the lists are gone through.
        {&M::smuiAutoStartTime, "HOUR", "9", main, "StartWorkTime", "9: ", start},
        {&M::smuiAutoStartTime, "MINUTE", "0", main, "StartWorkTime", "9:0 ", start},
        {&M::smuiAutoStartTime, "AMPM", "AM", main, "StartWorkTime", "9:0 AM", start},
        {&M::smuiEndDayReminderTime, "AMPM", "PM", main, "StopWorkTime", ": PM", stop},
        {&M::smuiEndDayReminderTime, "MINUTE", "45", main, "StopWorkTime", ":45 PM", stop},
        {&M::smuiEndDayReminderTime, "HOUR", "12", main, "StopWorkTime", "12:45 PM", stop},
        {&M::controls, "cboEndDayInterval", "45 Minutes", main, "EndOfDayTimeInterval", 45, endDay},
        {&M::controls, "cboEndDayInterval", "1 Hour", main, "EndOfDayTimeInterval", 60, endDay},
        {&M::controls, "cboIntraDayInterval", "15 Minutes", main, "AutoDayReminderValue", 15,
         intraDay},
        {&M::controls, "cboIntraDayInterval", "4 Hours", main, "AutoDayReminderValue", 240,
         intraDay},
        {&M::controls, "cboRecentProjects", "9", main, "ShowNumProjects", 9,
         number(&Globals::ShowNumProjects)},
        {&M::controls, "chkAutoStartup", nullptr, main, "AutoStartDay", "Off",
         text(&Globals::AutoStartDay)},
        {&M::controls, "chkAutoStartup", nullptr, main, "AutoStartDay", "On",
         text(&Globals::AutoStartDay)},
        {&M::controls, "chkEndDayReminder", nullptr, main, "EndDayReminder", "Off",
         text(&Globals::EndDayReminder)},
        {&M::controls, "chkUseIntraDayReminder", nullptr, main, "AutoDayReminder", "Off",
         text(&Globals::AutoDayReminder)},
        {&M::controls, "chkAutoSave", nullptr, main, "AutoSave", "Off", text(&Globals::AutoSave)},
        {&M::controls, "chkShowTips", nullptr, main, "Show Tips at Startup", "On"},
        {&M::controls, "chkShowTips", nullptr, main, "Show Tips at Startup", "Off"},
        {&M::smuiSpreadSheet, "Time Increment", "1 Hour", sheet, "TimeIncrements", "1 Hour",
         text(&Globals::TimeIncrements)},
        {&M::smuiSpreadSheet, "WEEKSTARTDAY", "Monday", sheet, "StartOfWeek", 2,
         text(&Globals::StartOfWeek)},
        {&M::smuiSpreadSheet, "WEEKSTARTDAY", "Saturday", sheet, "StartOfWeek", 7,
         text(&Globals::StartOfWeek)},
        {&M::smuiSpreadSheet, "WEEKSTARTDAY", "Sunday", sheet, "StartOfWeek", 1,
         text(&Globals::StartOfWeek)},
    };
    for (const Row& row : rows) {
        KeyedItems& panel = Options().*row.panel;
        if (row.choice)
            choose(panel, row.row, row.choice);
        else
            panel.toggle(row.row);
        EXPECT_EQ(settings->value(row.key, row.name), row.stored) << row.row << " " << row.choice;
        if (row.global)
            EXPECT_EQ(row.global(), stored(row.name, row.key)) << row.row << " " << row.choice;
    }
    EXPECT_EQ(ToMinutes(StartWorkTime), 9 * 60) << "the time rules read the single zero";
}

TEST_F(ProgramOptions, WhatWasStoredIsShownAgainWhateverItIs) {
    const QString endless(10000, 'x');
    struct Row {
        const char* name;
        SettingValue stored;
        OptionPanel panel;
        QList<std::pair<const char*, QString>> shown;
    };
    const Row rows[] = {
        {"StartWorkTime",
         "9:0 AM",
         &M::smuiAutoStartTime,
         {{"HOUR", "9"}, {"MINUTE", "0"}, {"AMPM", "AM"}}},
        {"StartWorkTime", "8:05 AM", &M::smuiAutoStartTime, {{"HOUR", "8"}, {"MINUTE", "05"}}},
        {"StartWorkTime", "", &M::smuiAutoStartTime, {{"HOUR", ""}, {"MINUTE", ""}, {"AMPM", ""}}},
        {"StopWorkTime",
         "25:99 XM",
         &M::smuiEndDayReminderTime,
         {{"HOUR", "25"}, {"MINUTE", "99"}, {"AMPM", "XM"}}},
        {"StopWorkTime", "5", &M::smuiEndDayReminderTime, {{"HOUR", ""}, {"MINUTE", ""}}},
        {"StopWorkTime",
         endless,
         &M::smuiEndDayReminderTime,
         {{"HOUR", endless.chopped(3)}, {"AMPM", "xx"}}},
        {"AutoDayReminderValue", 120, &M::controls, {{"cboIntraDayInterval", "2 Hours"}}},
        {"AutoDayReminderValue", 60, &M::controls, {{"cboIntraDayInterval", "1 Hour"}}},
        {"AutoDayReminderValue", 90, &M::controls, {{"cboIntraDayInterval", "1.5 Hours"}}},
        {"EndOfDayTimeInterval", 45, &M::controls, {{"cboEndDayInterval", "45 Minutes"}}},
        {"EndOfDayTimeInterval", "abc", &M::controls, {{"cboEndDayInterval", "abc"}}},
        {"EndOfDayTimeInterval", "1e999", &M::controls, {{"cboEndDayInterval", "1e999"}}},
        {"AutoSave", "maybe", &M::controls, {}},
        {"AutoDayReminderSoundFile", endless, &M::smuiSoundFile, {{"SOUNDFILE", endless}}},
        {"AutoDayReminderSoundFile", "123", &M::smuiSoundFile, {{"SOUNDFILE", "123"}}},
        {"StartOfWeek", "7", &M::smuiSpreadSheet, {{"WEEKSTARTDAY", "Saturday"}}},
        {"StartOfWeek", 1, &M::smuiSpreadSheet, {{"WEEKSTARTDAY", "Sunday"}}},
        {"StartOfWeek", "Friday", &M::smuiSpreadSheet, {{"WEEKSTARTDAY", "Friday"}}},
        {"StartOfWeek", 8, &M::smuiSpreadSheet, {{"WEEKSTARTDAY", "8"}}},
        {"TimeIncrements", "None", &M::smuiSpreadSheet, {{"Time Increment", "None"}}},
        {"CollectionFileName", "March", &M::smuiSpreadSheet, {{"COLFILENAME", "March.col"}}},
        {"CollectionFileName", " ", &M::smuiSpreadSheet, {{"COLFILENAME", ""}}},
        {"ShowNumProjects", "many", &M::controls, {{"cboRecentProjects", "many"}}},
    };
    for (const Row& row : rows) {
        const bool sheet = row.panel == &M::smuiSpreadSheet;
        const QString& key = sheet ? keys::SpreadSheetInfo : keys::Main;
        RegSetKeyValue(key, row.name, row.stored);
        LoadOptions();
        for (const char* page : {"SPREADSHEET", "DATABASE", "MISC"})
            Options().SmartTabStrip.click(page);
        for (const auto& [item, value] : row.shown)
            EXPECT_EQ((Options().*row.panel).value(item), value) << row.name << " " << item;
        EXPECT_EQ(settings->value(key, row.name), row.stored) << row.name << ": showing writes";
    }
}

TEST_F(ProgramOptions, SwitchesTellTheirStateAndLeadTheirFields) {
    KeyedItems& controls = Options().controls;
    EXPECT_EQ(controls.item("chkEndDayReminder").caption, "End of Day Reminder - Enabled");
    EXPECT_TRUE(Options().smuiEndDayReminderTime.item("HOUR").enabled);
    controls.toggle("chkEndDayReminder");
    EXPECT_EQ(controls.item("chkEndDayReminder").caption, "End of Day Reminder - Disabled");
    EXPECT_FALSE(controls.item("cboEndDayInterval").enabled);
    EXPECT_FALSE(Options().smuiEndDayReminderTime.item("HOUR").enabled);
    EXPECT_TRUE(controls.item("cboIntraDayInterval").enabled) << "another switch's";
    Options().smuiEndDayReminderTime.choose("HOUR", 1);
    EXPECT_EQ(StopWorkTime, "5:00 PM");
}

TEST_F(ProgramOptions, ASoundFileIsStoredWhenItIsThere) {
    const QString wav = path("bell.wav");
    writeFile("bell.wav", "");
    KeyedItems& sounds = Options().smuiSoundFile;
    sounds.edit("SOUNDFILE", wav);
    EXPECT_EQ(stored("AutoDayReminderSoundFile"), wav);
    EXPECT_EQ(AutoDayReminderSoundFile, wav);

    dialogs.expect(path("gone.wav") + " is an invalid filename");
    sounds.edit("SOUNDFILE", path("gone.wav"));
    EXPECT_EQ(stored("AutoDayReminderSoundFile"), wav);
    EXPECT_EQ(AutoDayReminderSoundFile, wav);
    EXPECT_EQ(sounds.value("SOUNDFILE"), path("gone.wav")) << "it can be corrected";
    EXPECT_EQ(sounds.item("SOUNDFILE").role, TextRole::Inactive);
    Options().controls.click("cmdTestSoundFile");
    EXPECT_TRUE(sound.played.isEmpty());

    sounds.press("SOUNDFILE"); // cancelled
    EXPECT_EQ(stored("AutoDayReminderSoundFile"), wav);
    EXPECT_EQ(dialogs.fileQuestions.last().filter, "Wav Files ( *.wav ) |*.wav");
    EXPECT_EQ(dialogs.fileQuestions.last().defaultExtension, ".wav");
    dialogs.expectFile(path("other.wav"));
    sounds.press("SOUNDFILE");
    EXPECT_EQ(AutoDayReminderSoundFile, path("other.wav"));
    EXPECT_EQ(sounds.item("SOUNDFILE").role, TextRole::Value);

    writeFile("other.wav", "");
    sounds.edit("SOUNDFILE", path("other.wav"));
    Options().controls.click("cmdTestSoundFile");
    EXPECT_EQ(sound.played, QStringList{path("other.wav")});

    sounds.edit("SOUNDFILE", "");
    EXPECT_EQ(settings->value(keys::Main, "AutoDayReminderSoundFile"), SettingValue(QString()));
    EXPECT_EQ(AutoDayReminderSoundFile, "");
}

TEST_F(ProgramOptions, TheSoundFileIsInUseOnceTheOptionsHaveLoaded) {
    RegSetKeyValue(keys::Main, "AutoDayReminderSoundFile", QString("/bell.wav"));
    LoadOptions();
    EXPECT_EQ(AutoDayReminderSoundFile, "/bell.wav");
}

TEST_F(ProgramOptions, OnlyANumberOfDaysIsStored) {
    KeyedItems& sheet = Options().smuiSpreadSheet;
    sheet.edit("CALCNUMDAYS", "14");
    EXPECT_EQ(settings->value(keys::SpreadSheetInfo, "CalcNumDays"), SettingValue(14));
    for (const QString& typed :
         {QString(), QString("-3"), QString("week"), QString("99999"), QString(10000, '9')}) {
        sheet.edit("CALCNUMDAYS", typed);
        EXPECT_EQ(settings->value(keys::SpreadSheetInfo, "CalcNumDays"), SettingValue(14));
        EXPECT_EQ(sheet.value("CALCNUMDAYS"), "14") << typed.left(10).toStdString();
    }
}

TEST_F(ProgramOptions, TheTemplateComesFromItsDialog) {
    KeyedItems& sheet = Options().smuiSpreadSheet;
    RegSetKeyValue(keys::SpreadSheetInfo, "SS_Template", QString("/a.htm"));
    Options().SmartTabStrip.click("SPREADSHEET");
    sheet.press("TIMESHEETLOC"); // cancelled
    EXPECT_EQ(stored("SS_Template", keys::SpreadSheetInfo), "/a.htm");
    EXPECT_EQ(dialogs.fileQuestions.last().folder, path("data"));
    EXPECT_EQ(dialogs.fileQuestions.last().filter, "HTML Files ( *.htm ) |*.htm");
    dialogs.expectFile("/b.htm");
    sheet.press("TIMESHEETLOC");
    EXPECT_EQ(stored("SS_Template", keys::SpreadSheetInfo), "/b.htm");
    EXPECT_EQ(sheet.value("TIMESHEETLOC"), "/b.htm");
    sheet.press("COLFILENAME");
    EXPECT_EQ(screens.shown.last(), Screen::frmCollectionLoc);
}

TEST_F(ProgramOptions, TheWeekViewFollowsTheStartOfTheWeek) {
    WireControlScreen();           // its week view follows the settings
    clock.set("2026-03-04 09:00"); // a Wednesday
    choose(Options().smuiSpreadSheet, "WEEKSTARTDAY", "Friday");
    EXPECT_FALSE(Control().lvwWeekView.WeekStartDate.isValid()) << "no control screen yet";
    start("Alpha");
    passMinutes(30);
    ControlScreenLoaded = true;
    choose(Options().smuiSpreadSheet, "WEEKSTARTDAY", "Tuesday");
    EXPECT_EQ(Control().lvwWeekView.WeekStartDate, QDate(2026, 3, 3));
    EXPECT_EQ(Control().lvwWeekView.headerData(1, Qt::Horizontal, Qt::DisplayRole), "Tues");
}

TEST_F(ProgramOptions, TheRecentListTakesItsNewLength) {
    for (const char* name : {"A", "B", "C", "D"})
        AddRecentProject(name);
    choose(Options().controls, "cboRecentProjects", "2");
    AddRecentProject("E");
    EXPECT_EQ(RecentProjects, (QList<QString>{"E", "D"}));
}

TEST_F(ProgramOptions, TipsAreTickedForOnAlone) {
    for (const char* word : {"Yes", "No", "Off", "", "on"}) {
        RegSetKeyValue(keys::Main, "Show Tips at Startup", QString(word));
        Options().SmartTabStrip.click("MISC");
        EXPECT_FALSE(Options().controls.item("chkShowTips").ticked) << word;
    }
    RegSetKeyValue(keys::Main, "Show Tips at Startup", QString("On"));
    Options().SmartTabStrip.click("MISC");
    EXPECT_TRUE(Options().controls.item("chkShowTips").ticked);
}

TEST_F(ProgramOptions, ADatabaseIsStoredOnceItHasOpened) {
    const QString former = ProjectDatabase;
    RegSetKeyValue(keys::Main, "ProjectDatabase", former);
    KeyedItems& row = Options().smuiDatabase;
    Options().SmartTabStrip.click("DATABASE");
    EXPECT_EQ(row.value("DATABASELOC"), former);
    OpenProjectTable("ReadOnly");
    row.press("DATABASELOC"); // cancelled
    EXPECT_TRUE(ProjectTable) << "nothing was touched";
    EXPECT_EQ(dialogs.fileQuestions.last().filter, "Database Files ( *.mdb ) |*.mdb");
    EXPECT_EQ(dialogs.fileQuestions.last().defaultExtension, ".mdb");

    writeFile("garbage.mdb", "not a database");
    for (const QString& bad : {path("garbage.mdb"), path("absent.mdb"), path("DayInfo.mdb")}) {
        dialogs.expectFile(bad);
        dialogs.expect("This error was generated by the");
        row.press("DATABASELOC");
        EXPECT_EQ(stored("ProjectDatabase"), former);
        EXPECT_EQ(ProjectDatabase, bad) << "current in memory before it is opened";
        EXPECT_EQ(row.item("DATABASELOC").role, TextRole::Inactive);
        EXPECT_FALSE(DatabaseSelected);
        EXPECT_FALSE(ProjectTable);
    }
    EXPECT_FALSE(QFile::exists(path("absent.mdb"))) << "opening never creates";

    QFile::copy(former, path("copy.mdb"));
    for (const QString& good : {former, path("copy.mdb")}) {
        dialogs.expectFile(good);
        row.press("DATABASELOC");
        EXPECT_EQ(stored("ProjectDatabase"), good);
        EXPECT_EQ(row.item("DATABASELOC").role, TextRole::Value);
        EXPECT_TRUE(DatabaseSelected);
    }
    EXPECT_EQ(screens.unloaded.last(), Screen::frmDataBase) << "it shows the former one's rows";
    OpenProjectTable("ReadOnly");
    EXPECT_EQ(ProjectRecords().count(), 3);
}

TEST_F(ProgramOptions, TheWindowsSizeIsKeptAndOddOnesAreNot) {
    for (const char* odd : {"", "abc", "-5", "0", "1e9", "1e999"}) {
        settings->setSection("Options", "Width", odd);
        LoadOptions();
        EXPECT_EQ(Options().Width, 11130) << odd;
        EXPECT_EQ(Options().Height, 5730);
    }
    KeepOptionsSize(15, 15); // while it is sized at load
    EXPECT_EQ(Options().Width, 11130);
    Options().Loading = false;
    KeepOptionsSize(12000, 6000);
    UnloadOptions();
    EXPECT_EQ(settings->section("Options", "Width", {}), "12000");
    EXPECT_EQ(settings->section("Options", "Height", {}), "6000");
    EXPECT_TRUE(DatabaseSelectCancelled);
}

} // namespace
} // namespace kelvrane
