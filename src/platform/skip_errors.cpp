#include "platform/skip_errors.h"

namespace kelvrane {

QList<SkippedError>& SkippedErrors() {
    static QList<SkippedError> list;
    return list;
}

void SkipErrors::note(const RuntimeError& error) {
    constexpr qsizetype kept = 100;
    ++m_count;
    QList<SkippedError>& list = SkippedErrors();
    if (list.size() == kept)
        list.removeFirst();
    list.append({m_routine, error.number, error.description});
    if (m_handler)
        m_handler(error);
}

} // namespace kelvrane
