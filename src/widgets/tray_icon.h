// The tray icon with its two menus, and the window that stands in where there is no tray.
#pragma once

#include "platform/keyed_items.h"
#include "platform/ports.h"

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace kelvrane {

class TrayFallbackWindow;

/// What the icon asks of the desktop.
struct TrayDesktop {
    std::function<bool()> hasTray = &QSystemTrayIcon::isSystemTrayAvailable;
    /// Trays may start late: so long after the icon is wanted the window stands in.
    std::chrono::milliseconds patience = std::chrono::seconds(20);
    std::function<bool()> isWayland = {}; ///< asks the platform's name unless set
};

class TrayIcon : public QObject, public Tray {
    Q_OBJECT
  public:
    /// Both models outlive the icon.
    TrayIcon(KeyedItems* contextMenu, KeyedItems* recentMenu, TrayDesktop desktop = {});
    ~TrayIcon() override;

    void showIcon() override;
    void removeIcon() override;
    void setState(DayState state, const QString& toolTip) override;
    void notify(const QString& title, const QString& text) override;

    /// Asks whether the desktop has a tray and shows or removes the window that stands in. Runs by
    /// itself when the patience ends; from then on to be called at each tick of the counter.
    void checkTray();

    QMenu* contextMenu() { return &m_contextMenu; }
    QMenu* recentMenu() { return &m_recentMenu; }
    /// nullptr while the tray serves.
    TrayFallbackWindow* fallback() const { return m_fallback.get(); }
    bool isFallback(const QWidget* window) const;
    QSystemTrayIcon& icon() { return m_icon; }

  signals:
    /// The control screen is wanted: by a gesture on the icon or by a click on a notice.
    void activated();
    /// 1: context menu, 2: recent projects.
    void clicked(int button);
    /// The recent projects are about to be shown.
    void rebuildRecentMenu();

  private:
    void onActivated(QSystemTrayIcon::ActivationReason reason);
    struct Notice {
        QString title;
        QString text;
    };
    void showNotice(const Notice& notice);
    void openFallback();
    void closeFallback();

    QMenu m_contextMenu;
    QMenu m_recentMenu;
    QMenu m_recentSubMenu; ///< the same again inside the context menu
    QSystemTrayIcon m_icon;
    std::unique_ptr<TrayFallbackWindow> m_fallback;
    TrayDesktop m_desktop;
    QTimer m_patience;
    bool m_wanted = false;
    DayState m_state = DayState::Stopped;
    QString m_toolTip;
    std::optional<Notice> m_unshown; ///< waits for the tray, or for the window that stands in
};

} // namespace kelvrane
