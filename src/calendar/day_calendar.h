// The procedures of the day calendar, the one screen that edits past days: a click on a day shows
// its rows of the history, and whatever leaves the day writes them back. Today's rows come from the
// running day and are never shown here.
#pragma once

#include <QString>

namespace kelvrane {

/// Opens on the month of today with no day on the panel. Sets DayCalendarOpen.
void LoadDayInfo();
/// Saves the day on the panel and empties the calendar; a notice names a time that has no project.
/// Clears DayCalendarOpen.
void UnloadDayInfo();
/// The user closes the screen. When the day can't be saved, or not all of it, asks first.
void CloseDayInfo();

/// A step button: MonthDn, Monthup, YearDn, YearUp. Nothing beyond the calendar's ends.
void StepClick(const QString& key);
/// Another month or year was chosen. The panel keeps its day.
void ListsChange();

/// Label of the grid, 0-based; hidden ones do nothing. Saves the day on the panel, then shows the
/// one clicked. When the former can't be saved, or has a time without a project, it stays, so
/// nothing typed is lost. Offers to join rows of one project, once for each day.
void DateLabelClick(int index);
/// The same with the right button; True when mnuPopup is wanted: a day before today without rows.
bool DateLabelRightClick(int index);

/// One more group on the panel, without a project.
void AddDayRows();
/// Writes back what was edited of the panel's day and rolls the running day up. False when the day
/// couldn't be written; that was reported then.
bool SaveDayChanges();

/// A project was chosen in a row of the panel; one that another group has is refused. place is its
/// 0-based place in the list, of which the last opens the Database Manager. Sets CalendarRowKey and
/// CalendarRowValue.
void ProjectChosen(const QString& key, int place, const QString& value);
/// The button of a time row opens the picker. Sets CalendarRowKey.
void TimeButtonPressed(const QString& key);

/// Connects the model to the routines, once a process, and takes the Database Manager's selections.
void WireDayCalendar();

} // namespace kelvrane
