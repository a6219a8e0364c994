// What a typed text means: a number, a date, a truth value, or just text.
#pragma once

#include "worksheet/cell_value.h"

#include <QString>

#include <optional>

namespace kelvrane {

struct TypedValue {
    CellValue value;
    QString format; ///< the number format that the text implies; "" for none
};

/// As typing into a cell does: "75", "1,234.50", "$75.00", "($75.00)", "-3", "12%", "1e3",
/// "1/5/2003", "5-Jan-2003", "January 5, 2003", "9:30 AM", "13:45:10", "1/5/2003 9:30 AM", "TRUE",
/// "#N/A". A leading apostrophe makes the rest text. An empty text is an empty value. What means
/// nothing is text as it stands. "$1080.00" implies "$0.00", "$1,080.00" "$#,##0.00".
/// Text, too: numbers beyond a double, dates that don't exist, and dates without a year.
TypedValue ParseTyped(const QString& text);

/// The number that a text stands for in arithmetic: the same forms, dates included, outer blanks
/// dropped; nothing for any other text, "" and truth values included.
std::optional<double> NumberOfText(const QString& text);

} // namespace kelvrane
