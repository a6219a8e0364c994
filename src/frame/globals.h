// The variables that more than one module uses. One home, reset as a whole by globals = {}; each
// given name is bound to its member below.
#pragma once

#include "platform/clock.h"
#include "platform/int16.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace kelvrane {

class cTimer;

/// One stretch of work. All six fields are text; times are turned into minutes on use.
struct DayEntry {
    QString ProjectName;
    QString ProjectNumber;
    QString StartTime; ///< "9:05 AM"
    QString StopTime;  ///< "" while running
    QString BreakTime; ///< "5 Minutes"
    QString TotalTime; ///< "1 Hours 5 Minutes", break included

    bool operator==(const DayEntry&) const = default;
};

struct Globals {
    // Settings in use, read by Main and kept current by the options screen.
    Int16 ShowNumProjects;            // length limit of the recent list
    Int16 EndOfDayTimeInterval;       // minutes between end-of-day prompts; 0: no prompt
    QString StartWorkTime;            // "8:00 AM"
    QString StopWorkTime;             // "5:00 PM"; also written by the end-of-day prompt
    QString EndDayReminder;           // "On" or "Off"
    QString AutoStartDay;             // "On" or "Off"
    QString ProjectDatabase;          // full path
    QString AutoSave;                 // "On" or "Off"
    QString AutoDayReminder;          // "On" or "Off"
    Int16 AutoDayReminderValue;       // minutes between reminders; 0: none
    QString AutoDayReminderSoundFile; // path; filled by the options screen only
    QString StartOfWeek;              // weekday as text, Sunday is 1
    QString TimeIncrements;           // "None", "15 Minutes", "30 Minutes", "1 Hour"
    QString CollectionLoc;            // folder of the current collection, no separator at its end
    QString CollectionFileName;       // its name without extension; both "": none yet

    // The day. Written by day_file, working_day, entry_times and day_change.
    QList<DayEntry> DayEntries;   // in start order, 0-based
    QDate DayDate;                // the date that DayEntries belong to; invalid: no entries yet
    bool KeepsDay = true;         // false: another process does; nothing of it is loaded or written
    Int16 CurrentEntryIndex = -1; // index into DayEntries; -1: none
    bool DayUnsaved = false;      // the last save of the day file failed
    bool ControlScreenLoaded = false; // the day was loaded; status text may be shown
    bool DayStopped = false;          // the tick leaves the day alone
    qint32 OnBreak = 0;               // 1 while on break
    QString BreakBegan;               // "10:05 AM", of the running entry's open break; "": none
    Int16 BreakHeld;                  // break minutes of the running entry when it began
    Int16 CounterMinutes;             // minutes of TMR at the last tick
    Int16 BreakMinutes;               // break minutes of the running entry
    Int16 NumProjects;                // distinct projects; written by UpdateDailyChart
    Int16 TotalBreakMinutes;          // day totals; written by UpdateDayStatistics
    Int16 TotalWorkMinutes;
    Int16 TotalOverallMinutes;

    QStringList DayTail; // what the day file holds behind its entries; see frame/day_tail.h

    QString StatusHeading;         // text of panel 1 of the control screen's status bar
    QList<QString> RecentProjects; // element 0 is the newest (File1)
    QList<QString> RecentNumbers;  // beside them: the number where several projects have the name
    bool NoRecentProjects = false; // no recent project is stored
    Int16 LastFileStatus;          // result of the last settings write or day-file check

