// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <mutex>

namespace qk::platform {

/// Does something once, whichever thread comes first. std::call_once wakes waiting threads through the kernel each
/// time, which costs more than what is done here.
class Once {
public:
    template <typename Action>
    void run(Action&& action) {
        if (isDone_.load(std::memory_order_acquire)) {
            return;
        }
        const std::scoped_lock lock(mutex_);
        if (!isDone_.load(std::memory_order_relaxed)) {
            action();
            isDone_.store(true, std::memory_order_release);
        }
    }

private:
    std::mutex mutex_;
    std::atomic<bool> isDone_ = false;
};

} // namespace qk::platform
