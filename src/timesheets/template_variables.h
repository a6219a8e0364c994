// The words between hash signs that a template's cells hold, and what they expand to. Anchors such
// as #NAME# say where data begin (template_scan.h finds them); date and customer variables are
// replaced within the text of their cell.
//
//     const SheetPeriod week{"1/5/2003", QDate(2003, 1, 11), 2};
//     ExpandDateVariables("Week #WEEK#, #DATE2#", week);   // "Week 2, Jan 5 -  Jan 11"
#pragma once

#include "timesheets/sheet_state.h"

#include <QDate>
#include <QString>

namespace kelvrane {

/// The days that a sheet is about.
struct SheetPeriod {
    QString startDate; ///< m/d/yyyy, as the screen's STARTDATE shows it
    QDate end;         ///< the last day
    int week = 0;      ///< number of the week that holds the start
};

/// One customer, as the variables of a customer sheet take it.
struct CustomerSheetFields {
    Int16 ID;
    QString Company;
    QString Title;
    QString FirstName;
    QString LastName;
    QString Address1;
    QString Address2;
    QString City;
    QString State;
    QString ZipCode;
};

/// The longest text that a variable makes of a cell's; a longer one raises Overflow.
inline constexpr qsizetype LongestCellText = 32'767;

/// Fills ColumnLetters, ReservedVariables and ShortDayNames.
void InitSpreadsheetTables();

/// As a calculation begins: the anchors have their names and no place, HasNumberColumn is true.
void ResetSSVariables();
/// After the scan, before a sheet by project is filled: tells in a box what is missing and gives
/// false. HasNumberColumn becomes false without a #NUMBER#; only with one is #HOURS# asked for,
/// which older templates rely on.
bool CheckProjectAnchors();

/// All date variables of one text. A start date that can't be read raises TypeMismatch, as below,
/// where a variable needs it as a date.
QString ExpandDateVariables(const QString& cellText, const SheetPeriod& period);
/// #DATE1# to #DATE10#. A range has two blanks after its dash, a single date ends in one: filed
/// sheets have always had them.
QString FormatDateRange(const SheetPeriod& period, int n);
/// #MONTH1# to #MONTH4#.
QString FormatMonthVariable(const SheetPeriod& period, int n);
/// #YEAR1# and #YEAR2#: the last four or two characters of the start date's text.
QString FormatYearVariable(const SheetPeriod& period, int n);

QString ExpandCustomerVariables(const QString& cellText, const CustomerSheetFields& fields);

/// "Sunday" to "1" and "Saturday" to "7", or back. "" for any other value.
QString WeekdayNumberConvert(bool toNumber, const QString& value);

} // namespace kelvrane
