#include "frame/trace.h"

#include "frame/globals.h"
#include "platform/ports.h"

namespace kelvrane {

void TraceLines::append(const QString& line) {
    m_lines.append(line);
    emit Appended(line);
}

void TraceLines::clear() {
    m_lines.clear();
}

TraceLines& Trace() {
    static TraceLines trace;
    return trace;
}

void LogStep(const QString& text) {
    if (!DebugMode)
        return;
    if (!ports.screens->isLoaded(Screen::frmDebugWindow))
        ports.screens->show(Screen::frmDebugWindow);
    Trace().append(text);
    ports.events->yield();
}

void CopyTrace() {
    QString text;
    for (const QString& line : Trace().lines())
        text.prepend(line + QLatin1Char('\n'));
    ports.clipboard->setText(text);
}

} // namespace kelvrane
