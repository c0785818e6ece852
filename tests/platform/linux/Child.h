// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <utility>

namespace qk::tests {

/// A child process of the test, killed and waited for at the end.
class Child {
public:
    /// Runs `work` in the child, which ends with status 0 if that returns.
    template <typename Work>
    explicit Child(Work&& work) : pid_(::fork()) {
        if (pid_ < 0) {
            throw std::runtime_error("fork");
        }
        if (pid_ == 0) {
            std::forward<Work>(work)();
            ::_exit(0);
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        ::kill(pid_, SIGKILL);
        while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }

    [[nodiscard]] pid_t pid() const { return pid_; }

    /// Returns once the child has stopped itself; false when it ended instead.
    [[nodiscard]] bool waitUntilStopped() const { return waitFor(WSTOPPED | WEXITED) == CLD_STOPPED; }

    /// Returns once the child has ended, and leaves it a zombie.
    [[nodiscard]] bool waitUntilEnded() const { return waitFor(WEXITED) != CLD_STOPPED; }

    /// The exit status of a child that has ended; -1 when a signal ended it.
    [[nodiscard]] int exitStatus() const {
        const siginfo_t info = end();
        return info.si_code == CLD_EXITED ? info.si_status : -1;
    }

    /// The signal that has ended the child; 0 when none did.
    [[nodiscard]] int signal() const {
        const siginfo_t info = end();
        return info.si_code == CLD_KILLED || info.si_code == CLD_DUMPED ? info.si_status : 0;
    }

private:
    [[nodiscard]] siginfo_t end() const {
        siginfo_t info{};
        static_cast<void>(::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT));
        return info;
    }

    [[nodiscard]] int waitFor(int events) const {
        siginfo_t info{};
        while (::waitid(P_PID, static_cast<id_t>(pid_), &info, events | WNOWAIT) != 0) {
            if (errno != EINTR) {
                throw std::runtime_error("waitid");
            }
        }
        return info.si_code;
    }

    pid_t pid_;
};

} // namespace qk::tests
