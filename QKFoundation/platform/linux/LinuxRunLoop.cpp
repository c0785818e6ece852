// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <system_error>
#include <utility>

namespace qk::platform {
namespace {

using Time = internal::TimerQueue::Time;

// What epoll hands back for our own descriptors; watches have the numbers above.
constexpr std::uint64_t kTasks = 0;
constexpr std::uint64_t kTimer = 1;
constexpr std::size_t kEventsAtOnce = 32;
constexpr std::size_t kSpareTasks = 1024;

[[noreturn]] void raise(const char* what) {
    throw std::system_error(errno, std::system_category(), what);
}

Time now() {
    return std::chrono::steady_clock::now().time_since_epoch(); // CLOCK_MONOTONIC, as the timer's
}

bool watch(int epoll, int descriptor, std::uint32_t events, std::uint64_t number) {
    epoll_event event{};
    event.events = events;
    event.data.u64 = number;
    return ::epoll_ctl(epoll, EPOLL_CTL_ADD, descriptor, &event) == 0;
}

} // namespace

class LinuxRunLoop::DescriptorSource final : public RunLoopSource {
public:
    DescriptorSource(std::weak_ptr<LinuxRunLoop> loop, std::uint64_t number)
        : loop_(std::move(loop)), number_(number) {}
    DescriptorSource(const DescriptorSource&) = delete;
    DescriptorSource& operator=(const DescriptorSource&) = delete;
    ~DescriptorSource() override {
        if (const auto loop = loop_.lock()) {
            loop->removeWatch(number_);
        }
    }

private:
    std::weak_ptr<LinuxRunLoop> loop_;
    std::uint64_t number_;
};

class LinuxRunLoop::TimerSource final : public RunLoopSource {
public:
    TimerSource(std::weak_ptr<LinuxRunLoop> loop, std::shared_ptr<Timers::Timer> timer)
        : loop_(std::move(loop)), timer_(std::move(timer)) {}
    TimerSource(const TimerSource&) = delete;
    TimerSource& operator=(const TimerSource&) = delete;
    ~TimerSource() override {
        timer_->cancel();
        if (const auto loop = loop_.lock()) {
            loop->removeTimer(timer_);
        }
    }

private:
    std::weak_ptr<LinuxRunLoop> loop_;
    std::shared_ptr<Timers::Timer> timer_;
};

std::shared_ptr<LinuxRunLoop> LinuxRunLoop::make() {
    return std::shared_ptr<LinuxRunLoop>(new LinuxRunLoop);
}

LinuxRunLoop::LinuxRunLoop()
    : epoll_(::epoll_create1(EPOLL_CLOEXEC)), event_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), lastWatch_(kTimer) {
    // Edge-triggered: each write is one event, and nobody needs to read the counter.
    if (!epoll_ || !event_ || !watch(epoll_.get(), event_.get(), EPOLLIN | EPOLLET, kTasks)) {
        raise("run loop");
    }
}

LinuxRunLoop::~LinuxRunLoop() = default;

void LinuxRunLoop::signal() const noexcept {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(event_.get(), &one, sizeof one);
}

void LinuxRunLoop::perform(Task task) {
    if (task == nullptr) {
        return;
    }
    {
        const std::scoped_lock lock(mutex_);
        tasks_.push_back(std::move(task));
        if (std::exchange(isSignalled_, true)) {
            return;
        }
    }
    signal(); // outside of the lock, which the woken thread wants first
}

std::unique_ptr<RunLoopSource> LinuxRunLoop::scheduleTimer(double seconds, bool repeats, Task task) {
    if (task == nullptr) {
        task = [] {};
    }
    const std::scoped_lock lock(mutex_);
    if (!timer_) {
        UniqueFD timer(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK));
        if (!timer || !watch(epoll_.get(), timer.get(), EPOLLIN, kTimer)) {
            raise("timer of a run loop");
        }
        timer_ = std::move(timer);
    }
    auto timer = timers_.add(now(), seconds, repeats, std::move(task));
    armTimer();
    return std::make_unique<TimerSource>(weak_from_this(), std::move(timer));
}

