// The one inline editor that may be open. Commands take its text over first, since clicking a tool
// bar doesn't take the focus from it.
#pragma once

#include <functional>

class QObject;

namespace kelvrane {

/// Registers the open editor with the step that takes its text over; forgotten when it is deleted.
/// One that is open elsewhere is taken over first.
void SetOpenEditor(QObject* editor, std::function<void()> commit);

/// It closes by itself; nothing when another one is open.
void ForgetOpenEditor(const QObject* editor);

/// Takes the open editor's text over and closes it. Nothing when none is open.
void CommitOpenEditor();

} // namespace kelvrane
