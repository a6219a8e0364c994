// For measurements from outside: with KELVRANE_TRACE_PAINT set, the process says "first paint" on
// standard error once its first window is painted; with the value "unload" it then unloads all
// screens. Without the variable nothing is installed.
#pragma once

#include <QObject>

class QApplication;

namespace kelvrane {

class StartTrace : public QObject {
    Q_OBJECT
  public:
    static void installIfWanted(QApplication* application);
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    StartTrace(QApplication* application, bool unload);
    void painted();

    bool m_unload;
    bool m_done = false;
};

} // namespace kelvrane
