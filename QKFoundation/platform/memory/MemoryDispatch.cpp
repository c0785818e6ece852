// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryDispatch.h"

#include "QKFoundation/platform/memory/internal/MemoryTime.h"
#include "QKFoundation/platform/services/internal/Completion.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace qk::platform::memory {

// What the main thread plays for a scope: itself, or some other thread. Real other threads play nobody.
class MemoryDispatch::Role {
public:
    Role(MemoryDispatch& dispatch, bool isElsewhere) : dispatch_(dispatch) {
        const std::scoped_lock lock(dispatch_.mutex_);
        plays_ = dispatch_.mainThread_ == std::this_thread::get_id();
        if (plays_) {
            previous_ = std::exchange(dispatch_.mainThreadIsElsewhere_, isElsewhere);
        }
    }
    Role(const Role&) = delete;
    Role& operator=(const Role&) = delete;
    ~Role() {
        if (plays_) {
            const std::scoped_lock lock(dispatch_.mutex_);
            dispatch_.mainThreadIsElsewhere_ = previous_;
        }
    }

    /// Whether the calling thread is really the main thread.
    [[nodiscard]] bool plays() const { return plays_; }

private:
    MemoryDispatch& dispatch_;
    bool plays_ = false;
    bool previous_ = false;
};

MemoryDispatch::MemoryDispatch(std::shared_ptr<MemoryClock> clock)
    : time_(std::make_shared<MemoryTime>(std::move(clock))), mainLoop_(std::make_shared<MemoryRunLoop>(time_)) {}

MemoryDispatch::~MemoryDispatch() = default;

void MemoryDispatch::setMainThread(std::thread::id thread) {
    const std::scoped_lock lock(mutex_);
    mainThread_ = thread;
    mainThreadIsElsewhere_ = false;
}

bool MemoryDispatch::drain() {
    bool called = false;
    while (mainLoop_->drain()) {
        called = true;
    }
    return called;
}

void MemoryDispatch::advance(double seconds) {
    mainLoop_->advance(seconds);
}

std::size_t MemoryDispatch::runBackground() {
    const Role role(*this, true);
    for (std::size_t count = 0;; ++count) {
        std::function<void()> task;
        {
            const std::scoped_lock lock(mutex_);
            if (background_.empty()) {
                return count;
            }
            task = std::move(background_.front());
            background_.pop_front();
        }
        const auto call = [&task]() noexcept { task(); };
        call();
    }
}

void MemoryDispatch::runElsewhere(const std::function<void()>& task) {
    if (task != nullptr) {
        const Role role(*this, true);
        task();
    }
}

void MemoryDispatch::discard() {
    // Let go of without the lock.
    std::deque<std::function<void()>> background;
    std::vector<std::shared_ptr<MemoryRunLoop>> loops{mainLoop_};
    {
        const std::scoped_lock lock(mutex_);
        background.swap(background_);
        if (elsewhereLoop_ != nullptr) {
            loops.push_back(elsewhereLoop_);
        }
        for (const auto& [thread, loop] : loops_) {
            loops.push_back(loop);
        }
    }
    for (const auto& loop : loops) {
        loop->discard();
    }
}

bool MemoryDispatch::isMainThread() const {
    const std::scoped_lock lock(mutex_);
    return mainThread_ == std::this_thread::get_id() && !mainThreadIsElsewhere_;
}

std::shared_ptr<RunLoop> MemoryDispatch::currentRunLoop() {
    const std::scoped_lock lock(mutex_);
    const std::thread::id self = std::this_thread::get_id();
    if (mainThread_ == self && !mainThreadIsElsewhere_) {
        return mainLoop_;
    }
    std::shared_ptr<MemoryRunLoop>& loop = mainThread_ == self ? elsewhereLoop_ : loops_[self];
    if (loop == nullptr) {
        loop = std::make_shared<MemoryRunLoop>(time_);
    }
    return loop;
}

void MemoryDispatch::syncOnMainQueue(const std::function<void()>& task) {
    if (task == nullptr) {
        return;
    }
    if (isMainThread()) {
        throw std::logic_error("the main thread waits for its own queue");
    }
    const auto completion = std::make_shared<internal::Completion>();
    mainLoop_->perform([completion, &task] { completion->run(task); });
    {
        const Role role(*this, false);
        while (role.plays() && !completion->isDone() && mainLoop_->drain()) {
        }
    }
    completion->wait();
}

void MemoryDispatch::asyncOnBackgroundQueue(std::function<void()> task) {
    if (task != nullptr) {
        const std::scoped_lock lock(mutex_);
        background_.push_back(std::move(task));
    }
}

} // namespace qk::platform::memory
