// The hidden form that lives for the whole process: it carries the tray's menus, the 10-second
// timer and the counter TMR, and hears the minute tick.
#pragma once

#include <QObject>

namespace kelvrane {

class cTimer;
class IntervalTimer;

class frmInfo : public QObject {
    Q_OBJECT
  public:
    /// Creates TMR and starts the timer. Raises nothing.
    explicit frmInfo(QObject* parent = nullptr);
    ~frmInfo() override;

    IntervalTimer* Timer1() const { return m_timer; }

  private:
    IntervalTimer* m_timer;
    cTimer* m_counter;
};

/// The one hidden form, loaded at its first touch.
frmInfo& HiddenForm();
void UnloadHiddenForm();

/// Tray1's events. The button code is 1 for the context menu, 2 for the recent projects.
void TrayActivate();
void TrayClick(int button);

/// Fills the recent menu: up to nine projects, and "More ... " last.
void RebuildRecentMenu();
/// An item of the context menu or of the recent menu was chosen.
void TrayMenuClick(const QString& key);
void RecentProjectClick(const QString& key);

} // namespace kelvrane
