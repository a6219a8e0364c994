// Dates, times and numbers as text. The forms never depend on the language of the desktop:
// m/d/yyyy without padding, "h:mm AM/PM", English names, a decimal point.
#pragma once

#include "platform/int16.h"

#include <QDate>
#include <QString>
#include <QTime>

#include <optional>

namespace kelvrane {

/// "3/14/2002"; "" for an invalid date.
QString DateText(QDate date);
/// Reads m/d/yyyy with or without padding, and yyyy-mm-dd. An invalid date when it is neither.
QDate DateFromText(const QString& text);
/// The form in which databases keep a date: "2002-03-14".
QString StoredDateText(QDate date);

/// "9:05 AM".
QString ClockText(QTime time);
/// "9:05:30 AM".
QString SystemTimeText(QTime time);

/// 15 significant digits, leading zero, no trailing zeros, "1E+20" beyond: "0.25", "-3".
QString DoubleText(double value);
/// The same with 7 significant digits.
QString SingleText(float value);
/// "0.00": two decimals, half away from zero on the decimal text, so 0.125 gives "0.13".
QString TwoDecimalsText(double value);
/// "True" or "False".
QString BooleanText(bool value);

/// True for outer blanks, sign, one leading "$", digits with thousands commas, one point, exponent.
/// Digits followed by a NUL count too.
bool IsNumeric(const QString& text);
/// The number of a numeric text; raises TypeMismatch for any other, Overflow outside a double.
double ToDouble(const QString& text);

/// Rounds half to even; raises Overflow outside 16 bits (also for infinities and NaN).
Int16 ToInt16(double value);
/// ToInt16 of ToDouble.
Int16 ToInt16(const QString& text);

/// Writes text as UTF-8; reads UTF-8, or Windows-1252 where the bytes aren't valid UTF-8.
QByteArray ToFileBytes(const QString& text);
QString FromFileBytes(const QByteArray& bytes);

} // namespace kelvrane
