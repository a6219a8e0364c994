// The rules that an edited entry must keep before it may replace its entry of the day. They read
// EditedEntry and DayEntries; a refusal shows its message, puts the row it names back to what the
// list holds, and changes nothing else.
#pragma once

#include <QString>

namespace kelvrane {

struct DayEntry;

/// Total of EditedEntry as a span text; an empty stop counts as now. Raises what ToMinutes raises.
QString CalCurTotalTime();
/// The same for an entry of the list.
QString CalOtherTotalTime(const DayEntry& entry);

/// Marks start and stop where their form is bad. True when one is: with messages, the first bad one
/// is told. The hour's range isn't tested.
bool VerifyAllTimes(bool showMessages);

/// Refuses with the numbered message (1 to 6) when the first time is later than the second. True
/// when refused. Raises what ToMinutes raises.
bool CheckTimePair(const QString& first, const QString& second, int message);

/// True when the break's form or the order of times within the day refuses the edit of the entry at
/// the 0-based index. Raises what ToMinutes raises, Subscript for an index outside the day.
bool VerifyTimeOrder(int index);

} // namespace kelvrane
