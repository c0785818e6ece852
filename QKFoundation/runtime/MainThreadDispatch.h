/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include "QKFoundation/platform/Export.h"

#ifdef __cplusplus
#include <functional>
#endif

/// Running a task on the main thread, which serves the main queue by its run loop: a headless host runs
/// `qk::platform::services()->dispatch->mainRunLoop()`, a host on GLib or Qt attaches it once
/// (platform/linux/GLibBridge.h, platform/linux/QtBridge.h). Threads: any. A missing task is nothing to run.

#ifdef __cplusplus
namespace qk {

/// `dispatch_sync_mainthread`. On the main thread, calls `task` at once; on any other, waits until the main thread has
/// called it. What `task` throws reaches the caller. It never returns when the main thread waits for the caller.
QK_EXPORT void dispatch_sync_mainthread(const std::function<void()>& task);

/// `dispatch_async_mainthread`. On the main thread, calls `task` at once; on any other, has the main thread call it
/// later, in the order of the calls.
/// Deliberate: on the main thread the task is done when this returns, before everything that was queued earlier; what
/// it throws reaches the caller there, and ends the process elsewhere.
QK_EXPORT void dispatch_async_mainthread(std::function<void()> task);

} // namespace qk

extern "C" {
#endif

/// `dispatch_sync_mainthread` for callers in C: calls `task(context)` on the main thread and returns when it is done.
QK_EXPORT void dispatch_sync_mainthread_f(void* context, void (*task)(void* context));

/// `dispatch_async_mainthread` for callers in C: calls `task(context)`, at once on the main thread and otherwise later;
/// `context` stays the caller's and must live until then.
QK_EXPORT void dispatch_async_mainthread_f(void* context, void (*task)(void* context));

#ifdef __cplusplus
} // extern "C"
#endif
