// The procedures of the chart screen: work and break by project, over one day or a range of days,
// and the same data as a tree.
#pragma once

#include "charts/chart_model.h"

#include <QDate>
#include <QString>

namespace kelvrane {

/// Rolls a running day up, then opens on today with what was kept from last time. Errors are told.
void LoadChart();
/// Stores the settings, closes the setup and lets go of the data.
void UnloadChart();

/// Reads the history for the two dates and draws. A failure is told, and the labels stay as they
/// are then.
void FillSetSpreadSheetValuesArray();
/// Rebuilds the chart from the totals, without legend and title, and the tree if it shows.
void SetSpreadSheetValues();
/// Builds the nodes at the top of the tree; those below come when they are opened. Raises
/// DatabaseOpen, Sql.
void FillViewList();

/// Opens the month view for a date.
void PickDate(ChartDate which);
/// A day of the month view: it becomes the date that is being picked.
void MonthView1_DateClick(QDate day);
/// "+" (1) or "-" (-1) typed in a date field.
void StepChartDate(ChartDate which, int direction);
/// A whole date typed in its field, m/d/yyyy. What is no date between 1899 and 2101 changes
/// nothing.
void TypeChartDate(ChartDate which, const QString& text);

void ChartToolBar_Click(const QString& key);
/// mnuListDisplayTypeByDate, mnuListDisplayTypeByProject.
void ListDisplayType_Click(const QString& key);
/// "mnuChartType" and a place of the chart type table.
void mnuChartType_Click(const QString& key);

/// Connects the model to the routines, once a process.
void WireChart();

} // namespace kelvrane
