// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/MainThreadDispatch.h"

#include "QKFoundation/runtime/internal/MainThread.h"

#include <utility>

namespace qk {
namespace internal {

void dispatch_sync_mainthread(const platform::Services& services, const std::function<void()>& task) {
    if (task == nullptr) {
        return;
    }
    if (services.dispatch->isMainThread()) {
        task();
    } else {
        services.dispatch->syncOnMainQueue(task);
    }
}

void dispatch_async_mainthread(const platform::Services& services, std::function<void()> task) {
    if (task == nullptr) {
        return;
    }
    if (services.dispatch->isMainThread()) {
        task();
    } else {
        services.dispatch->asyncOnMainQueue(std::move(task));
    }
}

} // namespace internal

namespace {

std::function<void()> bound(void* context, void (*task)(void*)) {
    if (task == nullptr) {
        return nullptr;
    }
    return [context, task] { task(context); };
}

} // namespace

void dispatch_sync_mainthread(const std::function<void()>& task) {
    internal::dispatch_sync_mainthread(*platform::services(), task);
}

void dispatch_async_mainthread(std::function<void()> task) {
    internal::dispatch_async_mainthread(*platform::services(), std::move(task));
}

} // namespace qk

void dispatch_sync_mainthread_f(void* context, void (*task)(void*)) {
    qk::dispatch_sync_mainthread(qk::bound(context, task));
}

void dispatch_async_mainthread_f(void* context, void (*task)(void*)) {
    qk::dispatch_async_mainthread(qk::bound(context, task));
}
