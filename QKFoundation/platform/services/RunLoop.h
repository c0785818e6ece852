// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <functional>
#include <memory>

namespace qk::platform {

/// What keeps something scheduled on a run loop; destroying it ends that. When it is destroyed on the loop's own
/// thread, or while the loop is not running, nothing is called afterwards.
class QK_EXPORT RunLoopSource {
public:
    RunLoopSource() = default;
    RunLoopSource(const RunLoopSource&) = delete;
    RunLoopSource& operator=(const RunLoopSource&) = delete;
    virtual ~RunLoopSource();
};

/// `NSRunLoop` of one thread, in its default mode: tasks, timers and the events of the system, called one after another
/// on that thread.
///
/// A loop runs nothing by itself. A headless host calls `run`; a host with a loop of its own watches `fileDescriptor`
/// for reading and calls `drain` when it is readable (two bridges do that in one call, for GLib and for Qt).
/// Threads: `perform`, `stop` and `fileDescriptor` anywhere; everything else on the loop's own thread.
class QK_EXPORT RunLoop {
public:
    RunLoop() = default;
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;
    virtual ~RunLoop();

    /// `performBlock:`. Calls `task` once, in the order of the calls, the next time that the loop runs.
    virtual void perform(std::function<void()> task) = 0;

    /// `timerWithTimeInterval:repeats:block:`. Calls `task` once after `seconds`, or every `seconds` until the source
    /// is destroyed.
    [[nodiscard]] virtual std::unique_ptr<RunLoopSource> scheduleTimer(double seconds, bool repeats,
                                                                       std::function<void()> task) = 0;

    /// Calls what is due now, without waiting; what those calls add is for the next time. Whether anything was called.
    virtual bool drain() = 0;

    /// Waits for what is to be called and calls it, until `stop`.
    virtual void run() = 0;

    /// Ends the running or the next `run`.
    virtual void stop() = 0;

    /// Readable whenever `drain` has something to call; -1 for a loop that is stepped by hand.
    [[nodiscard]] virtual int fileDescriptor() const = 0;
};

} // namespace qk::platform
