// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace qk::internal {

/// The timers of one run loop, in the order in which they are due; those for the same time in the order in which they
/// were added. Times count from a moment of the loop's own. Threads: the loop locks, except where a member says more.
class TimerQueue {
public:
    using Time = std::chrono::nanoseconds;

    class Timer {
    public:
        /// Calls the task, unless the timer was cancelled; whether it did. On the loop's thread, without the lock.
        bool fire() noexcept;

        /// Any thread.
        void cancel() noexcept { cancelled_.store(true, std::memory_order_release); }

    private:
        friend class TimerQueue;

        std::function<void()> task_;
        Time deadline_{};
        Time interval_{}; // 0: once
        std::uint64_t number_ = 0;
        bool isFiring_ = false; // the loop's thread only
        std::atomic<bool> cancelled_ = false;
    };

    std::shared_ptr<Timer> add(Time now, double seconds, bool repeats, std::function<void()> task);

    /// Does nothing for a timer that is not due any more.
    void remove(const Timer& timer);

    /// When the first timer is due; nothing without timers.
    [[nodiscard]] std::optional<Time> next() const;

    /// Takes out what is due at `now`, in order. Timers that repeat stay, for their first time behind `now`; one that
    /// is being called at the moment is passed over.
    [[nodiscard]] std::vector<std::shared_ptr<Timer>> takeDue(Time now);

private:
    std::map<std::pair<Time, std::uint64_t>, std::shared_ptr<Timer>> timers_;
    std::uint64_t lastNumber_ = 0;
};

} // namespace qk::internal
