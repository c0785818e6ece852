// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <functional>
#include <memory>

namespace qk::platform {

/// What keeps something scheduled on a run loop; destroying it ends that, at any time and also inside the call that it
/// causes. It may outlive its loop.
///
/// Threads: destroyed on the loop's own thread, or while the loop is not running, nothing is called afterwards.
/// Destroyed on another thread, a call that has begun may still be under way.
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
/// for reading and calls `drain` when it is readable (two bridges do that in one call, for GLib and for Qt). Inside
/// what a loop calls, both may be called again, as a dialog with a loop of its own does.
///
/// An exception that leaves a task has nobody to reach and ends the process, as one that leaves a thread does. An empty
/// task is nothing to call. Threads: `perform`, `stop` and `fileDescriptor` anywhere; everything else on the loop's own
/// thread.
class QK_EXPORT RunLoop {
public:
    RunLoop() = default;
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;
    virtual ~RunLoop();

    /// `performBlock:`. Calls `task` once, in the order of the calls, the next time that the loop runs.
    virtual void perform(std::function<void()> task) = 0;

    /// `timerWithTimeInterval:repeats:block:`. Calls `task` once after `seconds`, or every `seconds` until the source
    /// is destroyed. Times that have passed unseen are left out, not made up for. Less than 0 seconds is 0; a timer
    /// that repeats does so after 0.0001 seconds at the earliest.
    [[nodiscard]] virtual std::unique_ptr<RunLoopSource> scheduleTimer(double seconds, bool repeats,
                                                                       std::function<void()> task) = 0;

    /// Calls what is due now, without waiting: tasks, then timers by their time, then events. What those calls add is
    /// for the next time. Whether anything was called.
    virtual bool drain() = 0;

    /// Waits for what is to be called and calls it, until `stop`.
    virtual void run() = 0;

    /// Ends the running `run` when the calls that it is making are made, or else the next one before its first call.
    virtual void stop() = 0;

    /// Readable whenever `drain` has something to call; -1 for a loop that is stepped by hand.
    [[nodiscard]] virtual int fileDescriptor() const = 0;
};

} // namespace qk::platform
