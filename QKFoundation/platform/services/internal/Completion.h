// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <utility>

namespace qk::internal {

/// What a thread waits for that has another one run a task. Held in `std::shared_ptr` by both: the one that ran the
/// task may still be inside when the waiting one has gone on.
class Completion {
public:
    /// Calls `task` and tells how it ended.
    void run(const std::function<void()>& task) noexcept {
        std::exception_ptr thrown;
        try {
            task();
        } catch (...) {
            thrown = std::current_exception();
        }
        const std::scoped_lock lock(mutex_);
        thrown_ = std::move(thrown);
        isDone_ = true;
        changed_.notify_all();
    }

    [[nodiscard]] bool isDone() {
        const std::scoped_lock lock(mutex_);
        return isDone_;
    }

    /// Waits for the end of the task; what the task threw is thrown here.
    void wait() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return isDone_; });
        if (thrown_ != nullptr) {
            std::rethrow_exception(std::exchange(thrown_, nullptr));
        }
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::exception_ptr thrown_;
    bool isDone_ = false;
};

} // namespace qk::internal
