// The page SPREADSHEET: what timesheets are made with. Each routine that takes a choice writes its
// key and, where there is one, the global at once.
#pragma once

#include <QString>

namespace kelvrane {

/// Fills the page.
void GetSpreadSheetOptions();

void TakeTimeIncrement(const QString& increment);
/// A weekday's name. The week view follows at once when the control screen has loaded.
void TakeWeekStart(const QString& name);
/// An empty text leaves the setting alone; so does what can't be a number of days.
void TakeNumDays(const QString& text);
void BrowseTemplate();
void BrowseCollection();

} // namespace kelvrane
