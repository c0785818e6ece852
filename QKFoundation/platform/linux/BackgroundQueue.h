// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <functional>

namespace qk::platform {

/// The global queue of background priority: threads that get a tenth of an ordinary thread's share of a busy processor
/// and interrupt nobody. What they start (threads, children) inherits that.
///
/// Threads exist only once something was submitted, one more for each task that finds all of them busy up to a limit,
/// and end after a while without work. They take no signals. In a child made by fork the queue starts anew and empty.
/// Threads: any, at the same time.
class BackgroundQueue {
public:
    struct Limits {
        unsigned threads;
        std::chrono::milliseconds idleTime;
    };

    /// The queue of the process, never destroyed: a thread for each processor, at most four, kept for 5 idle seconds.
    /// When the process ends, no further task is begun, and one that runs is not waited for.
    [[nodiscard]] static BackgroundQueue& shared();

    explicit BackgroundQueue(Limits limits);
    BackgroundQueue(const BackgroundQueue&) = delete;
    BackgroundQueue& operator=(const BackgroundQueue&) = delete;
    /// Runs what was submitted to its end.
    ~BackgroundQueue();

    /// Calls `task` on one of the threads; does nothing for an empty one. Raises `std::system_error` when there is no
    /// thread and the system does not give one.
    void submit(std::function<void()> task);

    /// How many threads there are now.
    [[nodiscard]] unsigned threadCount() const;

private:
    struct State;

    [[nodiscard]] State& state() const;
    static void work(State& state) noexcept;
    static void startThread(State& state);

    Limits limits_;
    mutable std::atomic<State*> state_; // of this process: a child made by fork has another one
};

} // namespace qk::platform
