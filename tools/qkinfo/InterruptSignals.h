// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <csignal>

namespace qk::info {

/// SIGINT, SIGTERM and SIGHUP as a descriptor, for the life of this object. One that the process was told to ignore
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
    static constexpr std::array<int, 3> kSignals{SIGINT, SIGTERM, SIGHUP};
    std::array<struct sigaction, 3> previous_{};
};

} // namespace qk::info
