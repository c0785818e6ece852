// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryRunLoop.h"

#include "QKFoundation/platform/memory/internal/MemoryTime.h"
#include "QKFoundation/platform/services/internal/TimerQueue.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace qk::platform::memory {
namespace {

using internal::TimerQueue;

// As in production: what leaves a task ends the process.
void call(const std::function<void()>& task) noexcept {
    task();
}

} // namespace

struct MemoryRunLoop::Contents {
    explicit Contents(std::shared_ptr<MemoryTime> itsTime) : time(std::move(itsTime)) {}

    [[nodiscard]] std::optional<TimerQueue::Time> nextTimer() {
        const std::scoped_lock lock(mutex);
        return timers.next();
    }

    const std::shared_ptr<MemoryTime> time;
    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    std::vector<std::function<void()>> tasks;
    TimerQueue timers;
    bool stopRequested = false;
};

class MemoryRunLoop::TimerSource final : public RunLoopSource {
public:
    TimerSource(std::weak_ptr<Contents> contents, std::shared_ptr<TimerQueue::Timer> timer)
        : contents_(std::move(contents)), timer_(std::move(timer)) {}
    TimerSource(const TimerSource&) = delete;
    TimerSource& operator=(const TimerSource&) = delete;
    ~TimerSource() override {
        timer_->cancel();
        if (const auto contents = contents_.lock()) {
            const std::scoped_lock lock(contents->mutex);
            contents->timers.remove(*timer_);
        }
    }

private:
    std::weak_ptr<Contents> contents_;
    std::shared_ptr<TimerQueue::Timer> timer_;
};

MemoryRunLoop::MemoryRunLoop(std::shared_ptr<MemoryTime> time)
    : contents_(std::make_shared<Contents>(std::move(time))) {}

MemoryRunLoop::~MemoryRunLoop() = default;

void MemoryRunLoop::perform(std::function<void()> task) {
    if (task == nullptr) {
        return;
    }
    const std::scoped_lock lock(contents_->mutex);
    contents_->tasks.push_back(std::move(task));
    contents_->changed.notify_all();
}

std::unique_ptr<RunLoopSource> MemoryRunLoop::scheduleTimer(double seconds, bool repeats, std::function<void()> task) {
    if (task == nullptr) {
        task = [] {};
    }
    const std::scoped_lock lock(contents_->mutex);
    auto timer = contents_->timers.add(contents_->time->now(), seconds, repeats, std::move(task));
    contents_->changed.notify_all();
    return std::make_unique<TimerSource>(contents_, std::move(timer));
}

bool MemoryRunLoop::drain() {
    const std::shared_ptr<Contents> contents = contents_; // a task may let go of the loop
    std::vector<std::function<void()>> tasks;
    std::vector<std::shared_ptr<TimerQueue::Timer>> due;
    {
        const std::scoped_lock lock(contents->mutex);
        tasks.swap(contents->tasks);
        due = contents->timers.takeDue(contents->time->now());
    }
    bool called = !tasks.empty();
    for (std::function<void()>& task : tasks) {
        call(task);
        task = nullptr; // what it holds lives no longer than its call
    }
    for (const auto& timer : due) {
        called = timer->fire() || called;
    }
    return called;
}

void MemoryRunLoop::run() {
    for (;;) {
        {
            std::unique_lock lock(contents_->mutex);
            Contents& contents = *contents_;
            contents.changed.wait(lock, [&] {
                return contents.stopRequested || !contents.tasks.empty() || contents.timers.next().has_value();
            });
            if (std::exchange(contents.stopRequested, false)) {
                return;
            }
            if (contents.tasks.empty()) {
                contents.time->advanceTo(*contents.timers.next());
            }
        }
        drain();
    }
}

void MemoryRunLoop::stop() {
    const std::scoped_lock lock(contents_->mutex);
    contents_->stopRequested = true;
    contents_->changed.notify_all();
}

void MemoryRunLoop::advance(double seconds) {
    MemoryTime& time = *contents_->time;
    const std::chrono::duration<double> span(std::max(seconds, 0.0));
    const TimerQueue::Time end = time.now() + std::chrono::round<TimerQueue::Time>(span);
    while (drain()) {
    }
    for (auto next = contents_->nextTimer(); next.has_value() && *next <= end; next = contents_->nextTimer()) {
        time.advanceTo(*next);
        while (drain()) {
        }
    }
    time.advanceTo(end);
}

void MemoryRunLoop::discard() {
    std::vector<std::function<void()>> tasks; // let go of without the lock
    const std::scoped_lock lock(contents_->mutex);
    tasks.swap(contents_->tasks);
}

} // namespace qk::platform::memory
