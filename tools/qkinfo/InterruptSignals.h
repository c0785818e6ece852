// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <csignal>

namespace qk::info {

/// SIGINT, SIGTERM, SIGHUP and SIGQUIT as a descriptor, for the life of this object. One that the process was told to ignore
/// stays ignored. Only one object at a time.
class InterruptSignals {
public:
    InterruptSignals();
    InterruptSignals(const InterruptSignals&) = delete;
    InterruptSignals& operator=(const InterruptSignals&) = delete;
    ~InterruptSignals();

    /// Readable once a signal has come.
    [[nodiscard]] int fd() const;

    /// Ends this process by the signal that has come, and before that tells its children to end.
    [[noreturn]] void dieOfReceived() const;

private:
    static constexpr std::array<int, 4> kSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};
    std::array<struct sigaction, 4> previous_{};
};

} // namespace qk::info
