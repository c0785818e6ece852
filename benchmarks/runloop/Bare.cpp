// SPDX-License-Identifier: Apache-2.0
// The floors: what the kernel's eventfd and poll cost without a loop around them.
#include "benchmarks/runloop/Loop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <utility>

namespace qk::benchmarks {
namespace {

class Event {
public:
    Event() : descriptor_(::eventfd(0, EFD_CLOEXEC)) {}
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event() { ::close(descriptor_); }

    void signal() const {
        const std::uint64_t one = 1;
        [[maybe_unused]] const ssize_t written = ::write(descriptor_, &one, sizeof one);
    }
    void wait() const {
        pollfd polled{descriptor_, POLLIN, 0};
        ::poll(&polled, 1, -1);
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t read = ::read(descriptor_, &count, sizeof count);
    }

private:
    int descriptor_;
};

// One task at a time, no lock, no memory.
class Slot final : public Loop {
public:
    void post(Task task, void* context) override {
        context_ = context;
        task_.store(task, std::memory_order_release);
        event_.signal();
    }
    void run() override {
        for (isRunning_ = true; isRunning_;) {
            event_.wait();
            if (const Task task = task_.exchange(nullptr, std::memory_order_acquire)) {
                task(context_);
            }
        }
    }
    void stop() override { isRunning_ = false; }

private:
    Event event_;
    std::atomic<Task> task_ = nullptr;
    void* context_ = nullptr;
    bool isRunning_ = false;
};

// A list behind a lock. The simple way writes to the eventfd for each task, the careful one when the list was empty.
class List final : public Loop {
public:
    explicit List(bool isCareful) : isCareful_(isCareful) {}

    void post(Task task, void* context) override {
        bool wasEmpty = false;
        {
            const std::scoped_lock lock(mutex_);
            wasEmpty = tasks_.empty();
            tasks_.emplace_back(task, context);
        }
        if (wasEmpty || !isCareful_) {
            event_.signal();
        }
    }
    void run() override {
        for (isRunning_ = true; isRunning_;) {
            event_.wait();
            {
                const std::scoped_lock lock(mutex_);
                called_.swap(tasks_);
            }
            for (const auto& [task, context] : called_) {
                task(context);
            }
            called_.clear();
        }
    }
    void stop() override { isRunning_ = false; }

private:
    const bool isCareful_;
    Event event_;
    std::mutex mutex_;
    std::vector<std::pair<Task, void*>> tasks_;
    std::vector<std::pair<Task, void*>> called_;
    bool isRunning_ = false;
};

[[maybe_unused]] const bool kAdded =
    addPeer({"eventfd_poll_slot", [] { return std::make_unique<Slot>(); }, true}) &&
    addPeer({"eventfd_poll_list", [] { return std::make_unique<List>(true); }, false}) &&
    addPeer({"eventfd_poll_list_write_each", [] { return std::make_unique<List>(false); }, false});

} // namespace
} // namespace qk::benchmarks
