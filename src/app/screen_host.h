// The screens behind the Screens port: a table says which there are and how each is made; a screen
// is made on first touch and goes when it is unloaded.
//
// A screen can be unloaded while code of its own waits further up the stack, behind a message box
// for instance. It is hidden at once, what is modal above it closes as cancelled, and it is deleted
// when the last nested event loop has returned. A screen whose close box unloads it calls
// ports.screens->unload() in its closeEvent.
//
// Showing, hiding and closing run code of the screens and dialogs, which may unload or delete any
// of them: a window is held by a guarded pointer across each such step. The host outlives every
// call.
#pragma once

#include "platform/screens.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <span>
#include <vector>

class QWidget;

namespace kelvrane {

/// A screen, how it is made and what its unload does.
struct ScreenRow {
    Screen screen;
    QWidget* (*create)();
    void (*unload)() = nullptr;   ///< what its unload does beyond removing it
    int (*helpTopic)() = nullptr; ///< of F1 in its window; none: the contents
};

/// Every screen but frmInfo, which has no window, and frmProgress, which is a port of its own.
std::span<const ScreenRow> ScreenTable();

class ScreenHost : public QObject, public Screens {
    Q_OBJECT
  public:
    /// The rows outlive the host.
    explicit ScreenHost(std::span<const ScreenRow> rows = ScreenTable(), QObject* parent = nullptr);
    ~ScreenHost() override;

    void show(Screen screen) override;
    void bringForward(Screen screen) override;
    void unload(Screen screen) override;
    bool isVisible(Screen screen) const override;
    bool isLoaded(Screen screen) const override;

    /// Shut-down: everything modal closes as cancelled, then every screen unloads.
    void unloadAll();

    /// The help topic of a screen's window; topics::Contents for any other window.
    int helpTopic(const QWidget* window) const;

    /// The screen's window, null when it isn't loaded. For tests and tours.
    QWidget* widget(Screen screen) const;

  private:
    struct Slot {
        const ScreenRow* row;
        QPointer<QWidget> widget = {};
        bool creating = false;
        bool unloadWanted = false; ///< unloaded while it was being made
    };
    Slot* slotOf(Screen screen);
    const Slot* slotOf(Screen screen) const;
    bool create(Slot& slot);
    void retire(const QPointer<QWidget>& widget);
    void sweep();
    static void giveMemoryBack();

    std::vector<Slot> m_slots;
    QList<QPointer<QWidget>> m_retired; ///< hidden, deleted once no nested loop runs
};

} // namespace kelvrane
