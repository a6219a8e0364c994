// Number formats: pictures such as "#,##0.00", "$###0.00", "0%", "d mmm", "[h]:mm", "@".
#pragma once

#include "worksheet/cell_value.h"

#include <QString>

namespace kelvrane {

/// The text that a value shows under a format. "" and "General" are General: up to 10 significant
/// digits as spreadsheets show them. A format that can't be read is taken as General. Sections
/// ("positive;negative;zero;text"), quoted and escaped literals, thousands, percent, exponent,
/// fractions aside, date, time and [h] pictures; colours and conditions in brackets are skipped.
/// English names whatever the locale. Rounds half away from zero on the decimal text.
QString FormatCellValue(const CellValue& value, const QString& format);

/// The colour that the section for this value asks for ("[Red]"), else an empty text.
QString FormatColorName(const CellValue& value, const QString& format);

/// True for pictures of dates and times.
bool IsDateFormat(const QString& format);
/// True for "@".
bool IsTextFormat(const QString& format);

} // namespace kelvrane
