// Runs a piece of a test in a process of its own, which may be ended in the middle.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>

namespace kelvrane::faults {

/// What a child with a failed expectation exits with.
inline constexpr int ChildFailed = 3;

/// What a child says that found nothing left to try.
inline constexpr int ChildDone = 4;

/// Exit status of the forked child, or minus the signal that ended it. A child that hangs ends too.
inline int RunInChild(const std::function<void()>& run) {
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        alarm(30);
        run();
        std::cout.flush();
        _exit(::testing::Test::HasFailure() ? ChildFailed : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace kelvrane::faults
