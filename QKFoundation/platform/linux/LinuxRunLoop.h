// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/ForkGeneration.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"
#include "QKFoundation/platform/services/RunLoop.h"
#include "QKFoundation/platform/services/internal/TimerQueue.h"

#include <sys/epoll.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace qk::platform {

/// A run loop over one epoll descriptor: an eventfd for tasks, a timerfd once there is a timer, and the descriptors
/// that adapters watch. A child made by fork shares these descriptors with its parent and must not use the loop;
/// sources of the loop may end there, which changes nothing for the parent.
class LinuxRunLoop final : public RunLoop, public std::enable_shared_from_this<LinuxRunLoop> {
public:
    /// Raises `std::system_error` when the process can have no more descriptors.
    [[nodiscard]] static std::shared_ptr<LinuxRunLoop> make();

    ~LinuxRunLoop() override;

    void perform(std::function<void()> task) override;
    /// Raises `std::system_error` when the process can have no more descriptors.
    [[nodiscard]] std::unique_ptr<RunLoopSource> scheduleTimer(double seconds, bool repeats,
                                                               std::function<void()> task) override;
    bool drain() override { return pass(0); }
    void run() override;
    void stop() override;
    [[nodiscard]] int fileDescriptor() const override { return epoll_.get(); }

    /// Calls `ready` whenever `descriptor` has one of `events` (those of epoll_ctl(2), level-triggered), also when it
    /// fails or its other end hangs up; null, with errno, for a descriptor that cannot be watched or already is, and in
    /// a child made by fork.
    /// The descriptor stays the caller's and must stay open for as long as the source lives. Any thread.
    [[nodiscard]] std::unique_ptr<RunLoopSource> addFileDescriptor(int descriptor, std::function<void()> ready,
                                                                   std::uint32_t events = EPOLLIN);

private:
    class DescriptorSource;
    class TimerSource;
    using Task = std::function<void()>;
    using Timers = internal::TimerQueue;
    struct Watch {
        int descriptor;
        Task ready;
    };

    LinuxRunLoop();

    void signal() const noexcept;
    bool pass(int timeout);
    bool callTasks(std::vector<Task>& tasks) noexcept;
    bool callWatches(std::span<const epoll_event> events) noexcept;
    void armTimer();
    void removeTimer(const std::shared_ptr<Timers::Timer>& timer);
    void removeWatch(std::uint64_t number);

    const std::uint64_t generation_ = forkGeneration();
    UniqueFD epoll_;
    UniqueFD event_;
    std::atomic<bool> stopRequested_ = false;

    std::mutex mutex_; // guards what follows
    std::vector<Task> tasks_;
    std::vector<Task> spare_; // memory for the next tasks
    bool isSignalled_ = false;
    Timers timers_;
    UniqueFD timer_;
    std::optional<Timers::Time> armedFor_;
    std::unordered_map<std::uint64_t, std::shared_ptr<Watch>> watches_; // by a number that is never used again
    std::uint64_t lastWatch_;
};

} // namespace qk::platform
