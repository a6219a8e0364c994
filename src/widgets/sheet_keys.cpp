#include "widgets/sheet_keys.h"

#include "worksheet/sheet_actions.h"

#include <QKeyEvent>

#include <algorithm>

namespace kelvrane {

namespace {

struct MoveRow {
    int key;
    bool control;
    Step step;
};
constexpr MoveRow moveRows[] = {
    {Qt::Key_Left, false, Step::Left},     {Qt::Key_Right, false, Step::Right},
    {Qt::Key_Up, false, Step::Up},         {Qt::Key_Down, false, Step::Down},
    {Qt::Key_Left, true, Step::JumpLeft},  {Qt::Key_Right, true, Step::JumpRight},
    {Qt::Key_Up, true, Step::JumpUp},      {Qt::Key_Down, true, Step::JumpDown},
    {Qt::Key_Home, false, Step::RowStart}, {Qt::Key_Home, true, Step::SheetStart},
    {Qt::Key_End, false, Step::JumpRight}, {Qt::Key_End, true, Step::SheetEnd},
    {Qt::Key_PageUp, false, Step::PageUp}, {Qt::Key_PageDown, false, Step::PageDown},
};

struct AdvanceRow {
    int key;
    Step step;
    Step withShift;
};
constexpr AdvanceRow advanceRows[] = {
    {Qt::Key_Return, Step::Down, Step::Up},
    {Qt::Key_Enter, Step::Down, Step::Up},
    {Qt::Key_Tab, Step::Right, Step::Left},
    {Qt::Key_Backtab, Step::Left, Step::Left},
};

Qt::KeyboardModifiers PlainModifiers(const QKeyEvent& event) {
    return event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
}

} // namespace

const SheetAction* ActionOfKey(const QKeyEvent& event) {
    return ActionForKeys(
        QKeySequence(QKeyCombination(PlainModifiers(event), Qt::Key(event.key()))));
}

std::optional<Step> MoveOfKey(const QKeyEvent& event) {
    const auto modifiers = PlainModifiers(event) & ~Qt::KeyboardModifiers(Qt::ShiftModifier);
    const bool control = modifiers == Qt::ControlModifier;
    if (modifiers && !control)
        return std::nullopt;
    const auto* found = std::ranges::find_if(moveRows, [&](const MoveRow& row) {
        return row.key == event.key() && row.control == control;
    });
    return found == std::end(moveRows) ? std::nullopt : std::optional(found->step);
}

std::optional<Step> AdvanceOfKey(const QKeyEvent& event) {
    if (PlainModifiers(event) & ~Qt::KeyboardModifiers(Qt::ShiftModifier))
        return std::nullopt;
    const auto* found = std::ranges::find(advanceRows, event.key(), &AdvanceRow::key);
    if (found == std::end(advanceRows))
        return std::nullopt;
    return event.modifiers() & Qt::ShiftModifier ? found->withShift : found->step;
}

bool IsTyped(const QKeyEvent& event) {
    const auto modifiers = event.modifiers();
    const bool isCommand =
        bool(modifiers & Qt::ControlModifier) != bool(modifiers & Qt::AltModifier);
    return !isCommand && !event.text().isEmpty() && event.text().front().isPrint();
}

bool ErasesCell(const QKeyEvent& event) {
    return event.key() == Qt::Key_Backspace && !PlainModifiers(event);
}

} // namespace kelvrane
