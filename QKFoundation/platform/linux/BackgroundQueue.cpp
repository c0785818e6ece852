// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BackgroundQueue.h"

#include "QKFoundation/platform/linux/ForkGeneration.h"

#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace qk::platform {
namespace {

constexpr unsigned kMostThreads = 4;
constexpr int kNiceness = 10; // a tenth of an ordinary thread's share
constexpr std::chrono::seconds kIdleTime{5};

std::atomic<bool> processEnds = false;

// Low, but not idle: under load an idle thread runs once a second, and until then the main thread waits for a lock that
// it holds. The priority of reads and writes follows. Where the system refuses, the thread runs as any other.
void lowerPriority() {
    const sched_param parameters{};
    ::pthread_setschedparam(::pthread_self(), SCHED_BATCH, &parameters);
    [[maybe_unused]] const int niceness = ::nice(kNiceness);
}

// The calling thread takes no signals for a scope, nor does what is started in it.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &previous_);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }

private:
    sigset_t previous_{};
};

} // namespace

struct BackgroundQueue::State {
    explicit State(Limits itsLimits, State* before = nullptr) : limits(itsLimits), previous(before) {}

    const Limits limits;
    // In a child made by fork: the parent's state, whose lock may be held for ever.
    State* const previous;
    const std::uint64_t generation = forkGeneration();

    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    std::condition_variable lastThreadEnds;
    std::deque<std::function<void()>> tasks;
    unsigned threads = 0;
    unsigned idleThreads = 0;
    bool isClosing = false;
};

BackgroundQueue& BackgroundQueue::shared() {
    static BackgroundQueue* const queue = [] {
        std::atexit([] { processEnds = true; });
        return new BackgroundQueue({std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads), kIdleTime});
    }();
    return *queue;
}

BackgroundQueue::BackgroundQueue(Limits limits) : limits_(limits), state_(new State(limits)) {}

BackgroundQueue::~BackgroundQueue() {
    State& present = state();
    {
        std::unique_lock lock(present.mutex);
        present.isClosing = true;
        present.changed.notify_all();
        present.lastThreadEnds.wait(lock, [&] { return present.threads == 0; });
    }
    const std::unique_ptr<State> owned(&present);
}

BackgroundQueue::State& BackgroundQueue::state() const {
    State* present = state_.load(std::memory_order_acquire);
    if (present->generation == forkGeneration()) {
        return *present;
    }
    auto fresh = std::make_unique<State>(limits_, present);
    if (state_.compare_exchange_strong(present, fresh.get(), std::memory_order_acq_rel)) {
        return *fresh.release();
    }
    return *present;
}

void BackgroundQueue::submit(std::function<void()> task) {
    if (task == nullptr) {
        return;
    }
    State& present = state();
    const std::scoped_lock lock(present.mutex);
    present.tasks.push_back(std::move(task));
    if (present.idleThreads >= present.tasks.size()) {
        present.changed.notify_one();
    } else if (present.threads < present.limits.threads) {
        startThread(present);
    }
}

void BackgroundQueue::startThread(State& state) {
    ++state.threads;
    try {
        const SignalsBlocked blocked;
        std::thread([&state] { work(state); }).detach();
    } catch (const std::system_error&) {
        if (--state.threads == 0) {
            state.tasks.pop_back();
            throw;
        }
    }
}

void BackgroundQueue::work(State& state) noexcept {
    lowerPriority();
    std::unique_lock lock(state.mutex);
    for (;;) {
        if (!state.tasks.empty()) {
            std::function<void()> task = std::move(state.tasks.front());
            state.tasks.pop_front();
            lock.unlock();
            if (processEnds) {
                return; // as if it were counted still: no other one is started now
            }
            task();
            task = nullptr;
            lock.lock();
            continue;
        }
        if (state.isClosing) {
            break;
        }
        ++state.idleThreads;
        const bool wanted = state.changed.wait_for(lock, state.limits.idleTime,
                                                   [&] { return !state.tasks.empty() || state.isClosing; });
        --state.idleThreads;
        if (!wanted) {
            break;
        }
    }
    if (--state.threads == 0) {
        state.lastThreadEnds.notify_all();
    }
}

unsigned BackgroundQueue::threadCount() const {
    State& present = state();
    const std::scoped_lock lock(present.mutex);
    return present.threads;
}

} // namespace qk::platform
