#include "widgets/open_editor.h"

#include <QObject>
#include <QPointer>

#include <utility>

namespace kelvrane {

namespace {

QPointer<QObject> openEditor;
std::function<void()> commitStep;

} // namespace

void SetOpenEditor(QObject* editor, std::function<void()> commit) {
    if (openEditor != editor) // another window's: what is typed there would wait for ever
        CommitOpenEditor();
    openEditor = editor;
    commitStep = std::move(commit);
}

void ForgetOpenEditor(const QObject* editor) {
    if (openEditor == editor)
        openEditor = nullptr;
}

void CommitOpenEditor() {
    if (!openEditor)
        return;
    openEditor = nullptr; // first, since the step may come here again
    std::exchange(commitStep, {})();
}

} // namespace kelvrane
