// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/RunLoop.h"

#include <functional>
#include <memory>

namespace qk::platform {

/// The threads' run loops, the main queue and the global background queue.
///
/// An exception that leaves an asynchronous task ends the process, as one that leaves a thread does; an empty task is
/// nothing to call. Threads: any, at the same time, unless an operation says otherwise.
class QK_EXPORT Dispatch {
public:
    Dispatch() = default;
    Dispatch(const Dispatch&) = delete;
    Dispatch& operator=(const Dispatch&) = delete;
    virtual ~Dispatch();

    /// `isMainThread`. Whether the caller is the process's first thread.
    [[nodiscard]] virtual bool isMainThread() const = 0;

    /// `mainRunLoop`. The loop of the main thread; the same one for the life of the process.
    [[nodiscard]] virtual std::shared_ptr<RunLoop> mainRunLoop() = 0;

    /// `currentRunLoop`. The loop of the calling thread, made when it is first asked for and released when the thread
    /// ends and nobody else holds it.
    [[nodiscard]] virtual std::shared_ptr<RunLoop> currentRunLoop() = 0;

    /// `dispatch_async` to the main queue, which the main run loop serves: in the order of the calls.
    virtual void asyncOnMainQueue(std::function<void()> task) = 0;

    /// `dispatch_sync` to the main queue: returns when `task` has run on the main thread. An exception of `task`
    /// reaches the caller. Called on the main thread it never returns, as a queue that waits for itself does.
    virtual void syncOnMainQueue(const std::function<void()>& task) = 0;

    /// `dispatch_async` to the global queue of background priority: on some other thread, several at a time, begun in
    /// the order of the calls. Tasks that have not begun when the process ends are not run.
    virtual void asyncOnBackgroundQueue(std::function<void()> task) = 0;
};

} // namespace qk::platform
