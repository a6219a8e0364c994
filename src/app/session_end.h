// The end of the session from outside: log-out, SIGTERM, SIGINT, SIGHUP. The day is saved and
// nothing is stopped; a running entry goes on at the next start.
#pragma once

#include <QObject>

#include <functional>

class QGuiApplication;

namespace kelvrane {

class SessionEnd : public QObject {
    Q_OBJECT
  public:
    /// Runs save at a log-out and before a signal ends the process. One object a process.
    SessionEnd(QGuiApplication* application, std::function<void()> save);
    ~SessionEnd() override;

  private:
    void signalled();
    std::function<void()> m_save;
};

} // namespace kelvrane