// Sets the timer to the first time that is due, which also takes an expiry back.
void LinuxRunLoop::armTimer() {
    const std::optional<Time> next = timers_.next();
    if (next == armedFor_) {
        return;
    }
    itimerspec setting{}; // all zero: disarmed
    if (next.has_value()) {
        const auto seconds = std::chrono::floor<std::chrono::seconds>(*next);
        setting.it_value.tv_sec = seconds.count();
        setting.it_value.tv_nsec = (*next - seconds).count();
    }
    ::timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &setting, nullptr);
    armedFor_ = next;
}

void LinuxRunLoop::removeTimer(const std::shared_ptr<Timers::Timer>& timer) {
    const std::scoped_lock lock(mutex_);
    timers_.remove(*timer); // its time may still wake the loop once, for nothing
}

std::unique_ptr<RunLoopSource> LinuxRunLoop::addFileDescriptor(int descriptor, Task ready, std::uint32_t events) {
    if (ready == nullptr) {
        ready = [] {};
    }
    const std::scoped_lock lock(mutex_);
    if (generation_ != forkGeneration()) {
        errno = ECHILD; // the parent would be woken, and know nothing of it
        return nullptr;
    }
    const std::uint64_t number = ++lastWatch_;
    if (!watch(epoll_.get(), descriptor, events, number)) {
        return nullptr;
    }
    watches_.emplace(number, std::make_shared<Watch>(Watch{descriptor, std::move(ready)}));
    return std::make_unique<DescriptorSource>(weak_from_this(), number);
}

void LinuxRunLoop::removeWatch(std::uint64_t number) {
    std::shared_ptr<Watch> removed; // what it holds is given back without the lock
    const std::scoped_lock lock(mutex_);
    const auto found = watches_.find(number);
    if (found != watches_.end()) {
        removed = std::move(found->second);
        watches_.erase(found);
        if (generation_ == forkGeneration()) {
            ::epoll_ctl(epoll_.get(), EPOLL_CTL_DEL, removed->descriptor, nullptr);
        }
    }
}

bool LinuxRunLoop::pass(int timeout) {
    std::array<epoll_event, kEventsAtOnce> events; // NOLINT: the kernel fills what is looked at
    const int count = ::epoll_wait(epoll_.get(), events.data(), static_cast<int>(events.size()), timeout);
    const std::span ready(events.data(), static_cast<std::size_t>(std::max(count, 0)));

    // All that is due is taken before anything is called, so what the calls add waits for the next pass.
    std::vector<Task> tasks;
    std::vector<std::shared_ptr<Timers::Timer>> due;
    {
        const std::scoped_lock lock(mutex_);
        if (!tasks_.empty()) {
            tasks = std::exchange(tasks_, std::move(spare_));
            spare_.clear();
        }
        isSignalled_ = false;
        if (timer_) {
            if (std::ranges::any_of(ready, [](const epoll_event& event) { return event.data.u64 == kTimer; })) {
                armedFor_ = Time::min(); // expired: whatever comes next must be set
            }
            due = timers_.takeDue(now());
            armTimer();
        }
    }
    bool called = callTasks(tasks);
    for (const auto& timer : due) {
        called = timer->fire() || called;
    }
    return callWatches(ready) || called;
}

bool LinuxRunLoop::callTasks(std::vector<Task>& tasks) noexcept {
    if (tasks.empty()) {
        return false;
    }
    for (Task& task : tasks) {
        task();
        task = nullptr; // what it holds lives no longer than its call
    }
    if (tasks.capacity() <= kSpareTasks) {
        tasks.clear();
        const std::scoped_lock lock(mutex_);
        if (spare_.capacity() < tasks.capacity()) {
            spare_.swap(tasks);
        }
    }
    return true;
}

bool LinuxRunLoop::callWatches(std::span<const epoll_event> events) noexcept {
    bool any = false;
    for (const epoll_event& event : events) {
        const std::uint64_t number = event.data.u64; // copied: the kernel's record is packed, no reference fits it
        std::shared_ptr<Watch> watched;              // stays whole while its call removes it
        {
            const std::scoped_lock lock(mutex_);
            const auto found = watches_.find(number);
            if (found == watches_.end()) {
                continue; // our own, or removed by a call before
            }
            watched = found->second;
        }
        watched->ready();
        any = true;
    }
    return any;
}

void LinuxRunLoop::run() {
    while (!stopRequested_.exchange(false)) {
        pass(-1);
    }
}

void LinuxRunLoop::stop() {
    stopRequested_ = true;
    signal();
}

} // namespace qk::platform
