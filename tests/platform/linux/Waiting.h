// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/RunLoop.h"

#include <unistd.h>

#include <array>
#include <stdexcept>

namespace qk::tests {

/// Runs `loop` until `isDone`, which is asked whenever the loop has called something. False when that takes a minute.
template <typename Condition>
bool runUntil(platform::RunLoop& loop, Condition isDone) {
    bool isLate = false;
    constexpr double kMinute = 60;
    constexpr double kOften = 0.002;
    const auto limit = loop.scheduleTimer(kMinute, false, [&] {
        isLate = true;
        loop.stop();
    });
    const auto look = loop.scheduleTimer(kOften, true, [&] {
        if (isDone()) {
            loop.stop();
        }
    });
    loop.run();
    return !isLate;
}

/// Calls all that is due; false when there is always something more.
inline bool comesToRest(platform::RunLoop& loop) {
    constexpr int kMany = 100;
    for (int pass = 0; pass < kMany; ++pass) {
        if (!loop.drain()) {
            return true;
        }
    }
    return false;
}

/// What one process waits for and another one says, once.
class Gate {
public:
    Gate() {
        if (::pipe(ends_.data()) != 0) {
            throw std::runtime_error("pipe");
        }
    }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() {
        ::close(ends_[0]);
        ::close(ends_[1]);
    }

    void open() const { static_cast<void>(!::write(ends_[1], "", 1)); }
    void wait() const {
        char byte = 0;
        static_cast<void>(!::read(ends_[0], &byte, 1));
    }

private:
    std::array<int, 2> ends_{};
};

} // namespace qk::tests
