// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/internal/TimerQueue.h"

#include <algorithm>

namespace qk::internal {
namespace {

constexpr TimerQueue::Time kShortestInterval = std::chrono::microseconds(100);
constexpr double kLongestSeconds = 1e9; // thirty years: any sum of two such times can be told

TimerQueue::Time fromSeconds(double seconds) {
    if (!(seconds > 0)) { // what is not a number, too
        return TimerQueue::Time::zero();
    }
    const std::chrono::duration<double> within(std::min(seconds, kLongestSeconds));
    return std::chrono::ceil<TimerQueue::Time>(within);
}

} // namespace

bool TimerQueue::Timer::fire() noexcept {
    if (cancelled_.load(std::memory_order_acquire)) {
        return false;
    }
    if (interval_ == Time::zero()) {
        // What the task holds is given back with its only call, not when the source goes.
        const std::function<void()> once = std::exchange(task_, nullptr);
        once();
        return true;
    }
    isFiring_ = true;
    task_();
    isFiring_ = false;
    return true;
}

std::shared_ptr<TimerQueue::Timer> TimerQueue::add(Time now, double seconds, bool repeats, std::function<void()> task) {
    auto timer = std::make_shared<Timer>();
    const Time delay = fromSeconds(seconds);
    timer->interval_ = repeats ? std::max(delay, kShortestInterval) : Time::zero();
    timer->deadline_ = now + (repeats ? timer->interval_ : delay);
    timer->number_ = ++lastNumber_;
    timer->task_ = std::move(task);
    timers_.emplace(std::pair(timer->deadline_, timer->number_), timer);
    return timer;
}

void TimerQueue::remove(const Timer& timer) {
    timers_.erase({timer.deadline_, timer.number_});
}

std::optional<TimerQueue::Time> TimerQueue::next() const {
    return timers_.empty() ? std::nullopt : std::optional(timers_.begin()->first.first);
}

std::vector<std::shared_ptr<TimerQueue::Timer>> TimerQueue::takeDue(Time now) {
    std::vector<std::shared_ptr<Timer>> due;
    while (!timers_.empty() && timers_.begin()->first.first <= now) {
        auto node = timers_.extract(timers_.begin());
        const std::shared_ptr<Timer> timer = node.mapped();
        if (!timer->isFiring_) {
            due.push_back(timer);
        }
        if (timer->interval_ > Time::zero()) {
            timer->deadline_ += timer->interval_ * ((now - timer->deadline_) / timer->interval_ + 1);
            node.key().first = timer->deadline_;
            timers_.insert(std::move(node));
        }
    }
    return due;
}

} // namespace qk::internal
