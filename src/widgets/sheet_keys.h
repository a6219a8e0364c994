// What a key means on a sheet: a command, a way to another cell, or a text that is typed.
#pragma once

#include "worksheet/sheet_session.h"

#include <optional>

class QKeyEvent;

namespace kelvrane {

struct SheetAction;

/// The command of a key; null for none.
const SheetAction* ActionOfKey(const QKeyEvent& event);
/// Arrows and their like; Shift extends the selection and doesn't count here.
std::optional<Step> MoveOfKey(const QKeyEvent& event);
/// Enter and Tab, which take over what was typed; with Shift the other way.
std::optional<Step> AdvanceOfKey(const QKeyEvent& event);
/// Texts go in, also those that AltGr makes; commands don't.
bool IsTyped(const QKeyEvent& event);
/// The key that begins an empty text in the cell.
bool ErasesCell(const QKeyEvent& event);

} // namespace kelvrane
