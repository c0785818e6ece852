// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/memory/MemoryClock.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <utility>

namespace qk::platform::memory {

/// What has passed since a machine in memory was made, as its timers see it. Threads: any, at the same time.
class MemoryTime {
public:
    using Time = std::chrono::nanoseconds;

    /// `clock` moves with the time that passes.
    explicit MemoryTime(std::shared_ptr<MemoryClock> clock) : clock_(std::move(clock)) {}

    [[nodiscard]] Time now() const {
        const std::scoped_lock lock(mutex_);
        return now_;
    }

    /// Time passes until `time`, unless that has passed already.
    void advanceTo(Time time) {
        const std::scoped_lock lock(mutex_);
        if (time > now_) {
            clock_->advance(std::chrono::duration<double>(time - now_).count());
            now_ = time;
        }
    }

private:
    std::shared_ptr<MemoryClock> clock_;
    mutable std::mutex mutex_;
    Time now_{};
};

} // namespace qk::platform::memory
