// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/memory/MemoryClock.h"
#include "QKFoundation/platform/memory/MemoryRunLoop.h"
#include "QKFoundation/platform/services/Dispatch.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace qk::platform::memory {

/// Run loops and queues that do nothing until they are told to, with one thread for all of it:
///
///     machine.dispatch.runBackground(); // what was submitted to the background queue runs, here
///     machine.dispatch.drain();         // and now what it posted to the main queue
///     machine.dispatch.advance(60);     // a minute passes: timers fire, at their own times and in order
///
/// The main thread is the one that made it. Timers know the machine's own time, which passes in `advance` (and while a
/// loop runs that has nothing else to do) and takes the machine's clock along; setting the clock moves no timer.
/// Real threads may take part too. Threads: any, at the same time, unless an operation says otherwise.
class QK_EXPORT MemoryDispatch final : public Dispatch {
public:
    explicit MemoryDispatch(std::shared_ptr<MemoryClock> clock);
    MemoryDispatch(const MemoryDispatch&) = delete;
    MemoryDispatch& operator=(const MemoryDispatch&) = delete;
    ~MemoryDispatch() override;

    /// `thread` is the main thread from now on.
    void setMainThread(std::thread::id thread = std::this_thread::get_id());

    /// Calls what is due on the main run loop, and what those calls add, until nothing is left. Whether anything was
    /// called. Main thread.
    bool drain();

    /// Time passes by `seconds`; what becomes due on the main run loop is called at its own time. Other loops see the
    /// new time when they are drained. Main thread.
    void advance(double seconds);

    /// Calls what was submitted to the background queue and what those tasks submit, one after another, on the calling
    /// thread but as if on another. How many were called.
    std::size_t runBackground();

    /// Calls `task` here as if on another thread than the main one: `isMainThread` is false, the current run loop is
    /// that of the other thread, and `syncOnMainQueue` has the main thread drain its loop.
    void runElsewhere(const std::function<void()>& task);

    /// What waits in the queues is let go of instead of called.
    void discard();

    [[nodiscard]] bool isMainThread() const override;
    [[nodiscard]] std::shared_ptr<RunLoop> mainRunLoop() override { return mainLoop_; }
    [[nodiscard]] std::shared_ptr<RunLoop> currentRunLoop() override;
    void asyncOnMainQueue(std::function<void()> task) override { mainLoop_->perform(std::move(task)); }
    /// Raises `std::logic_error` on the main thread, where it would never return. On a real other thread it waits until
    /// the main thread drains its loop.
    void syncOnMainQueue(const std::function<void()>& task) override;
    void asyncOnBackgroundQueue(std::function<void()> task) override;

private:
    class Role;

    const std::shared_ptr<MemoryTime> time_;
    const std::shared_ptr<MemoryRunLoop> mainLoop_;

    mutable std::mutex mutex_; // guards what follows
    std::thread::id mainThread_ = std::this_thread::get_id();
    bool mainThreadIsElsewhere_ = false;
    std::shared_ptr<MemoryRunLoop> elsewhereLoop_;
    std::map<std::thread::id, std::shared_ptr<MemoryRunLoop>> loops_;
    std::deque<std::function<void()>> background_;
};

} // namespace qk::platform::memory
