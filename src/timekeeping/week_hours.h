// Fills the week view of the control screen from the history.
#pragma once

namespace kelvrane {

/// Sets WeekStartDate to the last day that was the week's first by StartOfWeek, today included.
/// Raises TypeMismatch when StartOfWeek isn't a number.
void CalcLVWStartDate();
/// CalcLVWStartDate, then the nine headers; raises the same.
void SetLVWColumnHeaders();
/// Reads the week from the history. With an empty history the rows stay; a name that breaks its
/// query leaves itself and the names behind it without hours. Raises nothing.
void FillWeekView();

} // namespace kelvrane
