// The tray's stand-in where the desktop has none: a small window with the state and both menus.
#pragma once

#include "platform/ports.h"

#include <QWidget>

class QLabel;
class QMenu;

namespace kelvrane {

class FlatButton;

/// It can't be closed: the desktop may have nothing else to reach the program by. Its close box
/// shows the control screen, as a double click does; its tool tip says so.
class TrayFallbackWindow : public QWidget {
    Q_OBJECT
  public:
    /// Both menus outlive the window.
    TrayFallbackWindow(QMenu* contextMenu, QMenu* recentMenu);

    void setState(DayState state, const QString& text);
    /// Stays until it is clicked or the next one comes.
    void notify(const QString& title, const QString& text);

  signals:
    /// The control screen is wanted: a double click, the close box, or a click on the notice.
    void activated();
    /// One of the menus is about to open: 1 the context menu, 2 the recent projects.
    void clicked(int button);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void showState();

    DayState m_state = DayState::Stopped;
    QLabel* m_mark;
    QLabel* m_word;
    QLabel* m_text;
    QLabel* m_notice;
};

} // namespace kelvrane
