// Dates and times as people type them, always month before day.
#pragma once

#include <QString>

#include <optional>

namespace kelvrane {

struct TypedMoment {
    double serial = 0; ///< as of cell_value.h; a time alone is under 1, "25:30" is more
    QString format;    ///< the picture that shows it as it was typed
};

/// "1/5/2003", "1-5-2003", "2003-01-05", "5-Jan-2003", "5 January 2003", "Jan 5, 2003", each also
/// behind the name of a day and before a time; "9:30", "9:30 AM", "9 PM", "13:45:10", "0:00:01.5",
/// "25:30". Years of two digits are 1930 to 2029. Nothing for any other text, for dates that don't
/// exist, and for dates without a year: which year they mean would change with the day on which
/// they are read.
std::optional<TypedMoment> ReadTypedMoment(QStringView text);

} // namespace kelvrane
