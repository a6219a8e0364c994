// Number formats: pictures such as "#,##0.00", "$###0.00", "0%", "d mmm", "[h]:mm", "@".
#pragma once

#include "worksheet/cell_value.h"

#include <QString>

namespace kelvrane {

/// The text that a value shows under a format. "" and "General" are General: up to 10 significant
/// digits as spreadsheets show them, whole numbers up to 15. A format that can't be read is taken
/// as General, fractions ("# ?/?") among them, and so is a number that no section is for. Sections
/// ("positive;negative;zero;text" or with conditions, "[>=100]0;0.0"), quoted and escaped literals,
/// thousands, percent, exponent, date, time and [h] pictures, and names such as "Fixed" and "Short
/// Date". A blank stands for "_x", nothing for "*x". English names whatever the locale. Rounds half
/// away from zero on the decimal text; what rounds to zero has no "-". Dates before 1899-12-30 and
/// after 9999 are "###"; NaN and infinities are "#NUM!".
QString FormatCellValue(const CellValue& value, const QString& format);

/// The colour that the section for this value asks for ("[Red]"), else an empty text.
QString FormatColorName(const CellValue& value, const QString& format);

/// True for pictures of dates and times.
bool IsDateFormat(const QString& format);
/// True for "@".
bool IsTextFormat(const QString& format);

} // namespace kelvrane
