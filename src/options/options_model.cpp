#include "options/options_model.h"

#include "frame/help_topics.h"

namespace kelvrane {

namespace {

using M = OptionsModel;

constexpr OptionPage pages[] = {
    {"KELVRANE", "Kelvrane Options", "fraKelvrane", "TIME", topics::OptionsKelvrane},
    {"SPREADSHEET", "SpreadSheet Options", "fraSpreadSheet", "SPREADSHEET",
     topics::OptionsSpreadsheet},
    {"DATABASE", "Database Options", "fraDatabase", "DATABASE", topics::OptionsDatabase},
    {"MISC", "Misc. Options", "fraMisc", "MISC", topics::OptionsMisc},
};

constexpr char hours[] = "1;2;3;4;5;6;7;8;9;10;11;12";
constexpr char minutes[] = "0;15;30;45";
constexpr char halves[] = "AM;PM";

constexpr OptionRow rows[] = {
    {&M::smuiSelect, "", "", ItemKind::Spacer},
    {&M::smuiSelect, "CLOSE", "Close", ItemKind::Button, "", "close"},
    {&M::smuiSelect, "HELP", "Help", ItemKind::Button, "", "help"},

    {&M::controls, "chkAutoStartup", "", ItemKind::Check},
    {&M::smuiAutoStartTime, "HOUR", "Hour", ItemKind::DropDown, hours},
    {&M::smuiAutoStartTime, "MINUTE", "Minute", ItemKind::DropDown, minutes},
    {&M::smuiAutoStartTime, "AMPM", "AM or PM", ItemKind::DropDown, halves},
    {&M::controls, "chkEndDayReminder", "", ItemKind::Check},
    {&M::smuiEndDayReminderTime, "HOUR", "Hour", ItemKind::DropDown, hours},
    {&M::smuiEndDayReminderTime, "MINUTE", "Minute", ItemKind::DropDown, minutes},
    {&M::smuiEndDayReminderTime, "AMPM", "AM or PM", ItemKind::DropDown, halves},
    {&M::controls, "cboEndDayInterval", "Interval:", ItemKind::DropDown,
     "15 Minutes;30 Minutes;45 Minutes;1 Hour"},
    {&M::controls, "chkUseIntraDayReminder", "", ItemKind::Check},
    {&M::controls, "cboIntraDayInterval", "Interval:", ItemKind::DropDown,
     "15 Minutes;30 Minutes;45 Minutes;1 Hour;2 Hours;4 Hours"},
    {&M::smuiSoundFile, "SOUNDFILE", "Sound File:", ItemKind::Browse},
    {&M::controls, "cmdTestSoundFile", "Test Sound File", ItemKind::Button},
    {&M::controls, "chkAutoSave", "", ItemKind::Check},

    {&M::smuiSpreadSheet, "Time Increment", "Time Increments:", ItemKind::DropDown,
     "15 Minutes;30 Minutes;1 Hour"},
    {&M::smuiSpreadSheet, "WEEKSTARTDAY", "Start of Week:", ItemKind::DropDown,
     "Monday;Tuesday;Wednesday;Thursday;Friday;Saturday;Sunday"},
    {&M::smuiSpreadSheet, "CALCNUMDAYS", "Calc # Days:", ItemKind::Edit},
    {&M::smuiSpreadSheet, "TIMESHEETLOC", "Invoice/TimeSheet Template:", ItemKind::Browse},
    {&M::smuiSpreadSheet, "COLLOC", "Collection Location:", ItemKind::Browse},
    {&M::smuiSpreadSheet, "COLFILENAME", "Collection FileName:", ItemKind::Browse},

    {&M::smuiDatabase, "DATABASELOC", "Database Location:", ItemKind::Browse},

    {&M::controls, "cboRecentProjects", "Number of Recent Projects", ItemKind::DropDown,
     "2;3;4;5;6;7;8;9"},
    {&M::controls, "chkShowTips", "Show Tips at Startup", ItemKind::Check},
};

constexpr OptionSwitch switches[] = {
    {"chkAutoStartup", "AutoStartDay", &Globals::AutoStartDay, "Automatic StartUp - Enabled",
     "Automatic StartUp - Disabled"},
    {"chkEndDayReminder", "EndDayReminder", &Globals::EndDayReminder,
     "End of Day Reminder - Enabled", "End of Day Reminder - Disabled"},
    {"chkUseIntraDayReminder", "AutoDayReminder", &Globals::AutoDayReminder,
     "IntraDay Reminders - Enabled", "IntraDay Reminders - Disabled"},
    {"chkAutoSave", "AutoSave", &Globals::AutoSave, "Automatic Save - Enabled",
     "Automatic Save - Disabled"},
};

constexpr OptionGroup groups[] = {
    {"chkAutoStartup", "Automatic Startup Options",
     "This option will automatically popup Kelvrane every morning (except weekends) at the time "
     "specified  below.",
     0},
    {"chkEndDayReminder", "End Of Day Options", "", 0},
    {"chkUseIntraDayReminder", "IntraDay Reminders",
     "These options are used to remind you to update Kelvrane throughout the day. (Leave Sound "
     "File blank, to avoid playing sounds.)",
     1},
    {"chkAutoSave", "Automatic Save",
     "This option will automatically save the Day's information to the DayInfo database every 15 "
     "minutes.",
     1},
};

constexpr OptionField fields[] = {
    {"chkAutoStartup", "Start Time:", &M::smuiAutoStartTime, "smuiAutoStartTime"},
    {"chkEndDayReminder", "Stop Time:", &M::smuiEndDayReminderTime, "smuiEndDayReminderTime"},
    {"chkEndDayReminder", "Interval:", &M::controls, "cboEndDayInterval"},
    {"chkUseIntraDayReminder", "Interval:", &M::controls, "cboIntraDayInterval"},
    {"chkUseIntraDayReminder", "Sound File:", &M::smuiSoundFile, "smuiSoundFile"},
    {"chkUseIntraDayReminder", "", &M::controls, "cmdTestSoundFile"},
};

constexpr OptionPanel panels[] = {
    &M::smuiSelect,    &M::controls,        &M::smuiAutoStartTime, &M::smuiEndDayReminderTime,
    &M::smuiSoundFile, &M::smuiSpreadSheet, &M::smuiDatabase,
};

QList<KeyedItem> itemsOf(OptionPanel panel) {
    QList<KeyedItem> items;
    for (const OptionRow& row : rows)
        if (row.panel == panel)
            items.append({.key = QString::fromLatin1(row.key),
                          .caption = QString::fromLatin1(row.caption),
                          .kind = row.kind,
                          .image = QString::fromLatin1(row.image)});
    return items;
}

} // namespace

OptionsModel::OptionsModel() {
    reset();
}

void OptionsModel::reset() {
    Page = QString::fromLatin1(pages[0].key);
    QList<KeyedItem> tabs;
    for (const OptionPage& page : pages)
        tabs.append({.key = QString::fromLatin1(page.key),
                     .caption = QString::fromLatin1(page.caption),
                     .kind = ItemKind::Button,
                     .image = QString::fromLatin1(page.image)});
    SmartTabStrip.refill(tabs);
    for (const OptionPanel panel : panels)
        (this->*panel).refill(itemsOf(panel));
}

void OptionsModel::turnTo(const QString& page) {
    Page = page;
    emit PageTurned(page);
}

OptionsModel& Options() {
    static OptionsModel model;
    return model;
}

std::span<const OptionPage> OptionPages() {
    return pages;
}
std::span<const OptionPanel> OptionPanels() {
    return panels;
}
std::span<const OptionRow> OptionRows() {
    return rows;
}
std::span<const OptionSwitch> OptionSwitches() {
    return switches;
}
std::span<const OptionGroup> OptionGroups() {
    return groups;
}
std::span<const OptionField> OptionFields() {
    return fields;
}

} // namespace kelvrane
