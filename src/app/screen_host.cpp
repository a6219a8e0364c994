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

bool StandsAbove(const QWidget* window, const QWidget* screen) {
    for (const QWidget* parent = window->parentWidget(); parent; parent = parent->parentWidget())
        if (parent->window() == screen)
            return true;
    return false;
}

/// Screen null: above any screen.
void DismissModals(const QWidget* screen) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QPointer<QWidget> window : windows) {
        if (!window || window == screen || !window->isVisible())
            continue;
        const bool blocks = window->isModal() || window->windowType() == Qt::Popup;
        if (blocks && (!screen || StandsAbove(window, screen)))
            Dismiss(window);
    }
}

void Raise(QWidget* window) {
    if (window->isMinimized())
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
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
    for (const Slot& slot : m_slots)
        delete slot.widget;
    for (const QPointer<QWidget>& widget : std::as_const(m_retired))
        delete widget;
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
    slot->widget->show();
    Raise(slot->widget);
}

void ScreenHost::bringForward(Screen screen) {
    if (!isVisible(screen))
        return;
    Raise(widget(screen));
    QApplication::alert(widget(screen));
}

void ScreenHost::unload(Screen screen) {
    Slot* slot = slotOf(screen);
    if (!slot)
        return;
    slot->unloadWanted = slot->creating;
    if (!slot->widget)
        return;
    QWidget* widget = slot->widget;
    slot->widget.clear();
    DismissModals(widget);
    retire(widget);
    if (slot->row->unload)
        slot->row->unload();
}

void ScreenHost::retire(QWidget* widget) {
    widget->hide();
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
    DismissModals(nullptr);
    for (const Slot& slot : m_slots)
        unload(slot.row->screen);
}

} // namespace kelvrane
