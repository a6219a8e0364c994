// A real process that keeps a folder until it is killed.
//
//     HoldingProcess other(path);
//     EXPECT_EQ(lock.tryLock(), InstanceState::Running);
//     other.kill();
#pragma once

#include "platform/instance_lock.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace kelvrane::testing {

class HoldingProcess {
  public:
    explicit HoldingProcess(const QString& path, InstanceLock::LockCall lock = ::flock) {
        int ready[2] = {};
        EXPECT_EQ(::pipe(ready), 0);
        m_child = ::fork();
        if (m_child == 0) {
            ::alarm(60); // a test that hangs doesn't leave it behind
            InstanceLock own(path, lock);
            own.tryLock();
            own.keep(QDateTime(QDate(2026, 3, 2), QTime(8, 15)));
            [[maybe_unused]] const ssize_t told = ::write(ready[1], "x", 1);
            for (;;)
                ::pause();
        }
        ::close(ready[1]);
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
    }
    ~HoldingProcess() { kill(); }
    HoldingProcess(const HoldingProcess&) = delete;
    HoldingProcess& operator=(const HoldingProcess&) = delete;

    pid_t id() const { return m_child; }
    void kill() {
        if (m_child <= 0)
            return;
        ::kill(m_child, SIGKILL);
        ::waitpid(m_child, nullptr, 0);
        m_child = 0;
    }

  private:
    pid_t m_child = 0;
};

} // namespace kelvrane::testing