    cTimer* TMR = nullptr;         // the one counter; created and owned by the tray's hidden form
    ClockReading LastReading;      // when the day was last brought up to the present; none before
    bool DebugMode = false;        // start-up is traced
    bool DatabaseSelected = false; // the database dialog accepted a path
    bool DatabaseSelectCancelled = false; // it was closed without one
    bool SpreadsheetOpen = false;
    bool DayCalendarOpen = false; // a selection in the Database Manager goes to the calendar
    bool ModifyOpen = false;      // a selection there goes to the modify screen
    QString SelectedEntryKey;     // row last chosen in the break-down list
    DayEntry EditedEntry;         // working copy of the modify screen
    QString CalendarRowKey;       // the calendar's group being changed, or key of its time row
    QString CalendarRowValue;     // the calendar's project row before its change
    bool GraphShowing = false;    // views of the control screen
    bool WeekViewShowing = false;
    Int16 ChartIndex; // daily chart's type, index into the chart type table
};

inline Globals globals;

inline auto& ShowNumProjects = globals.ShowNumProjects;
inline auto& EndOfDayTimeInterval = globals.EndOfDayTimeInterval;
inline auto& StartWorkTime = globals.StartWorkTime;
inline auto& StopWorkTime = globals.StopWorkTime;
inline auto& EndDayReminder = globals.EndDayReminder;
inline auto& AutoStartDay = globals.AutoStartDay;
inline auto& ProjectDatabase = globals.ProjectDatabase;
inline auto& AutoSave = globals.AutoSave;
inline auto& AutoDayReminder = globals.AutoDayReminder;
inline auto& AutoDayReminderValue = globals.AutoDayReminderValue;
inline auto& AutoDayReminderSoundFile = globals.AutoDayReminderSoundFile;
inline auto& StartOfWeek = globals.StartOfWeek;
inline auto& TimeIncrements = globals.TimeIncrements;
inline auto& CollectionLoc = globals.CollectionLoc;
inline auto& CollectionFileName = globals.CollectionFileName;
inline auto& DayEntries = globals.DayEntries;
inline auto& DayDate = globals.DayDate;
inline auto& KeepsDay = globals.KeepsDay;
inline auto& CurrentEntryIndex = globals.CurrentEntryIndex;
inline auto& ControlScreenLoaded = globals.ControlScreenLoaded;
inline auto& DayUnsaved = globals.DayUnsaved;
inline auto& DayStopped = globals.DayStopped;
inline auto& OnBreak = globals.OnBreak;
inline auto& BreakBegan = globals.BreakBegan;
inline auto& BreakHeld = globals.BreakHeld;
inline auto& CounterMinutes = globals.CounterMinutes;
inline auto& BreakMinutes = globals.BreakMinutes;
inline auto& NumProjects = globals.NumProjects;
inline auto& TotalBreakMinutes = globals.TotalBreakMinutes;
inline auto& TotalWorkMinutes = globals.TotalWorkMinutes;
inline auto& TotalOverallMinutes = globals.TotalOverallMinutes;
inline auto& StatusHeading = globals.StatusHeading;
inline auto& RecentProjects = globals.RecentProjects;
inline auto& RecentNumbers = globals.RecentNumbers;
inline auto& NoRecentProjects = globals.NoRecentProjects;
inline auto& LastFileStatus = globals.LastFileStatus;
inline auto& TMR = globals.TMR;
inline auto& LastReading = globals.LastReading;
inline auto& DebugMode = globals.DebugMode;
inline auto& DatabaseSelected = globals.DatabaseSelected;
inline auto& DatabaseSelectCancelled = globals.DatabaseSelectCancelled;
inline auto& SpreadsheetOpen = globals.SpreadsheetOpen;
inline auto& DayCalendarOpen = globals.DayCalendarOpen;
inline auto& ModifyOpen = globals.ModifyOpen;
inline auto& SelectedEntryKey = globals.SelectedEntryKey;
inline auto& EditedEntry = globals.EditedEntry;
inline auto& CalendarRowKey = globals.CalendarRowKey;
inline auto& CalendarRowValue = globals.CalendarRowValue;
inline auto& GraphShowing = globals.GraphShowing;
inline auto& WeekViewShowing = globals.WeekViewShowing;
inline auto& ChartIndex = globals.ChartIndex;

} // namespace kelvrane
