#include "widgets/tray_icon.h"

#include "widgets/captions.h"
#include "widgets/keyed_menu.h"
#include "widgets/theme.h"
#include "widgets/tray_fallback_window.h"

#include <QCursor>
#include <QGuiApplication>

#include <utility>

namespace kelvrane {

namespace {

constexpr int NoticeMilliseconds = 10000;

bool OnWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

TrayIcon::TrayIcon(KeyedItems* contextMenu, KeyedItems* recentMenu, TrayDesktop desktop)
    : m_desktop(std::move(desktop)) {
    BindMenu(&m_recentMenu, recentMenu);
    BindMenu(&m_recentSubMenu, recentMenu);
    m_recentSubMenu.setTitle(QStringLiteral("Recent Projects"));
    // First: BindMenu puts what changes behind it.
    m_contextMenu.addMenu(&m_recentSubMenu);
    m_contextMenu.addSeparator();
    BindMenu(&m_contextMenu, contextMenu);

    m_icon.setContextMenu(&m_contextMenu);
    m_icon.setIcon(theme::TrayStateIcon(m_state));
    connect(&m_icon, &QSystemTrayIcon::activated, this, &TrayIcon::onActivated);
    connect(&m_icon, &QSystemTrayIcon::messageClicked, this, &TrayIcon::activated);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &TrayIcon::checkTray);
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::showIcon() {
    m_wanted = true;
    m_patience.start(m_desktop.patience);
    m_icon.show();
}

void TrayIcon::removeIcon() {
    m_wanted = false;
    m_patience.stop();
    m_unshown.reset();
    m_icon.hide();
    closeFallback();
}

void TrayIcon::setState(DayState state, const QString& toolTip) {
    if (state != m_state)
        m_icon.setIcon(theme::TrayStateIcon(state));
    if (toolTip != m_toolTip)
        m_icon.setToolTip(OneLine(toolTip));
    m_state = state;
    m_toolTip = toolTip;
    if (m_fallback)
        m_fallback->setState(state, toolTip);
}

void TrayIcon::notify(const QString& title, const QString& text) {
    if (m_fallback || m_desktop.hasTray())
        showNotice({title, text});
    else
        m_unshown = {title, text};
}

void TrayIcon::showNotice(const Notice& notice) {
    if (m_fallback)
        m_fallback->notify(notice.title, notice.text);
    else
        m_icon.showMessage(notice.title, notice.text, theme::AppIcon(), NoticeMilliseconds);
}

bool TrayIcon::isFallback(const QWidget* window) const {
    return m_fallback && window == m_fallback.get();
}

void TrayIcon::checkTray() {
    if (!m_wanted)
        return;
    const bool hasTray = m_desktop.hasTray();
    if (hasTray && m_fallback) {
        // A tray that came late doesn't know the icon yet.
        m_icon.hide();
        m_icon.show();
        closeFallback();
    } else if (!hasTray && !m_fallback && !m_patience.isActive()) {
        openFallback();
    }
    if (m_unshown && (hasTray || m_fallback))
        showNotice(*std::exchange(m_unshown, std::nullopt));
}

void TrayIcon::openFallback() {
    m_fallback = std::make_unique<TrayFallbackWindow>(&m_contextMenu, &m_recentMenu);
    connect(m_fallback.get(), &TrayFallbackWindow::activated, this, &TrayIcon::activated);
    connect(m_fallback.get(), &TrayFallbackWindow::clicked, this, [this](int button) {
        emit clicked(button);
        if (button == 2)
            emit rebuildRecentMenu();
    });
    m_fallback->setState(m_state, m_toolTip);
    m_fallback->show();
}

/// The window may be what asked for it.
void TrayIcon::closeFallback() {
    if (!m_fallback)
        return;
    m_fallback->hide();
    m_fallback.release()->deleteLater();
}

void TrayIcon::onActivated(QSystemTrayIcon::ActivationReason reason) {
    const bool wayland = m_desktop.isWayland ? m_desktop.isWayland() : OnWayland();
    switch (reason) {
    case QSystemTrayIcon::Context: // the desktop opens the menu itself
        emit clicked(1);
        break;
    case QSystemTrayIcon::Trigger:
        if (wayland) { // no pop-up can open at the pointer there
            emit activated();
            break;
        }
        emit clicked(2);
        emit rebuildRecentMenu();
        m_recentMenu.popup(QCursor::pos());
        break;
    case QSystemTrayIcon::DoubleClick: // its first click has opened the menu
        m_recentMenu.hide();
        emit activated();
        break;
    case QSystemTrayIcon::MiddleClick:
        emit activated();
        break;
    case QSystemTrayIcon::Unknown:
        break;
    }
}

} // namespace kelvrane
