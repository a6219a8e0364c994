#include "frame/status_text.h"

#include "frame/globals.h"

namespace kelvrane {

void StatusText::setText(const QString& text) {
    if (m_text == text)
        return;
    m_text = text;
    emit Changed(m_text);
}

StatusText& Status() {
    static StatusText status;
    return status;
}

void SetStatusText(const QString& text) {
    if (ControlScreenLoaded)
        Status().setText(text);
}

} // namespace kelvrane
