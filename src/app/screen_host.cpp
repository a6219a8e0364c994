#include "app/screen_host.h"

#include "frame/help_topics.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDialog>
#include <QPixmapCache>
#include <QScopeGuard>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <utility>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace kelvrane {

namespace {

/// Closes a dialog or pop-up as if by its frame.
void Dismiss(QWidget* window) {
    if (auto* dialog = qobject_cast<QDialog*>(window))
        dialog->reject();
    else
        window->close();
}

bool Blocks(const QWidget* window) {
    return window->isVisible() && (window->isModal() || window->windowType() == Qt::Popup);
}

bool IsAbove(const QWidget* window, const QWidget* screen) {
    for (const QWidget* parent = window->parentWidget(); parent; parent = parent->parentWidget())
        if (parent->window() == screen)
            return true;
    return false;
}

/// Guarded from the first one on: whoever hears that a window closes may delete any other.
QList<QPointer<QWidget>> Windows() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return {windows.cbegin(), windows.cend()};
}

void DismissAllModals() {
    for (const QPointer<QWidget>& window : Windows())
        if (window && Blocks(window))
            Dismiss(window);
}

void DismissModalsAbove(const QPointer<QWidget>& screen) {
    for (const QPointer<QWidget>& window : Windows())
        if (screen && window && Blocks(window) && IsAbove(window, screen))
            Dismiss(window);
}

/// Each step may run code that unloads the screen or deletes it.
void Raise(const QPointer<QWidget>& window) {
    if (window && window->isMinimized())
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    if (window)
        window->raise();
    if (window)
        window->activateWindow();
}

} // namespace

ScreenHost::ScreenHost(std::span<const ScreenRow> rows, QObject* parent) : QObject(parent) {
    m_slots.reserve(rows.size());
    for (const ScreenRow& row : rows)
        m_slots.push_back({.row = &row});
    if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance())
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &ScreenHost::sweep);
}

ScreenHost::~ScreenHost() {
    for (Slot& slot : m_slots)
        m_retired.append(std::exchange(slot.widget, {}));
    while (!m_retired.isEmpty()) // a screen that goes may unload one that it opened itself
        delete m_retired.takeFirst();
}

const ScreenHost::Slot* ScreenHost::slotOf(Screen screen) const {
    for (const Slot& slot : m_slots)
        if (slot.row->screen == screen)
            return &slot;
    return nullptr;
}

ScreenHost::Slot* ScreenHost::slotOf(Screen screen) {
    return const_cast<Slot*>(std::as_const(*this).slotOf(screen));
}

/// False when there is no screen afterwards: it is being made further up the stack, or was unloaded
/// before it was ready.
bool ScreenHost::create(Slot& slot) {
    if (slot.creating)
        return false;
    slot.unloadWanted = false;
    {
        slot.creating = true;
        const auto done = qScopeGuard([&] { slot.creating = false; });
        slot.widget = slot.row->create();
    }
    if (slot.unloadWanted)
        unload(slot.row->screen);
    return slot.widget;
}

void ScreenHost::show(Screen screen) {
    Slot* slot = slotOf(screen);
    if (!slot || (!slot->widget && !create(*slot)))
        return;
    const QPointer<QWidget> widget = slot->widget;
    widget->show();
    if (slot->widget == widget) // not unloaded by what its showing set off
        Raise(widget);
}

void ScreenHost::bringForward(Screen screen) {
    if (!isVisible(screen))
        return;
    const QPointer<QWidget> widget = this->widget(screen);
    Raise(widget);
    if (widget) // none would stand for every window
        QApplication::alert(widget);
}

void ScreenHost::unload(Screen screen) {
    Slot* slot = slotOf(screen);
    if (!slot)
        return;
    slot->unloadWanted = slot->creating;
    if (!slot->widget)
        return;
    const QPointer<QWidget> widget = std::exchange(slot->widget, {});
    DismissModalsAbove(widget);
    retire(widget);
    if (slot->row->unload)
        slot->row->unload();
}

/// Listed when it is hidden, not before: hiding runs the screen's own code.
void ScreenHost::retire(const QPointer<QWidget>& widget) {
    if (widget)
        widget->hide();
    if (widget)
        m_retired.append(widget);
}

/// Runs whenever an event loop has nothing left to do. Only in the outermost one is it certain that
/// no code of a retired screen stands on the stack; a posted deletion would run in a nested one.
/// While the program starts, the outermost loop may be that of a message box; the only screen on
/// the stack is then one being made, and that isn't retired.
void ScreenHost::sweep() {
    if (m_retired.isEmpty() || QThread::currentThread()->loopLevel() > 1)
        return;
    const auto retired = std::exchange(m_retired, {});
    for (const QPointer<QWidget>& widget : retired)
        delete widget;
    if (std::ranges::none_of(m_slots, [](const Slot& slot) { return bool(slot.widget); }))
        giveMemoryBack();
}

/// With the last screen gone the process may sit in the tray for days.
void ScreenHost::giveMemoryBack() {
    QPixmapCache::clear();
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

bool ScreenHost::isVisible(Screen screen) const {
    const Slot* slot = slotOf(screen);
    return slot && slot->widget && slot->widget->isVisible();
}

bool ScreenHost::isLoaded(Screen screen) const {
    return widget(screen);
}

QWidget* ScreenHost::widget(Screen screen) const {
    const Slot* slot = slotOf(screen);
    return slot ? slot->widget.data() : nullptr;
}

int ScreenHost::helpTopic(const QWidget* window) const {
    for (const Slot& slot : m_slots)
        if (slot.widget == window && slot.row->helpTopic)
            return slot.row->helpTopic();
    return topics::Contents;
}

void ScreenHost::unloadAll() {
    DismissAllModals();
    for (const Slot& slot : m_slots)
        unload(slot.row->screen);
}

} // namespace kelvrane
