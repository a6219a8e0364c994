#include "target.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace transfer {

bool Target::create(const std::string& path) {
    m_file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (m_file >= 0)
        m_path = path;
    return m_file >= 0;
}

Target::Taken Target::take(const char* bytes, size_t count) {
    if (count > m_limit - m_size)
        return Taken::TooMuch;
    m_size += count;
    if (m_file < 0) {
        m_text.append(bytes, count);
        return Taken::All;
    }
    while (count > 0) {
        const ssize_t put = ::write(m_file, bytes, count);
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return Taken::NotWritten;
        bytes += put;
        count -= static_cast<size_t>(put);
    }
    return Taken::All;
}

bool Target::finish() {
    if (m_file < 0)
        return true;
    const bool flushed = ::fsync(m_file) == 0;
    const bool closed = ::close(std::exchange(m_file, -1)) == 0;
    if (flushed && closed)
        m_path.clear();
    return flushed && closed;
}

void Target::discard() {
    if (m_file >= 0)
        ::close(std::exchange(m_file, -1));
    if (!m_path.empty())
        ::unlink(std::exchange(m_path, {}).c_str());
}

} // namespace transfer
