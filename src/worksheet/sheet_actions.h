// The commands of the sheet editor as a table: buttons, menus and keys all run these.
#pragma once

#include "worksheet/sheet_session.h"

#include <QKeySequence>

#include <span>

namespace kelvrane {

struct SheetAction {
    const char* key;
    const char* caption;
    const char* icon;                     ///< "": none
    const char* keys;                     ///< portable, parted by blanks; "": none
    void (*run)(SheetSession&) = nullptr; ///< nullptr: the editor's own, it needs its window
    bool (*isOn)(const SheetSession&) = nullptr;
    bool (*isEnabled)(const SheetSession&) = nullptr;
};

std::span<const SheetAction> SheetActions();
/// nullptr for an unknown key, or one that no action has.
const SheetAction* ActionOf(QLatin1String key);
const SheetAction* ActionForKeys(const QKeySequence& keys);
/// "Bold (Ctrl+B)".
QString ActionToolTip(const SheetAction& action);

} // namespace kelvrane
