#include "app/session_end.h"

#include "platform/ports.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace kelvrane {

namespace {

// A signal handler may do little more than write: it wakes the event loop through a socket.
int wakeUp[2] = {-1, -1};

void onSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(wakeUp[0], &byte, 1);
}

} // namespace

SessionEnd::SessionEnd(QGuiApplication* application, std::function<void()> save)
    : m_save(std::move(save)) {
    // A file that outgrows the process's limit is an error of the write, not the end of the
    // process.
    std::signal(SIGXFSZ, SIG_IGN);
    connect(application, &QGuiApplication::commitDataRequest, this, [this] { m_save(); });
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wakeUp) != 0)
        return;
    auto* notifier = new QSocketNotifier(wakeUp[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        signalled();
    });
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        std::signal(number, onSignal);
}

SessionEnd::~SessionEnd() {
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        std::signal(number, SIG_DFL);
    for (int& end : wakeUp)
        if (end >= 0)
            ::close(std::exchange(end, -1));
}

void SessionEnd::signalled() {
    m_save();
    ports.process->end();
}

} // namespace kelvrane
