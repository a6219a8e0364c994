// Times as text. A clock text is "9:05 AM", a span text "1 Hours 5 Minutes"; both are stored as
// they stand. Arithmetic is done on 16-bit minutes, and overflow is an error, not a wrap.
#pragma once

#include "platform/int16.h"

#include <QDate>
#include <QString>

#include <array>

namespace kelvrane {

/// Minutes of a span text or, as minutes since midnight, of a clock text; rounded half to even.
/// The words are told apart by case: a lower-case "1:00 pm" stays 60, and "1 Minute" is no span.
/// Raises TypeMismatch, Subscript (an empty text) or Overflow.
Int16 ToMinutes(const QString& Text);

/// "59 Minutes", "1 Hours 0 Minutes", "-1 Hours -5 Minutes".
QString MinutesToText(Int16 Minutes);

/// Hours and the rest below the hour, of the text or, when it is empty, of the minutes.
std::array<Int16, 2> ToHoursAndMinutes(const QString& Text, Int16 Minutes);

/// True when a typed time is BAD: it must be "h:mm am" or "h:mm pm" with minutes of two digits up
/// to 59; the hour's range isn't tested.
bool IsValidClockText(const QString& Text);

/// The text up to its first NUL.
QString StripAtNull(const QString& Text);

/// The path up to and including its last separator; both kinds count.
QString PathOfFile(const QString& Path);

/// A chart point's tip with its hours turned into a span text, by ChartIndex; "" for the four
/// 100 percent types. Takes "Work, Alpha Value: 1.5" or, for pies, "Alpha Value: 1.5 (25%)".
/// Raises TypeMismatch or BadArgument for a text of another form.
QString ReformatChartValueText(const QString& Text);

/// The date one day later (Direction >= 1), earlier (<= -1) or unchanged, as m/d/yyyy.
QString StepDate(QDate Date, Int16 Direction);

/// Worked minutes as the decimal hours of timesheets: rounded to two decimals, then to Increment
/// ("None", "15 Minutes", "30 Minutes", "1 Hour"; 0 for any other text). 0.865 of an hour and more
/// rounds up at "15 Minutes"; the bound is wanted so.
double RoundToIncrement(float Minutes, const QString& Increment);

} // namespace kelvrane
