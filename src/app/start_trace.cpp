#include "app/start_trace.h"

#include "timekeeping/shut_down.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace kelvrane {

void StartTrace::installIfWanted(QApplication* application) {
    const QByteArray wanted = qgetenv("KELVRANE_TRACE_PAINT");
    if (!wanted.isEmpty())
        new StartTrace(application, wanted == "unload");
}

StartTrace::StartTrace(QApplication* application, bool unload)
    : QObject(application), m_unload(unload) {
    application->installEventFilter(this);
}

bool StartTrace::eventFilter(QObject* watched, QEvent* event) {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!m_done && event->type() == QEvent::Paint && widget && widget->isWindow()) {
        m_done = true;
        QTimer::singleShot(0, this, &StartTrace::painted); // when the whole window is through
    }
    return false;
}

void StartTrace::painted() {
    std::fputs("first paint\n", stderr);
    if (m_unload)
        UnloadAllForms();
}

} // namespace kelvrane
